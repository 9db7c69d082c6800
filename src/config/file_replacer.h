#pragma once
// How a companion of a deck takes its place: it is finished as a temporary file, then copied onto its target
// from a thread of its own, so that a target that another program holds for a moment is waited for.

#include <QBuffer>
#include <QString>
#include <QTemporaryFile>

#include <memory>
#include <string>
#include <vector>

namespace NBrenmark {

/// Where files are in the making from now on: a null path for the system's temporary folder, as at the beginning.
void setFolderOfReplacements(const QString& path);

/// A file in the making. It vanishes unless it replaces its target.
class CFileReplacement
{
public:
    /// Opens the temporary file for writing.
    CFileReplacement();

    bool isOpen() const { return file->isOpen(); }
    /// What the file is to hold: in memory, for a file forgets a write that failed when it is asked to go elsewhere.
    QIODevice& device() { return content; }

    /// Writes the content to the temporary file, whole or not at all.
    bool complete();
    /// Completes the file and starts to copy it into the target's place: at once, and while that fails up to five
    /// times, 100 ms apart. Until the new file is there whole the target is the earlier one. False if the temporary
    /// file isn't whole.
    bool replace(const QString& target);
    /// What stopped the temporary file from being opened or completed.
    std::string cause() const;

private:
    QBuffer content;
    std::shared_ptr<QTemporaryFile> file;
    std::string failure;
    bool isComplete = false;
};

/// A target that no try has reached.
struct SFailedCopy
{
    QString target;
    std::string cause;
};

/// Waits until no copy is under way, and gives the targets that failed since the last call. Each of them is
/// reported in the log too. The end of the process waits as well, in silence: no finished file is lost to it.
std::vector<SFailedCopy> waitForCopies();

} // namespace NBrenmark
