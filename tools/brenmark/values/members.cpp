#include "brenmark/values/members.h"

#include "brenmark/nearest_word.h"
#include "brenmark/terminal.h"

#include "analysis/attributes/primary_attributes.h"
#include "analysis/region_selections.h"
#include "core/deck/simulation_settings.h"

#include <algorithm>
#include <functional>

namespace NBrenmark {

using namespace NAttributes;
using NSelection::CGeometricRegionElementSelection;
using NSelection::CGeometricRegionSelection;

/// "Tower bins:2" without a selection of that name: the second element of "Tower bins", which is made here. Null where
/// that is no region.
static NSelection::CSelection* elementNamed(NSelection::CSelectionMap& map, const std::string& name)
{
    const std::size_t colon = name.rfind(':');
    if (colon == std::string::npos)
        return nullptr;
    bool isNumber = false;
    const int number = QString::fromStdString(name.substr(colon + 1)).toInt(&isNumber);
    auto* const region = dynamic_cast<CGeometricRegionSelection*>(map.selection(name.substr(0, colon)));
    return isNumber && number >= 1 && region != nullptr ? map.createSubSelection(*region, name, number - 1) : nullptr;
}

static NSelection::CSelection& requiredSelection(CDeckReader& reader, const std::string& name)
{
    NSelection::CSelectionMap& map = reader.deck().settings->selectionMap();
    if (NSelection::CSelection* const found = map.selection(name))
        return *found;
    if (NSelection::CSelection* const element = elementNamed(map, name))
        return *element;
    for (const NSelection::SCarriedSelection& carried : map.carried().selections())
        if (utf8(carried.name) == name)
            throw CFailure(eExitUnsupported, "--selection: \"" + oneLine(name) + "\" is carried as bytes",
                           "It can't be taken apart, so what belongs to it isn't known.");
    std::vector<std::string> names;
    std::string all;
    for (const auto& entry : map.selections()) {
        names.push_back(entry.first);
        all += (all.empty() ? "" : ", ") + oneLine(entry.first);
    }
    const std::string nearest = nearestOf(name, names);
    throw CFailure(eExitUsage, "--selection: the deck has no \"" + oneLine(name) + "\"",
                   !nearest.empty() ? "Did you mean " + oneLine(nearest) + "?"
                   : all.empty()    ? "It has no selections."
                                    : "It has " + all + ".");
}

static CGeometricRegionSelection* regionOf(NSelection::CSelection& selection)
{
    if (auto* const element = dynamic_cast<CGeometricRegionElementSelection*>(&selection))
        return &element->region;
    return dynamic_cast<CGeometricRegionSelection*>(&selection);
}

CSelectedRows::CSelectedRows(CDeckReader& reader, const std::string& name)
    : chosen(requiredSelection(reader, name)),
      region(regionOf(chosen)),
      shownName("selection \"" + oneLine(name) + "\"")
{
    if (!chosen.filters.filters.empty())
        printError("brenmark: " + shownName + ": its filters aren't applied: what they leave out isn't known here\n");
}

const NSelection::IVolume& CSelectedRows::placed(SSimulationFrame& frame) const
{
    std::string why = "it has no region";
    if (region == nullptr || !region->place(frame.creator.geometryGroups, why))
        throw CFailure(eExitUnsupported, shownName + ": what belongs to it can't be known: " + why,
                       "Of regions, lattices, boxes, cylinders and closed meshes are known.");
    const auto* const element = dynamic_cast<const CGeometricRegionElementSelection*>(&chosen);
    if (element != nullptr && element->element >= region->size())
        throw CFailure(eExitUsage, shownName + ": the region has no such element",
                       "It has " + std::to_string(region->size()) + ", counted from 1.");
    return dynamic_cast<const NSelection::IVolume&>(chosen);
}

double CSelectedRows::volume(SSimulationFrame& frame) const
{
    const double volume = placed(frame).volume();
    if (volume > 0.0)
        return volume;
    throw CFailure(eExitSource, shownName + ": its region has no volume", "A density takes one.");
}

int CSelectedRows::elementCount(SSimulationFrame& frame) const
{
    if (region == nullptr || &chosen != region)
        return 1;
    placed(frame);
    return region->size();
}

std::vector<int> CSelectedRows::elementsOf(const std::vector<SValueSource>& members, SSimulationFrame& frame) const
{
    std::vector<int> elements;
    for (const SValueSource& source : members)
        for (const C3DPoint& place : placesOf(source, frame))
            elements.push_back(region->elementAt(place));
    return elements;
}

double CSelectedRows::elementVolume(int element) const { return region->elementVolume(element); }

std::vector<C3DPoint> CSelectedRows::placesOf(const SValueSource& source, SSimulationFrame& frame) const
{
    const CAttributePosition position(frame.timestep);
    std::vector<double> numbers(source.rows.size() * 3);
    if (!source.rows.empty() &&
        !source.column(position, {source.rows.data(), source.rows.size()}, nullptr, numbers.data()))
        throw CFailure(eExitSource, shownName + ": the deck holds no positions of " + oneLine(source.name),
                       "Only selections that are picked by hand can do without.");
    std::vector<C3DPoint> places;
    places.reserve(source.rows.size());
    for (std::size_t i = 0; i < numbers.size(); i += 3)
        places.emplace_back(numbers[i], numbers[i + 1], numbers[i + 2]);
    return places;
}

template <class TIsMember>
static void keepIf(SValueSource& source, const TIsMember& isMember)
{
    source.rows.erase(std::remove_if(source.rows.begin(), source.rows.end(), std::not_fn(isMember)), source.rows.end());
}

void CSelectedRows::keepMembers(std::vector<SValueSource>& sources, SSimulationFrame& frame) const
{
    if (const auto* const manual = dynamic_cast<const NSelection::CManualSelection*>(&chosen)) {
        for (SValueSource& source : sources) {
            const auto* const type = std::get_if<const CParticleType*>(&source.owner);
            if (type == nullptr)
                throw CFailure(eExitUnsupported, shownName + ": is of particles", "It is about nothing else.");
            keepIf(source, [&](quint32 row) { return manual->manualIds.ids.count((*type)->ids[row]) > 0; });
        }
        return;
    }
    const NSelection::IVolume& volume = placed(frame);
    for (SValueSource& source : sources) {
        const std::vector<C3DPoint> places = placesOf(source, frame);
        auto at = places.begin();
        keepIf(source, [&](quint32) { return volume.contains(*at++); });
    }
}

} // namespace NBrenmark
