#include "brenmark/info/sections.h"
#include "brenmark/info/table.h"

#include "brenmark/deck_reader.h"
#include "brenmark/progress_display.h"
#include "brenmark/timestep_sizes.h"
#include "brenmark/units_text.h"

namespace NBrenmark {

template <class TFamilies>
static quint64 collisionCount(const TFamilies& families)
{
    return quint64(families.surfaceSurface.liveCount()) + families.surfaceGeometry.liveCount();
}

/// The collisions that go on are records of the contacts' rows.
static quint64 goingOn(const CContactsBase& contacts)
{
    return contacts.collisionsActive ? contacts.activeCollisions.liveCount() : 0;
}

static Json contents(const CTimestepData& timestep)
{
    quint64 particles = 0;
    for (const auto& type : timestep.particleTypes.types)
        particles += type->liveCount();
    const CBonds& bonds = timestep.bonds;
    const auto bondCount = [&](EBondState state) {
        return quint64(bonds.surfaceSurface.countByState(state)) + bonds.surfaceGeometry.countByState(state);
    };
    const CContacts& contacts = timestep.contacts;
    return {{"particles", particles},
            {"contacts",
             {{"particleParticle", contacts.surfaceSurface.liveCount()},
              {"particleGeometry", contacts.surfaceGeometry.liveCount()}}},
            {"bonds", {{"intact", bondCount(eIntactBond)}, {"broken", bondCount(eBrokenBond)}}},
            {"collisions",
             {{"finished", collisionCount(timestep.collisions)},
              {"goingOn", goingOn(contacts.surfaceSurface) + goingOn(contacts.surfaceGeometry)}}}};
}

Json timestepList(CDeckReader& reader, const QString& path, bool counted, std::vector<CFailure>& failures,
                  bool& isAnyRead)
{
    constexpr quint32 none = CTimestepData::noTimestep;
    const quint32 count = reader.timestepCount();
    quint32 lastReadable = none;
    Json list = Json::array();
    CProgressDisplay progress(!counted, eNothingElsewhere);
    progress.start(timestepSizes(reader, path), "reading", 1.0);
    for (quint32 i = 0; i < count; ++i) {
        Json entry = {{"timeSeconds", reader.index()[i].time}, {"full", reader.index()[i].isFull}};
        if (counted || i + 1 == count) {
            try {
                const CTimestepData& timestep = reader.timestep(i).timestep;
                lastReadable = i;
                if (counted)
                    entry.update(contents(timestep));
            }
            catch (const CFailure& failure) {
                entry["timeSeconds"] = nullptr; // that of the index may be as wrong
                entry["damaged"] = true;
                failures.push_back(failure);
            }
        }
        list.push_back(std::move(entry));
        progress.update(i + 1);
    }
    isAnyRead = lastReadable != none || failures.empty();
    if (lastReadable != none && lastReadable + 1 < count) // after it others were tried
        reader.timestep(lastReadable);
    return list;
}

/// "500 particles, 1200 contacts", of what there is.
static std::string contentsText(const Json& timestep)
{
    if (!timestep.contains("particles"))
        return "";
    std::string out = ", " + countText(timestep["particles"].get<quint64>(), "particle");
    const Json& contacts = timestep["contacts"];
    const auto pairs = contacts["particleParticle"].get<quint64>(), walls = contacts["particleGeometry"].get<quint64>();
    if (pairs + walls > 0)
        out += ", " + countText(pairs + walls, "contact") +
               (walls > 0 ? " (" + std::to_string(walls) + " with geometry)" : "");
    const auto intact = timestep["bonds"]["intact"].get<quint64>(), broken = timestep["bonds"]["broken"].get<quint64>();
    if (intact + broken > 0)
        out += ", " + countText(intact + broken, "bond") + " (" + std::to_string(broken) + " broken)";
    const Json& collisions = timestep["collisions"];
    const auto finished = collisions["finished"].get<quint64>(), active = collisions["goingOn"].get<quint64>();
    if (finished + active > 0)
        out += ", " + countText(finished, "finished collision") +
               (active > 0 ? " and " + std::to_string(active) + " going on" : "");
    return out;
}

constexpr size_t mostTimesteps = 40; // of more the first and the last ones are shown

void printTimesteps(const Json& deck)
{
    const Json& timesteps = deck["timesteps"];
    CTable table;
    for (size_t i = 0; i < timesteps.size(); ++i) {
        const bool left =
            timesteps.size() > mostTimesteps && i >= mostTimesteps / 2 && i < timesteps.size() - mostTimesteps / 2;
        if (left && i == mostTimesteps / 2)
            table.row("...", std::to_string(timesteps.size() - mostTimesteps) + " more");
        if (!left)
            table.row(std::to_string(i), timesteps[i].contains("damaged")
                                             ? "-, can't be read"
                                             : "t = " + shortNumber(timesteps[i]["timeSeconds"].get<double>()) + " s" +
                                                   (timesteps[i]["full"].get<bool>() ? "" : ", partial") +
                                                   contentsText(timesteps[i]));
    }
    table.print(countText(timesteps.size(), "timestep"));
}

} // namespace NBrenmark
