// A loss of power at every moment of the swap: whatever a disk may have kept of what wasn't synced, the final name is
// absent or stands for a whole deck, and the next run finishes the new one.
#include "brenmark/deck_swap.h"

#include <gtest/gtest.h>

#include <map>
#include <set>

namespace NBrenmark {
namespace {

/// What lies on the disk: paths, and what each file holds. A folder holds "/".
using Tree = std::map<std::string, std::string>;

std::string folderOf(const std::string& path) { return path.substr(0, path.rfind('/')); }

/// Moves a file, or a folder with all below it.
void moveIn(Tree& tree, const std::string& from, const std::string& to)
{
    Tree moved;
    for (auto i = tree.begin(); i != tree.end();) {
        const bool goes = i->first == from || i->first.compare(0, from.size() + 1, from + '/') == 0;
        if (goes)
            moved[to + i->first.substr(from.size())] = i->second;
        i = goes ? tree.erase(i) : std::next(i);
    }
    tree.insert(moved.begin(), moved.end());
}

struct SRename
{
    std::string from, to;
    bool fromSynced = false, toSynced = false; ///< its folders, since
};

struct SPowerLoss
{
};

/// Renames reach the disk in any order and any number, until both of their folders are synced. Power goes before
/// the so-many-th call.
class CVolatileDisk : public IDisk
{
public:
    explicit CVolatileDisk(Tree tree) : now(std::move(tree)), kept(now) {}

    bool exists(const std::string& path) const override { return now.count(path) != 0; }
    bool isLink(const std::string&) const override { return false; }
    std::vector<std::string> names(const std::string& folder) const override
    {
        std::vector<std::string> found;
        for (const auto& [path, content] : now)
            if (folderOf(path) == folder)
                found.push_back(path.substr(folder.size() + 1));
        return found;
    }
    void makeFolder(const std::string& path) override
    {
        call();
        now[path] = "/";
        kept[path] = "/";
    }
    void writeFile(const std::string&, const std::string&) override { FAIL() << "the swap writes nothing"; }
    void rename(const std::string& from, const std::string& to) override
    {
        call();
        ASSERT_EQ(now.count(to), 0u) << to << " would be lost";
        moveIn(now, from, to);
        pending.push_back({from, to, false, false});
    }
    void remove(const std::string&) override { FAIL() << "the swap removes nothing"; }
    void sync(const std::string& folder) override
    {
        call();
        std::vector<SRename> rest;
        for (SRename& move : pending) {
            move.fromSynced |= folderOf(move.from) == folder;
            move.toSynced |= folderOf(move.to) == folder;
            if (move.fromSynced && move.toSynced)
                moveIn(kept, move.from, move.to);
            else
                rest.push_back(move);
        }
        pending = rest;
    }

    /// Each tree that the disk may hold after the loss.
    std::vector<Tree> remains() const
    {
        std::vector<Tree> all;
        for (unsigned int chosen = 0; chosen < 1u << pending.size(); ++chosen) {
            Tree tree = kept;
            for (size_t i = 0; i < pending.size(); ++i)
                if ((chosen >> i & 1u) != 0)
                    moveIn(tree, pending[i].from, pending[i].to);
            all.push_back(tree);
        }
        return all;
    }

    int callsLeft = -1;
    int calls = 0;

private:
    void call()
    {
        if (callsLeft-- == 0)
            throw SPowerLoss();
        ++calls;
    }

    Tree now, kept;
    std::vector<SRename> pending;
};

const SSwapPlaces places{"/d", "/d/a.dem.partial", "a"};

void addDeck(Tree& tree, const std::string& folder, const std::string& content, std::vector<std::string> names)
{
    for (const std::string& name : names)
        tree[folder + "/a" + name] = content;
    tree[folder + "/a_data"] = "/";
    tree[folder + "/a_data/0.h5"] = content;
}

/// Which deck the final name stands for: "" for none, "mixed" for what is no deck.
std::string deckAt(const Tree& tree)
{
    if (tree.count("/d/a.dem") == 0)
        return "";
    const std::string which = tree.at("/d/a.dem");
    const std::set<std::string> members = which == "old" ? std::set<std::string>{".dem", ".ess", ".ptf", "_data/0.h5"}
                                                         : std::set<std::string>{".dem", ".ess", ".dfg", "_data/0.h5"};
    std::set<std::string> found;
    for (const auto& [path, content] : tree) {
        if (path.compare(0, 4, "/d/a") != 0 || path.compare(0, 16, "/d/a.dem.partial") == 0 || content == "/")
            continue;
        if (content != which)
            return "mixed";
        found.insert(path.substr(4));
    }
    return found == members ? which : "mixed";
}

/// Both halves; the journal says which of them is at work, and is synced before each.
void swap(CVolatileDisk& disk, int half, int& reached)
{
    reached = half;
    if (half == 0) {
        moveOldDeckAside(disk, places);
        reached = 1;
    }
    moveNewDeckIn(disk, places);
    reached = 2;
}

TEST(DeckSwap, leavesAWholeDeckOrNoneWheneverThePowerGoes)
{
    for (const bool isThereAnOldOne : {true, false}) {
        Tree before{{"/d", "/"}, {"/d/a.dem.partial", "/"}};
        addDeck(before, "/d/a.dem.partial", "new", {".dem", ".ess", ".dfg"});
        if (isThereAnOldOne)
            addDeck(before, "/d", "old", {".dem", ".ess", ".ptf"});
        int half = 0;
        CVolatileDisk whole(before);
        swap(whole, 0, half);
        ASSERT_EQ(whole.remains().size(), 1u) << "all of it is synced in the end";
        EXPECT_EQ(deckAt(whole.remains()[0]), "new");
        for (int calls = 0; calls < whole.calls; ++calls) {
            CVolatileDisk disk(before);
            disk.callsLeft = calls;
            EXPECT_THROW(swap(disk, 0, half), SPowerLoss);
            const int begun = half;
            for (const Tree& left : disk.remains()) {
                EXPECT_NE(deckAt(left), "mixed") << "before call " << calls;
                CVolatileDisk next(left);
                swap(next, begun, half);
                ASSERT_EQ(next.remains().size(), 1u);
                EXPECT_EQ(deckAt(next.remains()[0]), "new") << "before call " << calls;
            }
        }
    }
}

} // namespace
} // namespace NBrenmark
