#pragma once
// A folder for the files of one test, gone with the test, and the proof that files weren't touched.

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <filesystem>
#include <map>
#include <stdexcept>
#include <string>

namespace NBrenmark {

/// What a folder holds at one moment, subfolders included: every file's bytes and time stamp.
class CSnapshot
{
public:
    explicit CSnapshot(const QString& folder)
    {
        namespace fs = std::filesystem;
        const fs::path root(folder.toStdString());
        for (const fs::directory_entry& entry : fs::recursive_directory_iterator(root)) {
            const std::string name = fs::relative(entry.path(), root).string();
            if (entry.is_directory())
                files[name + "/"] = SFile();
            else
                files[name] = SFile{bytesOf(QString::fromStdString(entry.path().string())), entry.last_write_time()};
        }
    }

    /// What changed until later, a line each; empty if nothing did.
    std::string changesUntil(const CSnapshot& later) const
    {
        std::string changes;
        for (const auto& [name, file] : files) {
            const auto found = later.files.find(name);
            if (found == later.files.end())
                changes += name + " is gone\n";
            else if (found->second.bytes != file.bytes)
                changes += name + " has other bytes\n";
            else if (found->second.modified != file.modified)
                changes += name + " has another time stamp\n";
        }
        for (const auto& [name, file] : later.files) {
            if (files.count(name) == 0)
                changes += name + " is new\n";
        }
        return changes;
    }

private:
    struct SFile
    {
        QByteArray bytes;
        std::filesystem::file_time_type modified{};
    };

    static QByteArray bytesOf(const QString& path)
    {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            throw std::runtime_error("can't read " + path.toStdString());
        return file.readAll();
    }

    std::map<std::string, SFile> files;
};

/// A folder of its own for each object. Its name has a blank and letters beyond ASCII in it, so
/// that every test shows that those work.
class CTempFolder
{
public:
    CTempFolder() : folder(QDir::tempPath() + QStringLiteral("/brenmark Gefäß-XXXXXX"))
    {
        if (!folder.isValid())
            throw std::runtime_error("no temporary folder: " + folder.errorString().toStdString());
    }

    QString path() const { return folder.path(); }
    /// Path of a file in the folder.
    QString path(const QString& name) const { return folder.filePath(name); }

    /// Writes a file, with the folders on its way, and gives its path.
    QString write(const QString& name, const QByteArray& bytes) const
    {
        QFile file(path(name));
        if (!QDir().mkpath(QFileInfo(file).path()) || !file.open(QIODevice::WriteOnly) ||
            file.write(bytes) != bytes.size())
            throw std::runtime_error("can't write " + name.toStdString());
        return file.fileName();
    }

    QByteArray read(const QString& name) const
    {
        QFile file(path(name));
        if (!file.open(QIODevice::ReadOnly))
            throw std::runtime_error("can't read " + name.toStdString());
        return file.readAll();
    }

    bool has(const QString& name) const { return QFileInfo::exists(path(name)); }

    /// Names of all that lies in the folder itself, sorted.
    QStringList names() const
    {
        return QDir(path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                                      QDir::Name);
    }

    CSnapshot snapshot() const { return CSnapshot(path()); }

private:
    QTemporaryDir folder;
};

} // namespace NBrenmark
