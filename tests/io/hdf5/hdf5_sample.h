#pragma once
// A file around one object: what a form writes, as text, and what it reads of a file that was changed by hand.

#include "core/version.h"
#include "io/hdf5/error_text.h"
#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"

#include "support/h5_builder.h"
#include "support/h5_tree.h"
#include "support/temp_folder.h"

namespace NBrenmark {

/// Lines of a tree, each after the path of a group. An empty one is the group itself.
inline std::string under(const std::string& group, const std::vector<std::string>& lines)
{
    std::string text;
    for (const std::string& line : lines)
        text += group + line + "\n";
    return text;
}

/// The same of lines in one text: "@min f64 = 1; @max f64 = 2".
inline std::string under(const std::string& group, const char* lines)
{
    std::string text;
    for (const QString& line : QString::fromUtf8(lines).split("; "))
        text += group + line.toStdString() + "\n";
    return text;
}

class CHdf5Sample
{
public:
    CHdf5Sample() { catchHdf5Errors(); }

    /// Makes the file anew. \param body  is given the writer, which stands at the root
    template <class TWriter, class TBody>
    void write(TBody&& body)
    {
        H5::H5File file(path().toStdString(), H5F_ACC_TRUNC);
        H5::Group root = file.openGroup("/");
        TWriter writer(file, options);
        writer.location = &root;
        body(writer);
    }
    template <class TWriter, class TObject>
    std::string tree(const TObject& object)
    {
        write<TWriter>([&](TWriter& writer) { object.write(writer); });
        return treeOf(path());
    }

    CH5Builder change() const { return CH5Builder(path(), false); }

    /// \param body  is given the reader, which stands at the root
    template <class TReader, class TBody>
    void read(quint32 version, TBody&& body)
    {
        H5::H5File file(path().toStdString(), H5F_ACC_RDONLY);
        H5::Group root = file.openGroup("/");
        TReader reader(file, options);
        reader.location = &root;
        reader.fileVersion = version;
        body(reader);
    }
    template <class TReader, class TObject>
    void read(TObject& object, quint32 version = currentFileVersion())
    {
        read<TReader>(version, [&](TReader& reader) { object.read(reader); });
    }
    /// What the reading threw; empty if nothing.
    template <class TReader, class TObject>
    std::string failure(TObject& object)
    {
        try {
            read<TReader>(object);
        }
        catch (const std::exception& error) {
            return error.what();
        }
        return "";
    }

    QString path() const { return folder.path("a.h5"); }

    SSaveOptions options;

private:
    CTempFolder folder;
};

} // namespace NBrenmark
