// Tables by id where ids are dense, a sorted list where a deck has gaps that tables would pay for in memory.
#include "model/particle_id_lookup.h"

#include "model/particle_type.h"
#include "platform/loop_threads.h"

#include <algorithm>

namespace NBrenmark {

constexpr quint32 noEntry = 0xFFFFFFFFu;

/// How many numbers a slot may have in the tables on average, and how many are always granted.
constexpr quint64 numbersPerSlot = 16;
constexpr quint64 numbersGranted = 65536;

void CParticleIdLookup::clear()
{
    // Swapped, not emptied: the tables of the next deck may be much smaller.
    std::vector<quint32>().swap(typeOfId);
    std::vector<quint32>().swap(slotOfId);
    std::vector<SEntry>().swap(entries);
}

void CParticleIdLookup::rebuild(const Types& types, quint32 maxId)
{
    clear();
    quint64 slotTotal = 0;
    quint32 greatest = 0;
    for (const std::unique_ptr<CParticleType>& type : types) {
        slotTotal += type->slotCount();
        for (const qint32 id : type->ids)
            if (id >= 1 && static_cast<quint32>(id) <= maxId)
                greatest = std::max(greatest, static_cast<quint32>(id));
    }
    if (greatest == 0)
        return;
    if (greatest <= numbersGranted + numbersPerSlot * slotTotal)
        fillTables(types, greatest);
    else
        fillList(types, greatest);
}

void CParticleIdLookup::fillTables(const Types& types, quint32 greatest)
{
    typeOfId.assign(std::size_t(greatest) + 1, noEntry);
    slotOfId.assign(std::size_t(greatest) + 1, 0);
    for (std::size_t typeIndex = 0; typeIndex < types.size(); ++typeIndex) {
        const std::vector<qint32>& ids = types[typeIndex]->ids;
        const auto type = static_cast<quint32>(typeIndex);
        const auto count = static_cast<quint32>(ids.size());
#pragma omp parallel for schedule(static) num_threads(loopThreads())
        for (quint32 slot = 0; slot < count; ++slot) {
            const auto id = static_cast<quint32>(ids[slot]); // a negative one becomes greater than any that counts
            if (id < 1 || id > greatest)
                continue;
                // In a damaged file two slots of different threads may hold one id.
#pragma omp atomic write
            typeOfId[id] = type;
#pragma omp atomic write
            slotOfId[id] = slot;
        }
    }
}

void CParticleIdLookup::fillList(const Types& types, quint32 greatest)
{
    for (std::size_t typeIndex = 0; typeIndex < types.size(); ++typeIndex) {
        const std::vector<qint32>& ids = types[typeIndex]->ids;
        for (std::size_t slot = 0; slot < ids.size(); ++slot) {
            const auto id = static_cast<quint32>(ids[slot]);
            if (id >= 1 && id <= greatest)
                entries.push_back(SEntry{id, static_cast<quint32>(typeIndex), static_cast<quint32>(slot)});
        }
    }
    std::stable_sort(entries.begin(), entries.end(), [](const SEntry& a, const SEntry& b) { return a.id < b.id; });
}

bool CParticleIdLookup::find(quint32 id, quint32& typeIndex, quint32& slot) const
{
    if (!entries.empty()) {
        const auto after =
            std::upper_bound(entries.begin(), entries.end(), id,
                             [](quint32 wanted, const SEntry& candidate) { return wanted < candidate.id; });
        if (after == entries.begin() || (after - 1)->id != id)
            return false;
        typeIndex = (after - 1)->typeIndex; // the last of those with the id, which the tables hold too
        slot = (after - 1)->slot;
        return true;
    }
    if (id >= typeOfId.size() || typeOfId[id] == noEntry)
        return false;
    typeIndex = typeOfId[id];
    slot = slotOfId[id];
    return true;
}

} // namespace NBrenmark
