#include "brenmark/archive/deck_search.h"

#include "brenmark/archive/file_digests.h"
#include "brenmark/failure.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>
#include <deque>
#include <dirent.h>
#include <fcntl.h>
#include <filesystem>
#include <glob.h>
#include <map>
#include <optional>
#include <set>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace NBrenmark {

namespace {

namespace fs = std::filesystem;
using FolderIdentity = std::pair<dev_t, ino_t>;

const std::string mainSuffix = ".dem";
constexpr std::array memberSuffixes{".idx", ".ess", ".dfg", ".ptf", ".ppf"};

bool endsWith(const std::string& text, const std::string& end)
{
    return text.size() > end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

/// "pile" of any file of pile.dem; empty for a file of no deck.
std::string baseOf(const std::string& name)
{
    if (endsWith(name, mainSuffix))
        return name.substr(0, name.size() - mainSuffix.size());
    if (const size_t at = name.rfind(".dem.scn."); at != std::string::npos && at > 0)
        return name.substr(0, at);
    for (const char* const suffix : memberSuffixes)
        if (endsWith(name, suffix))
            return name.substr(0, name.size() - std::strlen(suffix));
    return std::string();
}

std::string absolute(const std::string& path)
{
    std::string clean = fs::absolute(path).lexically_normal().string();
    while (clean.size() > 1 && clean.back() == '/')
        clean.pop_back();
    return clean;
}

/// With its links resolved as far as it is there.
std::string resolved(const std::string& path)
{
    std::error_code failure;
    const fs::path whole = fs::weakly_canonical(path, failure);
    return failure ? absolute(path) : absolute(whole.string());
}

std::string parentOf(const std::string& path) { return fs::path(path).parent_path().string(); }

bool isBelow(const std::string& path, const std::string& folder)
{
    return path == folder || folder == "/" || path.compare(0, folder.size() + 1, folder + '/') == 0;
}

/// The deepest folder above two paths, either of them included.
std::string shared(std::string a, const std::string& b)
{
    while (!isBelow(b, a))
        a = parentOf(a);
    return a;
}

bool hasWildcard(const std::string& text) { return text.find_first_of("*?[") != std::string::npos; }

/// What a folder has, from one look at it.
struct SFolderListing
{
    struct SDeck
    {
        bool hasMain = false;
        qint64 bytes = 0;
        std::string files; ///< digest
    };
    std::optional<FolderIdentity> identity;
    std::map<std::string, SDeck> decks; ///< by base
    std::vector<std::string> folders, links;
    std::string problem; ///< why it couldn't be read, or not to its end
};

/// One listing a folder: decks by the thousand may lie in it.
SFolderListing listingOf(const std::string& folder)
{
    SFolderListing listing;
    DIR* const list = opendir(folder.c_str());
    struct stat status = {};
    if (list == nullptr || fstat(dirfd(list), &status) != 0) {
        listing.problem = std::string("the folder can't be read: ") + std::strerror(errno);
        if (list != nullptr)
            closedir(list);
        return listing;
    }
    listing.identity = {status.st_dev, status.st_ino};
    std::map<std::string, std::vector<SDeckFile>> files; // by base
    errno = 0;
    for (const dirent* entry = readdir(list); entry != nullptr; entry = readdir(list)) {
        const std::string name = entry->d_name;
        struct stat own = {}, linked = {};
        if (name == "." || name == ".." || fstatat(dirfd(list), name.c_str(), &own, AT_SYMLINK_NOFOLLOW) != 0)
            continue;
        const bool isLink = S_ISLNK(own.st_mode);
        if (isLink && fstatat(dirfd(list), name.c_str(), &linked, 0) == 0)
            own = linked;
        if (S_ISDIR(own.st_mode)) {
            if (!endsWith(name, ".dem.partial")) // a deck in the making
                (isLink ? listing.links : listing.folders).push_back((folder + '/').append(name));
        }
        else if (const std::string base = baseOf(name); !base.empty()) {
            files[base].push_back({name, own.st_size, own.st_mtim.tv_sec * qint64(1000000000) + own.st_mtim.tv_nsec});
        }
        errno = 0;
    }
    if (errno != 0)
        listing.problem = std::string("the folder can't be read to its end: ") + std::strerror(errno);
    closedir(list);
    for (auto& [base, members] : files) {
        SFolderListing::SDeck& deck = listing.decks[base];
        for (const SDeckFile& file : members) {
            deck.bytes += file.size;
            deck.hasMain = deck.hasMain || file.name == base + mainSuffix;
        }
        deck.files = filesDigest(std::move(members));
    }
    std::sort(listing.folders.begin(), listing.folders.end());
    std::sort(listing.links.begin(), listing.links.end());
    return listing;
}

class CDeckSearch
{
public:
    CDeckSearch(const std::string& folder, bool followLinks)
        : target(absolute(folder)), resolvedTarget(resolved(folder)), followLinks(followLinks)
    {}

    void add(const std::string& input);
    std::vector<SArchiveDeck> finish();

private:
    void addMatches(const std::string& pattern);
    void addFile(const std::string& path);
    void addTree(const std::string& path);
    void visit(const std::string& folder);
    const SFolderListing& knownListing(const std::string& folder);
    void addProblem(const std::string& path, const std::string& problem, int code);
    void refuseClashes();
    void takeBase(const std::string& folder) { base = base.empty() ? folder : shared(base, folder); }

    const std::string target;
    const std::string resolvedTarget;
    const bool followLinks;
    std::string base; ///< folder that all inputs share
    std::vector<SArchiveDeck> decks;
    std::set<FolderIdentity> visited;
    SFolderListing listed;
    std::string listedFolder;
    std::deque<std::string> folders, links; ///< a folder that links lead to as well is found where it is
};

void CDeckSearch::add(const std::string& input)
{
    if (input.empty())
        throw CFailure(eExitUsage, "an empty path", "Name decks, folders of decks or wildcards.");
    const std::string path = absolute(input);
    struct stat status = {};
    if (stat(path.c_str(), &status) != 0) {
        if (hasWildcard(input))
            return addMatches(input);
        throw CFailure(eExitSource, input + ": " + (errno == ENOENT ? "no such file or folder" : std::strerror(errno)),
                       "Check the path.");
    }
    if (S_ISDIR(status.st_mode))
        addTree(path);
    else
        addFile(path);
}

/// Files of no deck are no matter of a wildcard's, and the base is where the wildcard begins, whatever it matches.
void CDeckSearch::addMatches(const std::string& pattern)
{
    const std::string whole = absolute(pattern);
    takeBase(parentOf(whole.substr(0, whole.find_first_of("*?[")) + 'x'));
    glob_t matches = {};
    const int code = glob(pattern.c_str(), 0, nullptr, &matches);
    const std::vector<std::string> found(matches.gl_pathv, matches.gl_pathv + (code == 0 ? matches.gl_pathc : 0));
    globfree(&matches);
    bool any = false;
    for (const std::string& match : found) {
        const std::string path = absolute(match);
        struct stat status = {};
        if (stat(path.c_str(), &status) != 0)
            continue;
        if (S_ISDIR(status.st_mode))
            addTree(path);
        else if (endsWith(path, mainSuffix))
            addFile(path);
        else
            continue;
        any = true;
    }
    if (!any)
        throw CFailure(eExitSource, pattern + ": matches no deck and no folder", "Check the path.");
}

void CDeckSearch::addFile(const std::string& path)
{
    const std::string name = fs::path(path).filename().string(), folder = parentOf(path);
    std::string own = baseOf(name);
    std::string mainFile = own.empty() ? path : folder + '/' + own + mainSuffix;
    if (access(mainFile.c_str(), F_OK) != 0) { // a deck by its content, whatever it is called
        own = name;
        mainFile = path;
    }
    takeBase(folder);
    SArchiveDeck deck;
    deck.source = mainFile;
    const SFolderListing& listing = knownListing(folder);
    if (const auto found = listing.decks.find(own); found != listing.decks.end()) {
        deck.bytes = found->second.bytes;
        deck.files = found->second.files;
    }
    decks.push_back(std::move(deck));
}

void CDeckSearch::addTree(const std::string& path)
{
    if (isBelow(resolvedTarget, resolved(path)))
        throw CFailure(eExitTarget, target + ": is in the tree of " + path + ", whose decks are to be converted",
                       "Choose a folder outside of it: the source must stay as it is.");
    takeBase(path);
    folders.push_back(path);
}

void CDeckSearch::addProblem(const std::string& path, const std::string& problem, int code)
{
    SArchiveDeck deck;
    deck.source = path;
    deck.problem = path + ": " + problem;
    deck.code = code;
    decks.push_back(std::move(deck));
}

/// Files that are named one by one often lie in one folder.
const SFolderListing& CDeckSearch::knownListing(const std::string& folder)
{
    if (listedFolder != folder) {
        listed = listingOf(folder);
        listedFolder = folder;
    }
    return listed;
}

void CDeckSearch::visit(const std::string& folder)
{
    SFolderListing listing = listingOf(folder);
    if (!listing.problem.empty())
        addProblem(folder, listing.problem, eExitSource);
    if (listing.identity && !visited.insert(*listing.identity).second)
        return;
    for (auto& [base, found] : listing.decks) {
        if (!found.hasMain)
            continue;
        SArchiveDeck deck;
        deck.source.append(folder).append(1, '/').append(base).append(mainSuffix);
        deck.bytes = found.bytes;
        deck.files = std::move(found.files);
        decks.push_back(std::move(deck));
    }
    folders.insert(folders.end(), listing.folders.begin(), listing.folders.end());
    if (followLinks)
        links.insert(links.end(), listing.links.begin(), listing.links.end());
}

std::vector<SArchiveDeck> CDeckSearch::finish()
{
    while (!folders.empty() || !links.empty()) {
        const bool isLink = folders.empty();
        std::deque<std::string>& next = isLink ? links : folders;
        const std::string folder = next.front();
        next.pop_front();
        if (isLink && isBelow(resolvedTarget, resolved(folder)))
            throw CFailure(eExitTarget, target + ": is in the tree that the link " + folder + " leads to",
                           "Choose a folder outside of it, or leave --follow-links out.");
        visit(folder);
    }
    // One that was named twice is found twice. A table of all names would take more memory than the decks.
    std::sort(decks.begin(), decks.end(),
              [](const SArchiveDeck& a, const SArchiveDeck& b) { return a.source < b.source; });
    decks.erase(std::unique(decks.begin(), decks.end(),
                            [](const SArchiveDeck& a, const SArchiveDeck& b) { return a.source == b.source; }),
                decks.end());
    for (SArchiveDeck& deck : decks) {
        deck.target = deck.source.substr(std::min(deck.source.size(), base == "/" ? 1 : base.size() + 1));
        if (!deck.problem.empty()) {
            deck.target += '/';
            continue;
        }
        if (!endsWith(deck.target, mainSuffix))
            deck.target += mainSuffix;
    }
    refuseClashes();
    return std::move(decks);
}

/// Of those that would get one name the first by its path keeps it; in journals the others have a number after theirs.
void CDeckSearch::refuseClashes()
{
    std::vector<SArchiveDeck*> byTarget;
    byTarget.reserve(decks.size());
    for (SArchiveDeck& deck : decks)
        if (deck.problem.empty())
            byTarget.push_back(&deck);
    std::stable_sort(byTarget.begin(), byTarget.end(),
                     [](const SArchiveDeck* a, const SArchiveDeck* b) { return a->target < b->target; });
    const SArchiveDeck* first = nullptr;
    int same = 1;
    for (SArchiveDeck* const deck : byTarget) {
        if (first == nullptr || first->target != deck->target) {
            first = deck;
            same = 1;
            continue;
        }
        deck->target += '#' + std::to_string(++same);
        deck->problem = deck->source + ": its new deck would have the name of that of " + first->source;
        deck->code = eExitTarget;
    }
}

} // namespace

std::vector<SArchiveDeck> findDecks(const std::vector<std::string>& inputs, const std::string& folder, bool followLinks)
{
    CDeckSearch search(folder, followLinks);
    for (const std::string& input : inputs)
        search.add(input);
    return search.finish();
}

} // namespace NBrenmark
