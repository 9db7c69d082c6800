#pragma once
// The few file operations by which a new deck takes its place, each with a failure that says what failed. A test takes the place of the
// disk, drops what wasn't synced, and looks at what a loss of power would have left.

#include <QString>

#include <string>
#include <vector>

namespace NBrenmark {

/// Paths are in the encoding of the file system. What changes something \throws CFailure.
class IDisk
{
public:
    virtual ~IDisk() = default;
    /// A link that leads nowhere is there, too.
    virtual bool exists(const std::string& path) const = 0;
    virtual bool isLink(const std::string& path) const = 0;
    /// What lies in a folder, sorted; empty for a folder that isn't there.
    virtual std::vector<std::string> names(const std::string& folder) const = 0;
    virtual void makeFolder(const std::string& path) = 0;
    virtual void writeFile(const std::string& path, const std::string& content) = 0;
    virtual void rename(const std::string& from, const std::string& to) = 0;
    /// Removes a file, a link or an empty folder.
    virtual void remove(const std::string& path) = 0;
    /// Returns when the content of a file, or what a folder lists, is safe from a loss of power.
    virtual void sync(const std::string& path) = 0;
};

IDisk& realDisk();

/// A path in the encoding of the file system.
std::string nativePath(const QString& path);

} // namespace NBrenmark
