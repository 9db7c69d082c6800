#include "brenmark/deck_swap.h"

#include <algorithm>

namespace NBrenmark {

/// A numbered file, or one that a killed process left unfinished.
static bool isNumberedFile(const std::string& name)
{
    const size_t digits = name.find_first_not_of("0123456789");
    return digits != 0 && digits != std::string::npos &&
           (name.substr(digits) == ".h5" || name.substr(digits) == ".h5.part");
}

static bool isDeckMember(const std::string& name, const std::string& base)
{
    if (name.compare(0, base.size(), base) != 0)
        return false;
    const std::string rest = name.substr(base.size());
    for (const char* const suffix : {".idx", ".ess", ".dfg", ".ptf", ".ppf", ".digest.json", "_data"})
        if (rest == suffix)
            return true;
    const std::string segment = ".dem.scn.";
    return rest.size() > segment.size() && rest.compare(0, segment.size(), segment) == 0 &&
           rest.find_first_not_of("0123456789", segment.size()) == std::string::npos;
}

static std::string mainFile(const SSwapPlaces& places) { return '/' + places.base + ".dem"; }

static void moveMembers(IDisk& disk, const std::string& from, const std::string& to, const std::string& base)
{
    for (const std::string& name : deckMembers(disk, from, base))
        disk.rename(inFolder(from, name), inFolder(to, name));
}

std::string inFolder(const std::string& folder, const std::string& name) { return (folder + '/').append(name); }

std::string replacedFolder(const SSwapPlaces& places) { return places.partial + "/replaced"; }

std::vector<std::string> deckMembers(const IDisk& disk, const std::string& folder, const std::string& base)
{
    std::vector<std::string> members = disk.names(folder);
    members.erase(std::remove_if(members.begin(), members.end(),
                                 [&](const std::string& name) { return !isDeckMember(name, base); }),
                  members.end());
    return members;
}

void moveOldDeckAside(IDisk& disk, const SSwapPlaces& places)
{
    const std::string aside = replacedFolder(places);
    const auto syncAll = [&] {
        disk.sync(aside);
        disk.sync(places.folder);
    };
    disk.makeFolder(aside);
    disk.sync(places.partial);
    if (disk.exists(places.folder + mainFile(places)))
        disk.rename(places.folder + mainFile(places), aside + mainFile(places));
    syncAll();
    moveMembers(disk, places.folder, aside, places.base);
    syncAll();
}

void moveNewDeckIn(IDisk& disk, const SSwapPlaces& places)
{
    const auto syncAll = [&] {
        disk.sync(places.folder);
        disk.sync(places.partial);
    };
    moveMembers(disk, places.partial, places.folder, places.base);
    syncAll();
    if (disk.exists(places.partial + mainFile(places)))
        disk.rename(places.partial + mainFile(places), places.folder + mainFile(places));
    syncAll();
}

std::string strangerIn(const IDisk& disk, const std::string& dataFolder)
{
    for (const std::string& name : disk.names(dataFolder))
        if (!isNumberedFile(name))
            return name;
    return std::string();
}

void removeDeck(IDisk& disk, const std::string& folder, const std::string& base)
{
    for (const std::string& name : deckMembers(disk, folder, base)) {
        const std::string path = inFolder(folder, name);
        if (name == base + "_data" && !disk.isLink(path)) {
            for (const std::string& file : disk.names(path))
                if (isNumberedFile(file))
                    disk.remove(inFolder(path, file));
            if (!disk.names(path).empty())
                continue;
        }
        disk.remove(path);
    }
    if (disk.exists(folder + '/' + base + ".dem"))
        disk.remove(folder + '/' + base + ".dem");
}

} // namespace NBrenmark
