#pragma once
// Tables by pair in either shape, and the entries that the copy of a type or of a material has in the tables of contact
// models and forces: those of its original.

#include "core/memory_ceiling.h"
#include "physics/bond_parameters.h"
#include "physics/name_tables.h"

#include <QString>
#include <functional>
#include <string>
#include <vector>

namespace NBrenmark {

class CPhysicsModels;
class IContactModel;

template <class TValue>
struct SPairEntry
{
    std::string first;
    std::string second;
    TValue value;
};

template <class TValue>
std::vector<SPairEntry<TValue>> entriesOf(const CPairTable<TValue>& table)
{
    std::vector<SPairEntry<TValue>> entries;
    for (const auto& [pair, value] : table.entries)
        entries.push_back({pair.first, pair.second, value});
    return entries;
}

inline std::vector<SPairEntry<CBondParameters>> entriesOf(const CBondParametersMap& table)
{
    std::vector<SPairEntry<CBondParameters>> entries;
    for (const auto& [key, value] : table.entries) {
        const auto names = CBondParametersMap::namesOf(key);
        entries.push_back(names ? SPairEntry<CBondParameters>{names->first, names->second, value}
                                : SPairEntry<CBondParameters>{key, std::string(), value});
    }
    return entries;
}

template <class TValue>
const TValue* find(const CPairTable<TValue>& table, const std::string& a, const std::string& b)
{
    return table.find(a, b);
}

inline const CBondParameters* find(const CBondParametersMap& table, const std::string& a, const std::string& b)
{
    return table.find(CBondParametersMap::pairKey(a, b));
}

template <class TValue>
void set(CPairTable<TValue>& table, const std::string& a, const std::string& b, const TValue& value)
{
    table.set(a, b, value);
}

inline void set(CBondParametersMap& table, const std::string& a, const std::string& b, const CBondParameters& value)
{
    table.set(CBondParametersMap::pairKey(a, b), value);
}

/// Gives a copy the entries of its original with every partner, itself included. What the table holds already stays.
template <class TTable>
void addCopies(TTable& table, const std::string& original, const std::string& copy)
{
    const auto add = [&table](const std::string& a, const std::string& b, const auto& value) {
        constexpr quint64 bytesOfEntry = 256; // with its names
        if (find(table, a, b) != nullptr)
            return;
        admitMemory(bytesOfEntry, "entries of new materials and particle types");
        set(table, a, b, value);
    };
    for (const auto& entry : entriesOf(table)) {
        if (entry.first != original && entry.second != original)
            continue;
        const std::string& other = entry.first == original ? entry.second : entry.first;
        add(copy, other, entry.value);
        if (other == original)
            add(copy, copy, entry.value);
    }
}

/// Whether the table by pair of a model, if it has one, goes by what is copied: materials, or types and walls.
using HasPairsOfThese = std::function<bool(const IContactModel&)>;

/// Gives the copy of a material, particle type or wall what its original has in all tables.
void copyEntries(CPhysicsModels& physics, const QString& original, const QString& copy,
                 const HasPairsOfThese& hasPairs);

} // namespace NBrenmark
