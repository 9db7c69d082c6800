#include "brenmark/export/pieces.h"

#include "brenmark/failure.h"
#include "brenmark/nearest_word.h"
#include "brenmark/terminal.h"
#include "brenmark/values/value_reading.h"
#include "brenmark/values/value_sources.h"

#include "analysis/attributes/attribute_table.h"
#include "analysis/attributes/derived_attributes.h"
#include "model/geometry/geometry_group.h"
#include "model/particle_type.h"
#include "properties/custom_property_manager.h"
#include "results/contacts.h"

#include <algorithm>
#include <limits>
#include <set>

namespace NBrenmark {

using namespace NAttributes;

namespace {

struct SPieceKind
{
    const char* name;
    EAttributeOwner owner;
    std::vector<const char*> usual;
};

constexpr const char* positionName = "Position";

const std::vector<SPieceKind>& pieceKinds()
{
    static const std::vector<SPieceKind> kinds{
        {"particles",
         eParticleAttribute,
         {"ID", "Velocity", "Angular Velocity", "Total Force", "Torque", "Diameter", "Mass"}},
        {"contacts", eContactAttribute, {"Normal Overlap", "Normal Force", "Tangential Force"}},
        {"geometry", eGeometryAttribute, {"ID", "Velocity", "Total Force", "Torque"}},
    };
    return kinds;
}

} // namespace

std::vector<std::string> attributesOfPieces(const std::vector<std::string>& wanted)
{
    std::vector<std::string> names = wanted;
    names.emplace_back(positionName);
    if (wanted.empty())
        for (const SPieceKind& kind : pieceKinds())
            names.insert(names.end(), kind.usual.begin(), kind.usual.end());
    return names;
}

namespace {

/// The definitions of an owner's custom properties; null for none.
struct SDefinitions
{
    const CCustomPropertyManager* operator()(const CParticleType* type) const
    {
        return type->customProperties.manager();
    }
    const CCustomPropertyManager* operator()(const CContactsBase* rows) const
    {
        return rows->customProperties.manager();
    }
    const CCustomPropertyManager* operator()(const CGeometryGroup* group) const
    {
        return group->customProperties.manager();
    }
    template <class TOther>
    const CCustomPropertyManager* operator()(const TOther*) const
    {
        return nullptr;
    }
};

} // namespace

/// A property that is defined and not in use yet has no values in any deck.
static bool isDraft(const std::vector<SValueSource>& sources, const QString& name)
{
    if (sources.empty())
        return true;
    const CCustomPropertyManager* const manager = std::visit(SDefinitions(), sources.front().owner);
    return manager == nullptr || manager->indexOf(name.toStdString()) >= manager->finalizedCount();
}

static std::vector<const CAttribute*> chosenAttributes(const CAttributeTable& table, const SPieceKind& kind,
                                                       const std::vector<std::string>& wanted,
                                                       const std::vector<SValueSource>& sources)
{
    std::vector<const CAttribute*> chosen;
    const auto add = [&](const QString& name) {
        const CAttribute* const attribute = table.attribute(name, kind.owner);
        if (attribute != nullptr && std::find(chosen.begin(), chosen.end(), attribute) == chosen.end())
            chosen.push_back(attribute);
    };
    for (const std::string& name : wanted)
        add(QString::fromStdString(name));
    if (!wanted.empty())
        return chosen;
    for (const char* const name : kind.usual)
        add(QLatin1String(name));
    for (const auto& attribute : table.all)
        if ((attribute->owners & kind.owner) != 0 &&
            dynamic_cast<const CAttributeCustomProperty*>(attribute.get()) != nullptr &&
            !isDraft(sources, attribute->name))
            chosen.push_back(attribute.get());
    return chosen;
}

/// \throws CFailure  an attribute is of no kind
static void requireKnown(const CAttributeTable& table, const std::vector<std::string>& wanted)
{
    for (const std::string& name : wanted) {
        std::vector<std::string> known;
        bool isKnown = false;
        for (const SPieceKind& kind : pieceKinds()) {
            isKnown = isKnown || table.attribute(QString::fromStdString(name), kind.owner) != nullptr;
            for (const auto& attribute : table.all)
                if ((attribute->owners & kind.owner) != 0)
                    known.push_back(utf8(attribute->name));
        }
        const std::string nearest = nearestOf(name, known);
        if (!isKnown)
            throw CFailure(eExitUsage,
                           "there is no attribute \"" + oneLine(name) + "\" of particles, contacts or geometry",
                           nearest.empty() ? "brenmark values --list shows the attributes of a deck."
                                           : "Did you mean " + oneLine(nearest) + "?");
    }
}

/// Appends the vertices of a group and its triangles. Corners that aren't there cost the triangle.
static void addMesh(SPiece& piece, SValueSource& source, double factor, quint32 timestep, CLeftOut& leftOut)
{
    const CGeometryGroup& group = *std::get<const CGeometryGroup*>(source.owner);
    const auto before = static_cast<quint32>(piece.pointCount());
    for (const C3DPoint& point : group.coords)
        piece.points.insert(piece.points.end(), {point.x * factor, point.y * factor, point.z * factor});
    const auto isBroken = [&](quint32 row) {
        const TriangleNodes& nodes = group.triangleNodes[row];
        return std::any_of(nodes.begin(), nodes.end(), [&](quint32 node) { return node >= group.coords.size(); });
    };
    const auto kept = std::remove_if(source.rows.begin(), source.rows.end(), isBroken);
    if (kept != source.rows.end())
        leftOut.add("triangles of " + source.name + " with corners that aren't there", timestep);
    source.rows.erase(kept, source.rows.end());
    for (const quint32 row : source.rows)
        for (const quint32 node : group.triangleNodes[row])
            piece.triangles.push_back(before + node);
}

/// Appends the values of a source; not a number, where it has none.
/// \return false if it has none
static bool addColumn(std::vector<double>& values, const SValueSource& source, const CAttribute& attribute,
                      const SUnit* unit)
{
    const std::size_t used = values.size(), count = source.rows.size() * attribute.width();
    values.resize(used + count, std::numeric_limits<double>::quiet_NaN());
    return count == 0 || source.column(attribute, {source.rows.data(), source.rows.size()}, unit, values.data() + used);
}

/// A property may have the name of an attribute, or of what says which row is whose.
static bool isTaken(const SPiece& piece, const std::string& name)
{
    return name == "Type" || name == "Group" ||
           std::any_of(piece.arrays.begin(), piece.arrays.end(),
                       [&name](const SPieceArray& one) { return one.name == name; });
}

static SPiece pieceOf(const SSimulationFrame& frame, const CAttributeTable& table, const SPieceKind& kind,
                      quint32 timestep, const std::vector<std::string>& wanted, const CChosenUnits& units,
                      CLeftOut& leftOut)
{
    SPiece piece;
    piece.kind = kind.name;
    piece.lengthUnit = units.nameOf(eLengthQuantity);
    const CAttribute& position = *table.attribute(QLatin1String(positionName), kind.owner);
    const SUnit* const lengthUnit = units.of(position.unitsType);
    const double factor = lengthUnit == nullptr ? 1.0 : lengthUnit->toDisplayFactor;
    std::vector<SValueSource> sources;
    for (SValueSource& source : valueSources(frame, kind.owner)) {
        if (source.rows.empty())
            continue;
        if (kind.owner == eGeometryAttribute) {
            addMesh(piece, source, factor, timestep, leftOut);
        }
        else if (const std::size_t used = piece.points.size(); !addColumn(piece.points, source, position, lengthUnit)) {
            piece.points.resize(used);
            leftOut.add(std::string(kind.name) + " " + source.name + ": their positions weren't saved", timestep);
            continue;
        }
        piece.owners.insert(piece.owners.end(), source.rows.size(), static_cast<qint32>(piece.ownerNames.size()));
        piece.ownerNames.push_back(source.name);
        sources.push_back(std::move(source));
    }
    for (const CAttribute* const attribute : chosenAttributes(table, kind, wanted, sources)) {
        SPieceArray array;
        array.name = utf8(attribute->name);
        array.unit = units.nameOf(attribute->unitsType);
        array.columns = attribute->width();
        array.isInteger = attribute->valueKind == eIntegerValue;
        array.heads = columnHeads(*attribute, units);
        bool isAny = false;
        for (const SValueSource& source : sources) {
            const bool isThere = addColumn(array.values, source, *attribute, units.of(attribute->unitsType));
            isAny = isAny || isThere;
            if (!isThere)
                leftOut.add(array.name + " of " + kind.name + " " + source.name + ": the deck holds no values",
                            timestep);
        }
        // An id is a number or isn't there at all.
        const bool hasGaps = array.isInteger && std::any_of(array.values.begin(), array.values.end(),
                                                            [](double value) { return value != value; });
        if (!isAny || hasGaps)
            continue;
        while (isTaken(piece, array.name)) {
            array.name += " (property)";
            for (std::string& head : array.heads)
                head += " (property)";
        }
        piece.arrays.push_back(std::move(array));
    }
    return piece;
}

std::vector<SPiece> piecesOf(SSimulationFrame& frame, quint32 timestep, const std::vector<std::string>& wanted,
                             const CChosenUnits& units, CLeftOut& leftOut)
{
    compactPairs(frame.timestep);
    const CAttributeTable table = buildAttributeTable(frame.timestep);
    requireKnown(table, wanted);
    std::vector<SPiece> pieces;
    for (const SPieceKind& kind : pieceKinds())
        if (SPiece piece = pieceOf(frame, table, kind, timestep, wanted, units, leftOut); piece.rows() > 0)
            pieces.push_back(std::move(piece));
    return pieces;
}

} // namespace NBrenmark
