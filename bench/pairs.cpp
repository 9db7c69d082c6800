// What a read and a save do to the rows of contacts and bonds, at so many rows and at a quarter of them: the time a row
// takes should be the same at both, but for the caches that the larger number outgrows.
//
//   pairs [--rows 4000000] [--rounds 5]
#include "bench/measuring.h"

#include "model/particle_types.h"
#include "properties/custom_property_manager.h"
#include "results/bonds.h"
#include "results/contacts.h"

using namespace NBrenmark;
using namespace NBench;

namespace {

/// As many grains as rows, of one sphere; one in four has left the store.
void fillStore(CParticleTypes& types, quint32 count)
{
    CParticleType& grains = types.append();
    grains.setName("Grain");
    grains.spheres.resize(1);
    grains.resizeSlots(count);
    for (quint32 slot = 0; slot < count; ++slot)
        grains.ids[slot] = slot % 4 == 3 ? -1 : static_cast<qint32>(slot + 1);
}

/// Each grain touches the next four in the store. A solver sorts its grains by place: neighbours lie near each other.
PairRow pairOf(quint32 row, quint32 count)
{
    const quint32 first = row / 4;
    return {0, first, 0, (first + 1 + row % 4) % count};
}

void fillContacts(CContactsBase& contacts, quint32 count)
{
    contacts.clear();
    contacts.resizeRows(count);
    for (quint32 row = 0; row < count; ++row) {
        contacts.rows[row] = pairOf(row, count);
        contacts.normalOverlap[row] = 1e-6;
    }
}

void fillBonds(CBondsBase& bonds, quint32 count)
{
    bonds.clear();
    bonds.resizeRows(count);
    for (quint32 row = 0; row < count; ++row) {
        bonds.rows[row] = pairOf(row, count);
        bonds.state[row] = row % 3 == 0 ? eDroppedBond : eIntactBond;
    }
}

double nanosecondsARow(quint32 count, const std::function<void()>& step)
{
    const auto start = std::chrono::steady_clock::now();
    step();
    return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - start).count() / count;
}

struct SStep
{
    const char* name;
    std::vector<double> nanoseconds; ///< a row, one a round
};

std::vector<SStep> measured(quint32 count, quint32 rounds)
{
    std::vector<SStep> steps = {
        {"removeDanglingRows", {}}, {"compact", {}}, {"compact of bonds", {}}, {"rebuildLookup", {}}};
    CCustomPropertyManager properties("Contact Properties", eContactOwner);
    CParticleTypes types(nullptr);
    fillStore(types, count);
    CContacts contacts(&properties);
    CSurfaceSurfaceBonds bonds;
    for (quint32 round = 0; round < rounds; ++round) {
        fillContacts(contacts.surfaceSurface, count);
        fillBonds(bonds, count);
        steps[0].nanoseconds.push_back(nanosecondsARow(count, [&] { contacts.removeDanglingRows(types, {}); }));
        steps[1].nanoseconds.push_back(nanosecondsARow(count, [&] { contacts.surfaceSurface.compact(); }));
        steps[2].nanoseconds.push_back(nanosecondsARow(count, [&] { bonds.compact(); }));
        const quint32 kept = bonds.rowCount();
        steps[3].nanoseconds.push_back(nanosecondsARow(kept, [&] { bonds.rebuildLookup(); }));
    }
    return steps;
}

} // namespace

int main(int argc, char** argv)
{
    QStringList arguments;
    for (int i = 1; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    const quint32 rows = wordAfter(arguments, "--rows", "4000000").toUInt();
    const quint32 rounds = wordAfter(arguments, "--rounds", "5").toUInt();
    if (rows < 8 || rounds == 0) {
        std::fprintf(stderr, "pairs: nothing to measure\n");
        return 1;
    }
    const quint32 sizes[] = {rows / 4, rows};
    const std::vector<SStep> small = measured(sizes[0], rounds), large = measured(sizes[1], rounds);
    std::printf("%u and %u rows, median of %u rounds\n", sizes[0], sizes[1], rounds);
    for (size_t i = 0; i < small.size(); ++i) {
        const double few = median(small[i].nanoseconds), many = median(large[i].nanoseconds);
        std::printf("  %-18s %6.1f ns a row, then %6.1f ns: %.2fx\n", small[i].name, few, many, many / few);
    }
    return 0;
}
