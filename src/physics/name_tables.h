#pragma once
// The parameter tables of contact models and external forces. Their names are names of the deck;
// what a table doesn't hold is no mistake.

#include <map>
#include <string>
#include <utility>

namespace NBrenmark {

/// Two names in any order, kept as the smaller by byte comparison and the other one.
struct SNamePair
{
    SNamePair(const std::string& a, const std::string& b) : first(a < b ? a : b), second(a < b ? b : a) {}
    bool operator==(const SNamePair& other) const { return first == other.first && second == other.second; }
    bool holds(const std::string& name) const { return first == name || second == name; }
    /// The pair with a new name in place of an old one.
    SNamePair renamed(const std::string& oldName, const std::string& newName) const
    {
        return {first == oldName ? newName : first, second == oldName ? newName : second};
    }

    std::string first;
    std::string second;
};

/// Two names in any order, not copied: what a look-up needs.
struct SNamePairView
{
    SNamePairView(const std::string& a, const std::string& b) : first(a < b ? a : b), second(a < b ? b : a) {}

    const std::string& first;
    const std::string& second;
};

/// By the first name, then the second, in byte order.
struct SNamePairOrder
{
    using is_transparent = void;

    template <class TLeft, class TRight>
    bool operator()(const TLeft& left, const TRight& right) const
    {
        const int order = left.first.compare(right.first);
        return order != 0 ? order < 0 : left.second < right.second;
    }
};

/// Values by pair of materials.
template <class TValue>
class CPairTable
{
public:
    using Value = TValue;
    using Entries = std::map<SNamePair, TValue, SNamePairOrder>;

    /// Null for a pair without an entry.
    const TValue* find(const std::string& a, const std::string& b) const
    {
        const auto entry = entries.find(SNamePairView(a, b));
        return entry == entries.end() ? nullptr : &entry->second;
    }
    /// The value of a new entry for a pair without one.
    TValue valueOf(const std::string& a, const std::string& b) const
    {
        const TValue* const value = find(a, b);
        return value != nullptr ? *value : TValue();
    }
    void set(const std::string& a, const std::string& b, const TValue& value)
    {
        entries.insert_or_assign({a, b}, value);
    }
    /// An entry that is under the new name already gives way.
    void rename(const std::string& oldName, const std::string& newName)
    {
        Entries moved;
        for (auto entry = entries.begin(); entry != entries.end();) {
            if (!entry->first.holds(oldName)) {
                ++entry;
                continue;
            }
            moved.insert_or_assign(entry->first.renamed(oldName, newName), std::move(entry->second));
            entry = entries.erase(entry);
        }
        moved.merge(entries); // what is there first is kept
        entries.swap(moved);
    }
    void clear() { entries.clear(); }

    Entries entries;
};

/// Numbers by name of a particle type or geometry, in byte order.
class CNameTable
{
public:
    /// 0 for a name without an entry.
    double valueOf(const std::string& name) const
    {
        const auto entry = entries.find(name);
        return entry == entries.end() ? 0.0 : entry->second;
    }
    void set(const std::string& name, double value) { entries[name] = value; }
    /// An entry that is under the new name already gives way.
    void rename(const std::string& oldName, const std::string& newName)
    {
        auto entry = entries.extract(oldName);
        if (entry.empty())
            return;
        entries.erase(newName);
        entry.key() = newName;
        entries.insert(std::move(entry));
    }
    void clear() { entries.clear(); }

    std::map<std::string, double> entries;
};

} // namespace NBrenmark
