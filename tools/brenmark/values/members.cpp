#include "brenmark/values/members.h"

#include "brenmark/nearest_word.h"
#include "brenmark/terminal.h"

#include "analysis/region_selections.h"
#include "analysis/volumes.h"
#include "core/deck/simulation_settings.h"

#include <algorithm>

namespace NBrenmark {

static const NSelection::CSelection& requiredSelection(CDeckReader& reader, const std::string& name)
{
    const NSelection::CSelectionMap& map = reader.deck().settings->selectionMap();
    if (const NSelection::CSelection* const found = map.selection(name))
        return *found;
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

CSelectedParticles::CSelectedParticles(CDeckReader& reader, const std::string& name)
    : selection(requiredSelection(reader, name)), shownName("selection \"" + oneLine(name) + "\"")
{}

template <class TIsMember>
static void keep(SValueSource& source, const TIsMember& isMember)
{
    const CParticleType& type = *std::get<const CParticleType*>(source.owner);
    source.rows.erase(
        std::remove_if(source.rows.begin(), source.rows.end(), [&](quint32 row) { return !isMember(type, row); }),
        source.rows.end());
}

void CSelectedParticles::keepMembers(std::vector<SValueSource>& sources, const SSimulationFrame& frame) const
{
    if (const auto* const manual = dynamic_cast<const NSelection::CManualSelection*>(&selection)) {
        for (SValueSource& source : sources)
            keep(source, [&ids = manual->manualIds.ids](const CParticleType& type, quint32 row) {
                return ids.count(type.ids[row]) > 0;
            });
        return;
    }
    std::string why = "its class has no region";
    const auto* const region = dynamic_cast<const NSelection::CGeometricRegionSelection*>(&selection);
    const std::unique_ptr<NSelection::IVolume> volume =
        region == nullptr ? nullptr : volumeOf(*region, frame.creator.geometryGroups, why);
    if (volume == nullptr)
        throw CFailure(eExitUnsupported, shownName + ": what belongs to it can't be known: " + why,
                       "Of regions, lattices and closed meshes are known.");
    for (SValueSource& source : sources) {
        const CParticleType& type = *std::get<const CParticleType*>(source.owner);
        if (!source.rows.empty() && (type.dataMask & ePosition) == 0)
            throw CFailure(eExitSource, shownName + ": the deck holds no positions of " + oneLine(type.name),
                           "Only selections that are picked by hand can do without.");
        keep(source, [&volume](const CParticleType& one, quint32 row) { return volume->contains(one.position[row]); });
    }
}

} // namespace NBrenmark
