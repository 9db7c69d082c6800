// A loss of power at every moment of the swap: whatever a disk may have kept of what wasn't synced, the final name is
// absent or stands for a whole deck, and the next run finishes the new one.
#include "brenmark/deck_swap.h"

#include <gtest/gtest.h>

#include <map>

namespace NBrenmark {
namespace {

/// What lies on the disk, and which deck it belongs to. A data folder is one piece: only its place changes.
using Tree = std::map<std::string, std::string>;

std::string folderOf(const std::string& path) { return path.substr(0, path.rfind('/')); }

struct SRename
{
    std::string from, to;
    bool fromSynced = false, toSynced = false; ///< its folders, since

    void applyTo(Tree& tree) const
    {
        tree[to] = tree.at(from);
        tree.erase(from);
    }
};

struct SPowerLoss
{
};

/// Renames reach the disk in any order and number, until both of their folders are synced.
class CVolatileDisk : public IDisk
{
public:
    /// \param callsLeft  until the power goes; -1 for never
    CVolatileDisk(const Tree& tree, int callsLeft) : callsLeft(callsLeft), now(tree), kept(tree) {}

    bool exists(const std::string& path) const override { return now.count(path) != 0; }
    bool isLink(const std::string&) const override { return false; }
    std::vector<std::string> names(const std::string& folder) const override
    {
        std::vector<std::string> found;
        for (const auto& [path, deck] : now)
            if (folderOf(path) == folder)
                found.push_back(path.substr(folder.size() + 1));
        return found;
    }
    void makeFolder(const std::string&) override { call(); }
    void writeFile(const std::string&, const std::string&) override { FAIL() << "the swap writes nothing"; }
    void remove(const std::string&) override { FAIL() << "the swap removes nothing"; }
    void rename(const std::string& from, const std::string& to) override
    {
        call();
        ASSERT_EQ(now.count(to), 0u) << to << " would be lost";
        pending.push_back({from, to});
        pending.back().applyTo(now);
    }
    void sync(const std::string& folder) override
    {
        call();
        std::vector<SRename> rest;
        for (SRename& move : pending) {
            move.fromSynced |= folderOf(move.from) == folder;
            move.toSynced |= folderOf(move.to) == folder;
            move.fromSynced&& move.toSynced ? move.applyTo(kept) : rest.push_back(move);
        }
        pending = rest;
    }

    /// Each tree that may be left after the loss.
    std::vector<Tree> remains() const
    {
        std::vector<Tree> all(1u << pending.size(), kept);
        for (size_t chosen = 0; chosen < all.size(); ++chosen)
            for (size_t i = 0; i < pending.size(); ++i)
                if ((chosen >> i & 1u) != 0)
                    pending[i].applyTo(all[chosen]);
        return all;
    }

    int calls = 0;

private:
    void call()
    {
        if (callsLeft-- == 0)
            throw SPowerLoss();
        ++calls;
    }

    int callsLeft;
    Tree now, kept;
    std::vector<SRename> pending;
};

const SSwapPlaces places{"/d", "/d/a.dem.partial", "a"};
const Tree oldDeck{{"/d/a.dem", "old"}, {"/d/a.ess", "old"}, {"/d/a.ptf", "old"}, {"/d/a_data", "old"}};
const Tree newDeck{{"/d/a.dem", "new"}, {"/d/a.ess", "new"}, {"/d/a.dfg", "new"}, {"/d/a_data", "new"}};

/// What lies beside the folder of the conversion.
Tree finalFiles(Tree tree)
{
    for (auto i = tree.begin(); i != tree.end();)
        i = folderOf(i->first) == "/d" ? std::next(i) : tree.erase(i);
    return tree;
}

/// The halves that are left; the journal says which, and is synced before each. half ends as the one at work.
void swap(CVolatileDisk& disk, int& half)
{
    if (half == 0) {
        moveOldDeckAside(disk, places);
        half = 1;
    }
    moveNewDeckIn(disk, places);
}

TEST(DeckSwap, leavesAWholeDeckOrNoneWheneverThePowerGoes)
{
    for (const Tree& there : {oldDeck, Tree()}) {
        Tree before = there;
        for (const auto& [path, deck] : newDeck)
            before[places.partial + path.substr(2)] = deck;
        int half = 0;
        CVolatileDisk whole(before, -1);
        swap(whole, half);
        ASSERT_EQ(whole.remains().size(), 1u) << "all of it is synced in the end";
        EXPECT_EQ(finalFiles(whole.remains()[0]), newDeck);
        for (int calls = 0; calls < whole.calls; ++calls) {
            CVolatileDisk disk(before, calls);
            half = 0;
            EXPECT_THROW(swap(disk, half), SPowerLoss);
            for (const Tree& left : disk.remains()) {
                const Tree files = finalFiles(left);
                EXPECT_TRUE(files.count("/d/a.dem") == 0 || files == oldDeck || files == newDeck) << calls;
                CVolatileDisk next(left, -1);
                int rest = half;
                swap(next, rest);
                ASSERT_EQ(next.remains().size(), 1u);
                EXPECT_EQ(finalFiles(next.remains()[0]), newDeck) << "before call " << calls;
            }
        }
    }
}

} // namespace
} // namespace NBrenmark
