#include "brenmark/partial_folder.h"

#include "brenmark/failure.h"
#include "brenmark/terminal.h"
#include "brenmark/units_text.h"

#include "core/deck/deck_files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace NBrenmark {

namespace {

const QLatin1String partialSuffix(".partial");
const char* const lockName = "lock";

QString fromNative(const std::string& path) { return QFile::decodeName(QByteArray::fromStdString(path)); }

/// What this process is making, by the path of its folder; empty for nothing.
QString& ownFolder()
{
    static QString path;
    return path;
}

/// Companions are finished under a name of their own before they get theirs.
bool isUnfinishedCompanion(const std::string& name)
{
    return name.compare(0, 10, "companion-") == 0 || name.compare(0, 10, ".brenmark-") == 0;
}

/// Whether the file is still the one of that name: another process may have removed it in between.
bool isNamed(int file, const std::string& path)
{
    struct stat opened = {}, named = {};
    return fstat(file, &opened) == 0 && stat(path.c_str(), &named) == 0 && opened.st_dev == named.st_dev &&
           opened.st_ino == named.st_ino;
}

bool isLockingUnknown(int error) { return error == ENOSYS || error == EOPNOTSUPP || error == ENOLCK; }

} // namespace

// ---------------------------------------------------------------- the folder and its lock

CPartialFolder::CPartialFolder(const QString& target) : target(target)
{
    const QFileInfo info(target);
    places.folder = nativePath(info.absolutePath());
    places.partial = nativePath(pathFor(target));
    places.base = nativePath(info.completeBaseName());
    takeLock();
    try {
        realDisk().sync(places.folder);
    }
    catch (const CFailure&) {
        release();
        throw;
    }
    ownFolder() = path();
}

CPartialFolder::~CPartialFolder()
{
    ownFolder().clear();
    release();
}

void CPartialFolder::release() const
{
    if (lock < 0)
        return;
    if (realDisk().names(places.partial) == std::vector<std::string>{lockName}) {
        ::unlink((places.partial + '/' + lockName).c_str());
        ::rmdir(places.partial.c_str());
    }
    ::close(lock);
}

void CPartialFolder::takeLock()
{
    const std::string file = places.partial + '/' + lockName;
    for (int attempt = 0; attempt < 100; ++attempt) {
        if (realDisk().exists(places.partial) && (!QFileInfo(path()).isDir() || realDisk().isLink(places.partial)))
            throw CFailure(eExitTarget, places.partial + " is in the way: a conversion needs a folder of that name",
                           "Move it elsewhere, or choose another name for the new deck.");
        realDisk().makeFolder(places.partial);
        lock = ::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0666);
        if (lock < 0 && errno == ENOENT)
            continue; // the one who was here has just removed the folder
        if (lock < 0)
            throw CFailure(eExitTarget, file + ": can't be opened: " + std::strerror(errno),
                           "Check the permissions of the folder, or choose another name for the new deck.");
        if (::flock(lock, LOCK_EX | LOCK_NB) != 0 && !isLockingUnknown(errno)) {
            ::close(lock);
            lock = -1;
            throw CFailure(eExitTarget, utf8(target) + ": another conversion is making it, in " + places.partial,
                           "Wait until it has finished, or choose another name for this one.");
        }
        if (isNamed(lock, file))
            return;
        ::close(lock);
        lock = -1;
    }
    throw CFailure(eExitTarget, file + ": can't be locked",
                   "Other conversions keep using it: wait until they have finished.");
}

QString CPartialFolder::pathFor(const QString& target) { return QFileInfo(target).absoluteFilePath() + partialSuffix; }

QString CPartialFolder::path() const { return fromNative(places.partial); }

QString CPartialFolder::deck() const { return path() + QLatin1Char('/') + QFileInfo(target).fileName(); }

// ---------------------------------------------------------------- the deck in the making

static std::string numberedFile(const SSwapPlaces& places, quint32 number)
{
    return places.partial + '/' + places.base + "_data/" + std::to_string(number) + ".h5";
}

void CPartialFolder::syncTimesteps(quint32 first, quint32 last) const
{
    for (quint32 number = first; number < last; ++number)
        realDisk().sync(numberedFile(places, number));
    if (first < last) {
        realDisk().sync(places.partial + '/' + places.base + "_data");
        realDisk().sync(places.partial);
    }
}

void CPartialFolder::syncDeck() const
{
    for (const std::string& name : deckMembers(realDisk(), places.partial, places.base))
        realDisk().sync(places.partial + '/' + name);
    realDisk().sync(nativePath(deck()));
    realDisk().sync(places.partial);
}

bool CPartialFolder::isWhole(quint32 timesteps) const
{
    const QString base = stripDeckSuffix(deck());
    return timestepsThere(timesteps) == timesteps && QFileInfo(deck()).isFile() &&
           QFileInfo(base + NDeckFile::settingsSuffix).isFile() &&
           QFileInfo(base + NDeckFile::configurationSuffix).isFile();
}

quint32 CPartialFolder::timestepsThere(quint32 most) const
{
    quint32 count = 0;
    while (count < most && QFileInfo(fromNative(numberedFile(places, count))).isFile())
        ++count;
    return count;
}

void CPartialFolder::keepTimesteps(quint32 count) const
{
    clearScratch();
    const std::string data = places.base + "_data";
    const auto isKept = [&](const std::string& name) {
        const size_t digits = name.find_first_not_of("0123456789");
        return digits != 0 && digits < 10 && name.substr(digits) == ".h5" && std::stoul(name) < count;
    };
    for (const std::string& name : realDisk().names(places.partial)) {
        const std::string file = places.partial + '/' + name;
        if (isUnfinishedCompanion(name) || name == places.base + ".dem")
            realDisk().remove(file);
    }
    for (const std::string& name : deckMembers(realDisk(), places.partial, places.base))
        if (name != data)
            realDisk().remove(places.partial + '/' + name);
    const std::string folder = inFolder(places.partial, data);
    for (const std::string& name : realDisk().names(folder))
        if (!isKept(name))
            realDisk().remove(inFolder(folder, name));
}

// ---------------------------------------------------------------- its end

void CPartialFolder::place(SJournal journal)
{
    IDisk& disk = realDisk();
    const auto enter = [&](EJournalState state) {
        journal.state = state;
        write(journal);
    };
    try {
        if (journal.state == eComplete)
            enter(eReplacing);
        if (journal.state == eReplacing) {
            moveOldDeckAside(disk, places);
            enter(ePlacing);
        }
        moveNewDeckIn(disk, places);
        clear();
    }
    catch (CFailure& failure) {
        failure.advice +=
            " What isn't at the target is in " + places.partial +
            ", the old deck's files below replaced; this command finishes the change when it is repeated.";
        throw;
    }
}

QString CPartialFolder::scratch() const { return path() + QLatin1String("/scratch"); }

void CPartialFolder::clearScratch() const
{
    std::error_code failure; // what can't be removed is in the way of the folder, which says so
    std::filesystem::remove_all(nativePath(scratch()), failure); // of a link, the link
}

void CPartialFolder::clear()
{
    clearScratch();
    IDisk& disk = realDisk();
    const std::string aside = replacedFolder(places);
    removeDeck(disk, places.partial, places.base);
    removeDeck(disk, aside, places.base);
    if (disk.exists(aside) && disk.names(aside).empty())
        disk.remove(aside);
    for (const std::string& name : disk.names(places.partial))
        if (isUnfinishedCompanion(name) || name == newJournalName)
            disk.remove(places.partial + '/' + name);
    for (const std::string& name : disk.names(places.partial))
        if (name != journalName && name != lockName)
            throw CFailure(eExitTarget, places.partial + '/' + name + ": is in the way, and no conversion made it",
                           "Move it elsewhere, and repeat this command.");
    if (isBegun()) // the last, for what is here without one belongs to no conversion
        disk.remove(places.partial + '/' + journalName);
    disk.sync(places.partial);
}

// ---------------------------------------------------------------- seen from outside

std::string SPartialDeck::countText() const
{
    if (timesteps == 0)
        return "of an unknown number of timesteps";
    return std::to_string(finished) + " of " + NBrenmark::countText(timesteps, "timestep");
}

std::string SPartialDeck::command() const
{
    return "brenmark convert --resume " + (source.isEmpty() ? "SOURCE" : shellQuoted(utf8(source))) + ' ' +
           shellQuoted(utf8(target));
}

std::optional<SPartialDeck> partialDeckAt(const QString& path)
{
    const QFileInfo info(QDir::cleanPath(path));
    QString folder;
    if (info.isDir() && info.fileName().endsWith(partialSuffix))
        folder = info.absoluteFilePath();
    else if (info.absolutePath().endsWith(partialSuffix))
        folder = info.absolutePath();
    else if (!info.exists() && QFileInfo(info.filePath() + partialSuffix).isDir())
        folder = info.absoluteFilePath() + partialSuffix;
    if (folder.isEmpty() || folder == ownFolder() || !hasJournal(nativePath(folder)))
        return std::nullopt;
    SPartialDeck deck;
    deck.path = folder;
    deck.target = folder.chopped(partialSuffix.size());
    try {
        const SJournal journal = readJournal(nativePath(folder));
        deck.source = journal.source;
        deck.finished = journal.finished;
        deck.timesteps = journal.timesteps;
    }
    catch (const CFailure&) { // another version's: partial anyway
    }
    return deck;
}

} // namespace NBrenmark
