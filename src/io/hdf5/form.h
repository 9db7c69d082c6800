#pragma once
// What a form of this family is written with: the fields of a stored class, named once, in file order,
// for the reader and the writer alike. Both forms have the same words.

#include "core/data_place.h"
#include "core/log.h"
#include "core/stop_flag.h"
#include "core/version.h"
#include "io/hdf5/child_names.h"
#include "io/hdf5/chunk_inflating.h"
#include "io/hdf5/closed.h"
#include "io/hdf5/error_text.h"
#include "io/hdf5/hdf5_visitor.h"
#include "io/hdf5/read_audit.h"
#include "io/hdf5/shapes.h"
#include "io/hdf5/soundness.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

namespace NBrenmark {

/// The block of the place while a model is moved, outside of its groups.
constexpr const char* creatorBlock = "creator data";

/// The place of the work in a group. An outermost group of a timestep or model is a block: "GeometryGroups/" is
/// "geometry groups". All others lie within one.
/// \param name  as it is opened or made, blocks with a slash at the end
SDataPlace placeInGroup(const std::string& name);

/// The numbers of one element of an array: their type, and how many of them make a row (0: a list).
template <class T>
struct SRowOf;

template <>
struct SRowOf<qint32>
{
    static const H5::PredType& type() { return H5::PredType::NATIVE_INT; }
    static constexpr hsize_t columns = 0;
};

template <>
struct SRowOf<quint32>
{
    static const H5::PredType& type() { return H5::PredType::NATIVE_UINT; }
    static constexpr hsize_t columns = 0;
};

template <hsize_t count>
struct SRowOfDoubles
{
    static const H5::PredType& type() { return H5::PredType::NATIVE_DOUBLE; }
    static constexpr hsize_t columns = count;
};

template <>
struct SRowOf<double> : SRowOfDoubles<0>
{
};

template <>
struct SRowOf<C3DVector> : SRowOfDoubles<3>
{
};

template <>
struct SRowOf<C3DPoint> : SRowOfDoubles<3>
{
};

template <>
struct SRowOf<CQuaternion> : SRowOfDoubles<4>
{
};

template <std::size_t count>
struct SRowOf<std::array<double, count>> : SRowOfDoubles<count>
{
};

template <std::size_t count>
struct SRowOf<std::array<quint32, count>>
{
    static const H5::PredType& type() { return H5::PredType::NATIVE_UINT; }
    static constexpr hsize_t columns = count;
};

// ---------------------------------------------------------------- writing

class CHdf5FormWriter
{
public:
    /// \param measures  only looks whether texts and names have their place: there is no file
    explicit CHdf5FormWriter(CHdf5Visitor& visitor, bool measures = false)
        : visitor(visitor), compress(compressionWanted()), measures(measures)
    {}

    bool isMeasuring() const { return measures; }

    /// A writer is of the current version.
    static constexpr bool since(quint32, quint32, quint32) { return true; }

    template <class T>
    void attribute(const std::string& name, const T& value)
    {
        if (measures)
            measureAttribute(name, value);
        else
            writeAttribute(name, value, *visitor.location);
    }
    /// A count that files hold as a signed number.
    void signedAttribute(const std::string& name, quint32 value) { attribute(name, static_cast<qint32>(value)); }
    template <std::size_t count>
    void flags(const std::string& name, const std::array<bool, count>& values)
    {
        attribute(name, std::vector<bool>(values.begin(), values.end()));
    }

    /// A single value as a dataset.
    template <class T>
    void dataset(const std::string& name, const T& value)
    {
        if (!measures)
            writeDataset(name, value, *visitor.location);
    }

    /// Runs body in the root of the file.
    template <class TBody>
    void root(TBody&& body)
    {
        if (measures)
            return body();
        closed(visitor.file.openGroup("/"), [&](H5::Group& root) {
            const CHdf5Place place(visitor, root);
            body();
        });
    }

    /// Makes a group, runs body in it and closes it.
    template <class TBody>
    void group(const std::string& name, TBody&& body)
    {
        if (measures)
            return body();
        closed(made(name), [&](H5::Group& group) {
            const CHdf5Place place(visitor, group);
            const CPlaceScope scope(placeInGroup(name));
            body();
        });
    }

    /// The same in a group that another form made, if that has run.
    template <class TBody>
    void sameGroup(const std::string& name, TBody&& body)
    {
        if (measures)
            return body();
        const bool isThere = visitor.location->nameExists(name);
        closed(isThere ? visitor.location->openGroup(name) : made(name), [&](H5::Group& group) {
            const CHdf5Place place(visitor, group);
            body();
        });
    }

    /// A group for each element, named by its number.
    /// \param body  is given an element
    template <class TList, class TBody>
    void numbered(const TList& list, TBody&& body)
    {
        std::size_t number = 0;
        for (const auto& element : list)
            group(std::to_string(number++), [&] { body(element); });
    }

    /// An array with an element a row, chunked and compressed by the rule.
    /// \param stored  false: not in this file
    template <class T>
    void rows(const std::string& name, const std::vector<T>& values, bool stored = true)
    {
        if (stored && !measures)
            arrays().write(name, SRowOf<T>::type(), {values.size(), SRowOf<T>::columns}, values.data(), values.size());
        throwIfFailed();
    }

    /// An array whose width isn't known before.
    void values(const std::string& name, const std::vector<double>& values, hsize_t columns)
    {
        // The rule for chunks goes by all values here, not by the rows.
        if (!measures)
            arrays().write(name, H5::PredType::NATIVE_DOUBLE, {values.size() / columns, columns}, values.data(),
                           values.size());
        throwIfFailed();
    }

    /// The same with default creation properties, however long the array is.
    template <class T>
    void plainRows(const std::string& name, const std::vector<T>& values, bool stored = true)
    {
        if (stored && !measures)
            arrays().writePlain(name, SRowOf<T>::type(), {values.size(), SRowOf<T>::columns}, values.data());
        throwIfFailed();
    }

    /// A short array of a fixed number of rows, with default creation properties.
    template <class T, std::size_t count>
    void fixedRows(const std::string& name, const std::array<T, count>& values)
    {
        if (!measures)
            arrays().writePlain(name, SRowOf<T>::type(), {count, SRowOf<T>::columns}, values.data());
    }

    /// A table of TRecord, one of HDF5DATATYPES.
    template <class TRecord>
    void table(const std::string& name, const std::vector<typename TRecord::Row>& rows)
    {
        if (measures)
            recordsOf<TRecord>(rows); // texts have fields of a fixed size
        else
            writeTable<TRecord>(name, rows, *visitor.location);
    }

    /// An array of a file that is lost already isn't worth compressing.
    void throwIfFailed();

private:
    /// Of what attributes hold texts alone may be too long.
    template <class T>
    static void measureAttribute(const std::string&, const T&)
    {}
    static void measureAttribute(const std::string& name, const std::string& text) { checkAttributeText(name, text); }
    static void measureAttribute(const std::string& name, const QString& text)
    {
        checkAttributeText(name, text.toStdString());
    }

    CArrayWriter arrays() { return CArrayWriter(*visitor.location, compress); }
    H5::Group made(const std::string& name)
    {
        try {
            return visitor.location->createGroup(name);
        }
        catch (const H5::Exception& error) {
            throwAt(*visitor.location, "group", name, error);
        }
    }

    CHdf5Visitor& visitor;
    bool compress;
    const bool measures;
};

// ---------------------------------------------------------------- reading

/// Rows of one group, which remains open until they are inflated: what is damaged is named by its place.
class CHdf5RowsReader
{
public:
    /// \param inflating  as for CArrayReader
    explicit CHdf5RowsReader(const H5::H5Location& location, CChunkInflating* inflating = nullptr)
        : arrays(location, inflating)
    {}

    template <class T>
    void rows(const std::string& name, std::vector<T>& values, bool stored = true)
    {
        if (stored)
            arrays.read(name, SRowOf<T>::type(), SRowOf<T>::columns, [&](const SArrayShape& shape) {
                values.resize(shape.rows);
                return static_cast<void*>(values.data());
            });
    }

private:
    const CArrayReader arrays;
};

class CHdf5FormReader
{
public:
    /// \param fileVersion  of the file, as soon as the version record is read
    CHdf5FormReader(CHdf5Visitor& visitor, const quint32& fileVersion) : visitor(visitor), fileVersion(fileVersion) {}

    /// Whether the file is of that version or a later one.
    bool since(quint32 major, quint32 minor, quint32 build) const
    {
        return fileVersion >= makeVersion(major, minor, build);
    }

    /// \return false, in a deck that is examined, if it can't be read; the value remains what it was
    template <class T>
    bool attribute(const std::string& name, T& value)
    {
        if (isSound([&] { readAttribute(name, value, *visitor.location); }))
            return true;
        CReadAudit::gaveUp(*visitor.location, std::string()); // other names of the group may hang on it
        return false;
    }
    void signedAttribute(const std::string& name, quint32& value)
    {
        qint32 stored = 0;
        if (attribute(name, stored))
            value = static_cast<quint32>(stored);
    }
    template <std::size_t count>
    void flags(const std::string& name, std::array<bool, count>& values)
    {
        std::vector<bool> found;
        if (!attribute(name, found))
            return;
        if (found.size() != count)
            throwAt(*visitor.location, "attribute", name,
                    std::to_string(found.size()) + " flags where " + std::to_string(count) + " are needed");
        std::copy(found.begin(), found.end(), values.begin());
    }

    template <class T>
    void dataset(const std::string& name, T& value)
    {
        readDataset(name, value, *visitor.location);
    }

    template <class TBody>
    void group(const std::string& name, TBody&& body)
    {
        const CPlaceScope scope(placeInGroup(name));
        examined(name, [&] {
            H5::Group group = opened(name);
            const CHdf5Place place(visitor, group);
            body();
        });
    }

    /// Runs body. In a deck that is examined damage in it is reported, and the reading goes on after it.
    /// \param name  of the group that it reads; empty for a part of the present one
    template <class TBody>
    void examined(const std::string& name, TBody&& body)
    {
        if (isSound(body))
            return;
        const bool isGone = !name.empty() && !has(name); // and the numbers of its neighbours may be wrong
        CReadAudit::gaveUp(*visitor.location, isGone ? std::string() : name);
    }

    template <class TBody>
    void sameGroup(const std::string& name, TBody&& body)
    {
        group(name, body);
    }

    template <class TList, class TBody>
    void numbered(TList& list, TBody&& body)
    {
        std::size_t number = 0;
        for (auto& element : list)
            group(std::to_string(number++), [&] { body(element); });
    }

    template <class T>
    void rows(const std::string& name, std::vector<T>& values, bool stored = true)
    {
        CHdf5RowsReader(*visitor.location).rows(name, values, stored);
    }
    /// Runs body with a form of rows alone, which are inflated together: they are there when it is done.
    template <class TBody>
    void together(TBody&& body)
    {
        CChunkInflating chunks;
        CHdf5RowsReader form(*visitor.location, &chunks);
        body(form);
        chunks.finish();
    }

    template <class T>
    void plainRows(const std::string& name, std::vector<T>& values, bool stored = true)
    {
        rows(name, values, stored);
    }

    template <class T, std::size_t count>
    void fixedRows(const std::string& name, std::array<T, count>& values)
    {
        std::vector<T> found;
        rows(name, found);
        if (found.size() != count)
            throwAt(*visitor.location, "dataset", name,
                    std::to_string(found.size()) + " rows where " + std::to_string(count) + " are needed");
        std::copy(found.begin(), found.end(), values.begin());
    }

    template <class TRecord>
    std::vector<typename TRecord::Row> table(const std::string& name) const
    {
        return readTable<TRecord>(name, fileVersion, *visitor.location);
    }
    /// One record.
    template <class TRecord>
    typename TRecord::Row record(const std::string& name) const
    {
        std::vector<char> bytes(sizeOf(TRecord::fields, fileVersion));
        readDataset(name, compoundOf<TRecord>(fileVersion), bytes.data(), *visitor.location);
        return rowOf<TRecord>(bytes.data(), fileVersion);
    }

    CArrayReader arrays() const { return CArrayReader(*visitor.location); }
    /// Whether one of these arrays is there and has rows, whatever is stored as their number.
    bool hasRows(std::initializer_list<const char*> names) const
    {
        return std::any_of(names.begin(), names.end(),
                           [&](const char* name) { return has(name) && arrays().storedRows(name) > 0; });
    }

    /// Number of the groups and datasets in a group.
    hsize_t childCount() const { return visitor.location->getNumObjs(); }
    /// Their names, in the order of their bytes.
    std::vector<std::string> childNames() const { return NBrenmark::childNames(*visitor.location); }
    bool has(const std::string& name) const { return visitor.location->nameExists(name); }
    bool hasAttribute(const std::string& name) const { return visitor.location->attrExists(name); }

    /// Opens each group in a group, in the order of their names' bytes.
    /// \param body  is given the name
    template <class TBody>
    void children(TBody&& body)
    {
        for (const std::string& name : childNames()) {
            leaveIfStopped();
            group(name, [&] { body(storedText(name)); });
        }
    }

private:
    /// Runs body. \return false if it met damage, in a deck that is examined; in others that ends the reading
    template <class TBody>
    bool isSound(TBody&& body)
    {
        if (!visitor.options.examine) {
            body();
            return true;
        }
        try {
            body();
            return true;
        }
        catch (const std::exception& error) {
            if (!meansDamage(error))
                throw;
            report(eLost, NLogTitle::hdf5Read, textOf(error));
            return false;
        }
    }

    H5::Group opened(const std::string& name) const
    {
        try {
            CReadAudit::askedForObject(*visitor.location, name);
            requireOwn(*visitor.location, "group", name);
            return visitor.location->openGroup(name);
        }
        catch (const H5::Exception& error) {
            throwAt(*visitor.location, "group", name, error);
        }
    }

    CHdf5Visitor& visitor;
    const quint32& fileVersion;
};

} // namespace NBrenmark
