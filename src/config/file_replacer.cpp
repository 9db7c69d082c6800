// Copies finished companions onto their targets in threads that are waited for at the end of the process, so that an
// exit right after a save loses nothing.
#include "config/file_replacer.h"

#include "core/log.h"

#include <QFileInfo>
#include <QRandomGenerator>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <filesystem>
#include <list>
#include <mutex>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <utility>

namespace NBrenmark {

static constexpr int greatestTries = 5;
static constexpr std::chrono::milliseconds pauseBetweenTries(100);

/// The copies under way, oldest first, and those that failed.
class CCopyRegistry
{
public:
    /// At the end of the process the copies that are under way come first.
    ~CCopyRegistry() { waitUntilIdle(); }

    using Place = std::list<QString>::iterator;

    Place enter(const QString& target)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        return underWay.insert(underWay.end(), target);
    }

    /// Returns when no older copy onto the same target is under way: the file written last is the one that stays.
    void waitForTurn(Place place)
    {
        std::unique_lock<std::mutex> lock(mutex);
        changed.wait(lock, [&] { return std::find(underWay.begin(), place, *place) == place; });
    }

    void leave(Place place, const std::string& cause)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        if (!cause.empty())
            failed.push_back({*place, cause});
        underWay.erase(place);
        changed.notify_all();
    }

    /// Runs a copy in a thread of its own. \throws std::system_error  there is none to be had
    template <class TWork>
    void start(TWork&& work)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        threads.emplace_back(std::forward<TWork>(work));
    }

    /// Returns when no copy is under way and the threads of all are gone: a thread that has copied still removes
    /// its temporary file, which the end of the process would cut short.
    void waitUntilIdle()
    {
        std::vector<std::thread> ending;
        {
            std::unique_lock<std::mutex> lock(mutex);
            changed.wait(lock, [this] { return underWay.empty(); });
            ending.swap(threads);
        }
        for (std::thread& thread : ending)
            thread.join();
    }

    std::vector<SFailedCopy> takeFailed()
    {
        const std::lock_guard<std::mutex> lock(mutex);
        return std::exchange(failed, {});
    }

private:
    std::mutex mutex;
    std::condition_variable changed;
    std::list<QString> underWay;
    std::vector<SFailedCopy> failed;
    std::vector<std::thread> threads; ///< that haven't been waited for yet
};

static CCopyRegistry& copyRegistry()
{
    static CCopyRegistry registry;
    return registry;
}

/// A name beside the target under which no link can have been put beforehand, and that is never too long where the
/// target's own isn't.
static QString unfinishedName(const QString& target)
{
    const QString number = QString::number(QRandomGenerator::system()->generate64(), 16);
    return QFileInfo(target).path() + QStringLiteral("/.brenmark-") + number + QStringLiteral(".part");
}

/// Copies the whole of source beside target, and then gives it that name: whatever fails, and whenever a process is
/// killed or the power goes, the target is the earlier file or the new one. Every step that can meet a full disk is
/// asked for its result, the closing too, and the size on the disk has the last word.
/// \return the cause if it didn't arrive whole
static std::string copyOnto(QTemporaryFile& source, const QString& target)
{
    if (!source.seek(0))
        return source.errorString().toStdString();
    const QString unfinished = unfinishedName(target);
    QFile copy(unfinished);
    if (!copy.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered))
        return copy.errorString().toStdString();

    std::string cause;
    while (!source.atEnd() && cause.empty()) {
        const QByteArray bytes = source.read(1 << 20);
        if (bytes.isEmpty())
            cause = "the temporary file could not be read: " + source.errorString().toStdString();
        else if (copy.write(bytes) != bytes.size())
            cause = copy.errorString().toStdString();
    }
    if (cause.empty() && fsync(copy.handle()) != 0)
        cause = qt_error_string(errno).toStdString();
    copy.close();
    if (cause.empty() && copy.error() != QFileDevice::NoError)
        cause = copy.errorString().toStdString();
    if (cause.empty() && QFileInfo(unfinished).size() != source.size())
        cause = "the file did not arrive whole";
    std::error_code failure;
    if (cause.empty())
        std::filesystem::rename(QFile::encodeName(unfinished).toStdString(), QFile::encodeName(target).toStdString(),
                                failure);
    if (failure)
        cause = failure.message();
    if (!cause.empty())
        QFile::remove(unfinished);
    return cause;
}

static std::string copyWithPatience(QTemporaryFile& source, const QString& target)
{
    std::string cause;
    for (int attempt = 1; attempt <= greatestTries; ++attempt) {
        if (attempt > 1)
            std::this_thread::sleep_for(pauseBetweenTries);
        cause = copyOnto(source, target);
        if (cause.empty())
            return cause;
    }
    // It is the only copy of what was to be saved: the user may have a place for it.
    source.setAutoRemove(false);
    return cause + ". The finished file is kept as " + source.fileName().toStdString() + ".";
}

static QString& folderOfReplacements()
{
    static QString path;
    return path;
}

void setFolderOfReplacements(const QString& path) { folderOfReplacements() = path; }

CFileReplacement::CFileReplacement() : file(std::make_shared<QTemporaryFile>())
{
    if (!folderOfReplacements().isEmpty())
        file->setFileTemplate(folderOfReplacements() + QStringLiteral("/companion-XXXXXX"));
    content.open(QIODevice::ReadWrite);
    if (!file->open())
        failure = file->errorString().toStdString();
}

std::string CFileReplacement::cause() const { return failure; }

bool CFileReplacement::complete()
{
    if (isComplete || !file->isOpen() || !failure.empty())
        return isComplete;
    isComplete = file->write(content.data()) == content.size() && file->flush();
    if (!isComplete)
        failure = file->errorString().toStdString();
    return isComplete;
}

bool CFileReplacement::replace(const QString& target)
{
    if (!complete())
        return false;
    CCopyRegistry& registry = copyRegistry();
    const CCopyRegistry::Place place = registry.enter(target);
    const auto work = [source = file, target, place, &registry] {
        std::string cause;
        try {
            registry.waitForTurn(place);
            cause = copyWithPatience(*source, target);
        }
        catch (const std::exception& error) {
            cause = error.what();
        }
        registry.leave(place, cause);
    };
    try {
        registry.start(work);
    }
    catch (const std::system_error&) {
        work(); // no thread to be had: the caller waits instead
    }
    return true;
}

std::vector<SFailedCopy> waitForCopies()
{
    CCopyRegistry& registry = copyRegistry();
    registry.waitUntilIdle();
    std::vector<SFailedCopy> failed = registry.takeFailed();
    for (const SFailedCopy& copy : failed)
        reportFailure(NLogTitle::settings, copy.target.toStdString() + " could not be written: " + copy.cause,
                      eCauseTarget);
    return failed;
}

} // namespace NBrenmark
