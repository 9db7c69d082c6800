#include "brenmark/meant_changes.h"

#include "io/text/text_values.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <map>
#include <optional>
#include <set>

namespace NBrenmark {

namespace {

using Segments = std::vector<std::string>;

Segments segmentsOf(const std::string& path, size_t from)
{
    Segments segments(1);
    for (size_t i = from; i < path.size(); ++i) {
        if (path[i] == '/')
            segments.emplace_back();
        else
            segments.back() += path[i];
    }
    return segments;
}

std::string joined(const Segments& segments)
{
    std::string path;
    for (const std::string& segment : segments)
        path += (path.empty() ? "" : "/") + segment;
    return path;
}

/// "*" stands for one segment, "**" at the end for one or more.
bool fits(const Segments& pattern, const Segments& path)
{
    for (size_t i = 0; i < pattern.size(); ++i) {
        if (i >= path.size())
            return false;
        if (pattern[i] == "**")
            return true;
        if (pattern[i] != "*" && pattern[i] != path[i])
            return false;
    }
    return pattern.size() == path.size();
}

/// One text of a model, by path.
struct SText
{
    SText(const TextLines& lines, const std::string& root)
    {
        for (const auto& [path, value] : lines)
            values.emplace(path.substr(root.size() + 1), value);
    }
    const std::string* find(const std::string& path) const
    {
        const auto found = values.find(path);
        return found == values.end() ? nullptr : &found->second;
    }
    bool has(const std::string& path) const { return find(path) != nullptr; }

    std::map<std::string, std::string> values;
};

/// "m(2)" without its number, as a segment or as a quoted value; nothing for a name of another form.
std::optional<std::string> withoutNumber(const std::string& name)
{
    const bool isQuoted = !name.empty() && name.back() == '"';
    size_t end = name.size() - (isQuoted ? 1 : 0);
    if (end < 3 || name[end - 1] != ')')
        return std::nullopt;
    size_t digits = --end;
    while (digits > 0 && std::isdigit(static_cast<unsigned char>(name[digits - 1])))
        --digits;
    if (digits == end || digits == 0 || name[digits - 1] != '(')
        return std::nullopt;
    return name.substr(0, digits - 1) + (isQuoted ? "\"" : "");
}

enum EKind
{
    eAdded,
    eChanged,
    eRemoved
};

/// Both texts, and what the tests look up in them.
class CUpgradedModel
{
public:
    CUpgradedModel(const SText& stored, const SText& upgraded) : stored(stored), upgraded(upgraded)
    {
        for (const auto& [path, value] : upgraded.values)
            enter(path, segmentsOf(path, 0), value);
    }

    /// The name from which an upgrade made this one, as a segment or as a value; the name itself if it wasn't made.
    std::string originalOf(std::string name) const
    {
        while (made.count(name) > 0) {
            const auto shorter = withoutNumber(name);
            if (!shorter)
                return std::string();
            name = *shorter;
        }
        return name;
    }

    /// Of two materials that meet. "~" is between them, in one order or the other.
    std::string originalPair(const std::string& segment) const
    {
        const size_t joint = segment.find('~');
        if (joint == std::string::npos)
            return segment;
        const std::string first = originalOf(segment.substr(0, joint));
        const std::string second = originalOf(segment.substr(joint + 1));
        const std::string pair = first + "~" + second;
        return stored.has("interactions/" + pair + "/restitution") ? pair : second + "~" + first;
    }

    bool isMaterial(const std::string& name) const { return materials.count(name) > 0; }
    /// The particle types of a material; both by their values.
    size_t typesOf(const std::string& material) const
    {
        const auto types = typesByMaterial.find(material);
        return types == typesByMaterial.end() ? 0 : types->second;
    }
    /// Whether a factory has the line in its size for a type.
    bool factoryHasSize(const std::string& type, const std::string& leaf, const std::string& value) const
    {
        return sizes.count({type, leaf, value}) > 0;
    }

    const SText& stored;
    const SText& upgraded;

private:
    void enter(const std::string& path, const Segments& segments, const std::string& value)
    {
        const bool isTypesLine = segments[0] == "particles" && segments.size() == 3;
        if (segments.size() == sizeDepth && segments[0] == "geometryGroups" && segments[4] == "sizes")
            sizes.insert({segments[5], segments[6], value});
        else if (isTypesLine && segments[2] == "materialName")
            ++typesByMaterial[value];
        else if (segments.size() == 3 && (isTypesLine || segments[0] == "materials") && segments[2] == "name") {
            if (!isTypesLine)
                materials.insert(value);
            if (!stored.has(path))
                made.insert({segments[1], value});
        }
    }

    static constexpr size_t sizeDepth = 7; // geometryGroups/GROUP/factories/FACTORY/sizes/TYPE/LINE

    std::set<std::string> made;
    std::set<std::string> materials;
    std::map<std::string, size_t> typesByMaterial;
    std::set<std::array<std::string, 3>> sizes;
};

// ---------------------------------------------------------------- what a change must pass

using FTest = bool (*)(const CUpgradedModel&, const Segments& path, const SModelChange&);

/// Where in a line the name of its object is.
constexpr size_t ownName = 1;
constexpr size_t nameOfSize = 5;
constexpr size_t nameInTable = 4;

/// A line of a copy says what the line of the original says.
template <size_t name>
bool copied(const CUpgradedModel& model, const Segments& path, const SModelChange& change)
{
    Segments original = path;
    original[name] = path[0] == "interactions" ? model.originalPair(path[name]) : model.originalOf(path[name]);
    const std::string* const value = model.stored.find(joined(original));
    return original != path && value != nullptr && model.originalOf(change.upgraded) == *value;
}

/// The same in a table by pairs of materials, of which the first is at that place. Either may be a copy.
bool copiedInPair(const CUpgradedModel& model, const Segments& path, const SModelChange& change)
{
    Segments original = path;
    for (const size_t name : {nameInTable, nameInTable + 1})
        original[name] = model.originalOf(path[name]);
    Segments turned = original;
    std::swap(turned[nameInTable], turned[nameInTable + 1]);
    const auto has = [&](const Segments& line) {
        const std::string* const value = model.stored.find(joined(line));
        return value != nullptr && *value == change.upgraded;
    };
    return original != path && (has(original) || has(turned));
}

/// Of a material that is made for walls.
bool copiedAsEquipment(const CUpgradedModel& model, const Segments& path, const SModelChange& change)
{
    return change.upgraded == "0" && model.originalOf(path[ownName]) != path[ownName];
}

/// A new type comes after all others.
bool copiedToTheEnd(const CUpgradedModel& model, const Segments& path, const SModelChange&)
{
    return model.originalOf(path[ownName]) != path[ownName];
}

/// The name of something that was made from what stood there.
bool movedToACopy(const CUpgradedModel& model, const Segments&, const SModelChange& change)
{
    return model.originalOf(change.upgraded) == change.stored;
}

/// A line of a size that is under the name of a copy of its type now.
bool movedWithItsType(const CUpgradedModel& model, const Segments& path, const SModelChange& change)
{
    Segments moved = path;
    const std::string sizes = joined(Segments(path.begin(), path.begin() + nameOfSize)) + "/";
    for (auto entry = model.upgraded.values.lower_bound(sizes);
         entry != model.upgraded.values.end() && entry->first.compare(0, sizes.size(), sizes) == 0; ++entry) {
        moved[nameOfSize] = segmentsOf(entry->first, 0)[nameOfSize];
        if (joined(moved) == entry->first && entry->second == change.stored &&
            model.originalOf(moved[nameOfSize]) == path[nameOfSize])
            return true;
    }
    return false;
}

/// Of which no grains are made.
bool bulkToEquipment(const CUpgradedModel& model, const Segments& path, const SModelChange& change)
{
    const std::string* const name = model.upgraded.find("materials/" + path[ownName] + "/name");
    return change.stored == "1" && change.upgraded == "0" && name != nullptr && model.typesOf(*name) == 0;
}

// ---------------------------------------------------------------- tables by pairs

/// Where an entry's names are in the path of a line of a pair table.
struct SEntry
{
    SEntry(const CUpgradedModel& model, const Segments& path)
        : model(model), isOfWalls(path[1] == "sphereGeometryModels"), table(path.begin(), path.begin() + 4)
    {
        const size_t joint = path[4].find("%20<>%20");
        const bool isOneSegment = path[3] == "bondParameters";
        first = isOneSegment ? path[4].substr(0, joint) : path[4];
        if (!isOneSegment)
            second = path[5];
        else if (joint != std::string::npos)
            second = path[4].substr(joint + 8);
        leaf.assign(path.begin() + (isOneSegment ? 5 : 6), path.end());
    }

    bool isOfType(const std::string& name) const { return hasMaterial("particles/" + name); }
    bool isOfGroup(const std::string& name) const { return hasMaterial("geometryGroups/" + name); }
    /// Whether the names lead to a pair of materials.
    bool isKnown() const
    {
        if (isOfWalls)
            return (isOfType(first) && isOfGroup(second)) || (isOfType(second) && isOfGroup(first));
        // A second name that is no type stands for the first once more; one without a material stands for none.
        return isOfType(first) && (isOfType(second) || !model.upgraded.has("particles/" + second + "/materialName"));
    }
    /// Whether a text has the value somewhere in the table.
    bool holds(const SText& text, const std::string& value) const
    {
        const std::string prefix = joined(table) + "/";
        for (auto entry = text.values.lower_bound(prefix);
             entry != text.values.end() && entry->first.compare(0, prefix.size(), prefix) == 0; ++entry) {
            const SEntry other(model, segmentsOf(entry->first, 0));
            if (other.leaf == leaf && entry->second == value)
                return true;
        }
        return false;
    }

    const CUpgradedModel& model;
    bool isOfWalls;
    Segments table;
    std::string first;
    std::string second;
    Segments leaf;

private:
    bool hasMaterial(const std::string& object) const
    {
        const std::string* const material = model.upgraded.find(object + "/materialName");
        return material != nullptr && *material != "\"\"";
    }
};

/// What was stored by types and walls is stored by their materials: no value is new, and the ones that go are those whose
/// names lead to no pair of materials.
bool rekeyed(const CUpgradedModel& model, const Segments& path, const SModelChange& change)
{
    const SEntry entry(model, path);
    const bool isFromTheTable = change.upgraded.empty() || entry.holds(model.stored, change.upgraded);
    const bool isKept = change.stored.empty() || !entry.isKnown() || entry.holds(model.upgraded, change.stored);
    return isFromTheTable && isKept;
}

// ---------------------------------------------------------------- size laws

/// A line of the law of a type is one of a factory that makes it, or of the law of a type that none makes.
bool isLawOfAFactory(const CUpgradedModel& model, const Segments& path, const SModelChange& change)
{
    static const TextLines lawOfOthers{{"kind", "\"fixed\""}, {"value", "1"}, {"radiusScaling", "true"}};
    return model.factoryHasSize(path[1], path[2], change.upgraded) ||
           std::count(lawOfOthers.begin(), lawOfOthers.end(), TextLine(path[2], change.upgraded)) > 0;
}

/// All types of a material have equal shares of it; what is of no material is by itself.
bool isShareOfTheMaterial(const CUpgradedModel& model, const Segments& path, const SModelChange& change)
{
    const std::string* const material = model.upgraded.find("particles/" + path[1] + "/materialName");
    const bool isShared = material != nullptr && model.isMaterial(*material);
    return change.upgraded == NText::text(isShared ? 100.0 / static_cast<double>(model.typesOf(*material)) : 100.0);
}

// ---------------------------------------------------------------- the list

struct SMeant
{
    const char* upgrade;
    const char* path; ///< below the model's root
    EKind kind;
    FTest test;
};

constexpr const char* newMaterials = "materials made from others";
constexpr const char* newTypes = "particle types made from others";
constexpr const char* materialUse = "materials split by use, particles or geometry";
constexpr const char* pairTables = "parameters by pairs of materials, not of types and walls";
constexpr const char* sizeLaws = "size laws of particle types, from their factories";

const SMeant meantChanges[] = {
    {newMaterials, "materials/*/type", eAdded, copiedAsEquipment},
    {newMaterials, "materials/*/*", eAdded, copied<ownName>},
    {newMaterials, "interactions/*/*", eAdded, copied<ownName>},
    {newMaterials, "particles/*/materialName", eChanged, movedToACopy},
    {newMaterials, "geometryGroups/*/materialName", eChanged, movedToACopy},
    {newMaterials, "physicsModels/*/Linear%20Cohesion%20V2/energyDensity/*/*", eAdded, copiedInPair},

    {newTypes, "particles/*/index", eAdded, copiedToTheEnd},
    {newTypes, "particles/*/**", eAdded, copied<ownName>},
    {newTypes, "physicsModels/*/*/yields/*", eAdded, copied<nameInTable>},
    {newTypes, "physicsModels/*/*/conductivities/*", eAdded, copied<nameInTable>},
    {newTypes, "physicsModels/*/*/wearConstants/*", eAdded, copied<nameInTable>},
    {newTypes, "physicsModels/*/*/heatCapacities/*", eAdded, copied<nameInTable>},
    {newTypes, "geometryGroups/*/factories/*/type/names/*", eChanged, movedToACopy},
    {newTypes, "geometryGroups/*/factories/*/sizes/**", eAdded, copied<nameOfSize>},
    {newTypes, "geometryGroups/*/factories/*/sizes/**", eRemoved, movedWithItsType},

    {materialUse, "materials/*/type", eChanged, bulkToEquipment},

    {pairTables, "physicsModels/*/Linear%20Cohesion/energyDensity/**", eAdded, rekeyed},
    {pairTables, "physicsModels/*/Linear%20Cohesion/energyDensity/**", eChanged, rekeyed},
    {pairTables, "physicsModels/*/Linear%20Cohesion/energyDensity/**", eRemoved, rekeyed},
    {pairTables, "physicsModels/*/Hertz-Mindlin%20with%20JKR/surfaceEnergy/**", eAdded, rekeyed},
    {pairTables, "physicsModels/*/Hertz-Mindlin%20with%20JKR/surfaceEnergy/**", eChanged, rekeyed},
    {pairTables, "physicsModels/*/Hertz-Mindlin%20with%20JKR/surfaceEnergy/**", eRemoved, rekeyed},
    {pairTables, "physicsModels/*/Hysteretic%20Spring/interactions/**", eAdded, rekeyed},
    {pairTables, "physicsModels/*/Hysteretic%20Spring/interactions/**", eChanged, rekeyed},
    {pairTables, "physicsModels/*/Hysteretic%20Spring/interactions/**", eRemoved, rekeyed},
    {pairTables, "physicsModels/*/Hertz-Mindlin%20with%20bonding/bondParameters/**", eAdded, rekeyed},
    {pairTables, "physicsModels/*/Hertz-Mindlin%20with%20bonding/bondParameters/**", eChanged, rekeyed},
    {pairTables, "physicsModels/*/Hertz-Mindlin%20with%20bonding/bondParameters/**", eRemoved, rekeyed},

    {sizeLaws, "sizeDistributions/*/percentage", eAdded, isShareOfTheMaterial},
    {sizeLaws, "sizeDistributions/*/*", eAdded, isLawOfAFactory},
};

std::string upgradeOf(const CUpgradedModel& model, const SModelChange& change, const Segments& path)
{
    const EKind kind = change.stored.empty() ? eAdded : change.upgraded.empty() ? eRemoved : eChanged;
    for (const SMeant& meant : meantChanges)
        if (meant.kind == kind && fits(segmentsOf(meant.path, 0), path) && meant.test(model, path, change))
            return meant.upgrade;
    return std::string();
}

} // namespace

std::vector<SModelChange> modelChanges(const TextLines& storedLines, const TextLines& upgradedLines,
                                       const std::string& root)
{
    const SText stored(storedLines, root);
    const SText upgraded(upgradedLines, root);
    const CUpgradedModel model(stored, upgraded);
    std::vector<SModelChange> changes;
    const auto add = [&](const std::string& path, const std::string& from, const std::string& to) {
        SModelChange change{std::string(), path, from, to};
        change.upgrade = upgradeOf(model, change, segmentsOf(path, root.size() + 1));
        changes.push_back(std::move(change));
    };
    for (const auto& [path, value] : storedLines) {
        const std::string* const now = upgraded.find(path.substr(root.size() + 1));
        if (now == nullptr || *now != value)
            add(path, value, now == nullptr ? std::string() : *now);
    }
    for (const auto& [path, value] : upgradedLines)
        if (!stored.has(path.substr(root.size() + 1)))
            add(path, std::string(), value);
    return changes;
}

} // namespace NBrenmark
