#pragma once
// What a bond between two particles bears, by the pair of their materials.

#include "physics/name_tables.h"

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace NBrenmark {

class IFileVisitorReader;
class IFileVisitorWriter;

class CBondParameters
{
public:
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;
    /// The five numbers, exactly.
    bool operator==(const CBondParameters& other) const;
    bool operator!=(const CBondParameters& other) const { return !(*this == other); }

    double normalStiffness = 0.0; ///< N/m^3
    double shearStiffness = 0.0;  ///< N/m^3
    double normalStrength = 0.0;  ///< Pa
    double shearStrength = 0.0;   ///< Pa
    double bondRadius = 0.0;      ///< m
};

/// Keys by their bytes, and the pairs that they are keys of.
struct SBondKeyOrder
{
    using is_transparent = void;

    bool operator()(const std::string& a, const std::string& b) const { return a < b; }
    bool operator()(const std::string& key, const SNamePairView& pair) const { return compared(key, pair) < 0; }
    bool operator()(const SNamePairView& pair, const std::string& key) const { return compared(key, pair) > 0; }

private:
    static int compared(const std::string& key, const SNamePairView& pair);
};

/// By the key of a pair: the smaller name by byte comparison, " <> ", the larger name.
class CBondParametersMap
{
public:
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    static std::string pairKey(const std::string& a, const std::string& b);
    /// The two names of a key; nothing for a text that is no key.
    static std::optional<std::pair<std::string, std::string>> namesOf(const std::string& key);

    /// Null for a pair without an entry. Composes no key.
    const CBondParameters* find(const std::string& a, const std::string& b) const;
    /// Null for a key without an entry.
    const CBondParameters* find(const std::string& key) const;
    void set(const std::string& key, const CBondParameters& parameters) { entries[key] = parameters; }
    /// The keys in order.
    std::vector<std::string> names() const;
    /// An entry that is under the new name already gives way.
    void rename(const std::string& oldName, const std::string& newName);
    void clear() { entries.clear(); }

    std::map<std::string, CBondParameters, SBondKeyOrder> entries;
};

} // namespace NBrenmark
