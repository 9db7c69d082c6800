// Rows of bonds, and finding one by its two ends.
#include "results/bonds.h"

#include "model/particle_types.h"
#include "visitors/file_visitor_reader.h"
#include "visitors/file_visitor_writer.h"

#include <algorithm>
#include <map>
#include <mutex>
#include <utility>

namespace NBrenmark {

/// The arrays that always have one element a row.
template <class TVisit>
static void forEachArray(CBondsBase& b, const TVisit& visit)
{
    visit(b.rows);
    visit(b.normalForce);
    visit(b.tangentialForce);
    visit(b.normalTorque);
    visit(b.tangentialTorque);
    visit(b.state);
    visit(b.breakTime);
    visit(b.parameters);
}

// ---------------------------------------------------------------- rows

void CBondsBase::read(IFileVisitorReader& v) { v.readBondsBase(*this); }

void CBondsBase::write(IFileVisitorWriter& v) { v.writeBondsBase(*this); }

quint32 CBondsBase::countByState(quint32 wanted) const
{
    return static_cast<quint32>(std::count(state.begin(), state.end(), wanted));
}

bool CBondsBase::allocateRow(quint32& row, bool exclusive)
{
    std::unique_lock<std::mutex> guard(lock, std::defer_lock);
    if (!exclusive)
        guard.lock();
    row = 0;
    if (rows.size() == rows.capacity()) {
        if (!exclusive)
            return false;
        makeRoom();
    }
    row = rowCount();
    resizeRows(rows.size() + 1);
    return true;
}

// ---------------------------------------------------------------- all rows at once

void CBondsBase::makeRoom()
{
    if (rows.capacity() < leastCapacity)
        rows.reserve(leastCapacity);
    else { // by the factor that the vector grows with
        rows.emplace_back();
        rows.pop_back();
    }
    forEachArray(*this, [this](auto& array) { array.reserve(rows.capacity()); });
}

void CBondsBase::reserveRows(std::size_t count)
{
    if (count == 0)
        makeRoom();
    else
        forEachArray(*this, [count](auto& array) { array.reserve(std::max(count, leastCapacity)); });
}

void CBondsBase::resizeRows(std::size_t count)
{
    if (count < rows.size())
        lookup.clear(); // it may name rows that go
    forEachArray(*this, [count](auto& array) { array.resize(count); });
}

void CBondsBase::clear()
{
    forEachArray(*this, [](auto& array) { array.clear(); });
    lookup.clear();
}

void CBondsBase::copyRow(quint32 source, quint32 target)
{
    forEachArray(*this, [=](auto& array) { array[target] = array[source]; });
}

void CBondsBase::compact()
{
    quint32 end = rowCount();
    for (quint32 row = 0; row < end;) {
        if (state[row] != eDroppedBond) {
            ++row;
            continue;
        }
        while (end > row && state[end - 1] == eDroppedBond)
            --end;
        if (end > row)
            copyRow(--end, row);
    }
    if (end < rowCount()) {
        resizeRows(end);
        rebuildLookup();
    }
}

// ---------------------------------------------------------------- from a pair to its row

quint32 CBondsBase::findSlot(const PairRow& row) const
{
    if (lookup.empty())
        return noSlot;
    const auto mask = static_cast<quint32>(lookup.size() - 1);
    quint32 place = ((row[1] * 8) ^ row[0] ^ row[2] ^ row[3]) & mask;
    // The steps 21, 37, 53, ... come to every place of a table whose length is a power of two, and a
    // table has always empty ones: the search ends.
    for (quint32 step = 21; lookup[place] != 0 && rows[lookup[place] - 1] != row; step += 16)
        place = (place + step) & mask;
    return place;
}

bool CBondsBase::findRow(const PairRow& wanted, quint32& row) const
{
    const quint32 slot = findSlot(wanted);
    const bool found = slot != noSlot && lookup[slot] != 0;
    row = found ? lookup[slot] - 1 : noRow;
    return found;
}

void CBondsBase::rebuildLookup()
{
    if (rows.empty())
        return;
    const std::size_t least = rows.size() * 5 / 3;
    std::size_t length = 16;
    while (length < least)
        length *= 2;
    lookup.assign(length, 0);
    for (quint32 row = 0; row < rowCount(); ++row)
        if (state[row] != eDroppedBond)
            lookup[findSlot(rows[row])] = row + 1;
}

// ---------------------------------------------------------------- where a bond is

static bool sphereCentre(const CParticleTypes& types, quint32 typeIndex, quint32 element, C3DPoint& centre)
{
    SParticleEnd end;
    double radius = 0.0;
    return findParticleEnd(types, typeIndex, element, end) &&
           types.types[typeIndex]->sphereCentreAndRadius(end.slot, end.sphere, centre, radius);
}

bool CSurfaceSurfaceBonds::bondEnds(const CParticleTypes& types, quint32 row, C3DPoint& firstCentre,
                                    C3DPoint& secondCentre, double& length) const
{
    if (row >= rowCount())
        return false;
    const PairRow& pair = rows[row];
    if (!sphereCentre(types, pair[0], pair[1], firstCentre) || !sphereCentre(types, pair[2], pair[3], secondCentre))
        return false;
    length = (secondCentre - firstCentre).length();
    return true;
}

// ---------------------------------------------------------------- both families

void CBonds::read(IFileVisitorReader& v) { v.readBonds(*this); }

void CBonds::write(IFileVisitorWriter& v) { v.writeBonds(*this); }

void CBonds::clear()
{
    surfaceSurface.clear();
    surfaceGeometry.clear();
}

/// From a bond's row to parameters, each pair of types asked for once.
class CMatchedTypes
{
public:
    CMatchedTypes(const CParticleTypes& types, const BondParametersOf& parametersOf)
        : types(types), parametersOf(parametersOf)
    {}

    const CBondParameters* of(const PairRow& row)
    {
        if (row[0] >= types.count() || row[2] >= types.count())
            return nullptr;
        const auto [known, isNew] = matched.try_emplace({row[0], row[2]}, nullptr);
        if (isNew)
            known->second = parametersOf(*types.types[row[0]], *types.types[row[2]]);
        return known->second;
    }

private:
    const CParticleTypes& types;
    const BondParametersOf& parametersOf;
    std::map<std::pair<quint32, quint32>, const CBondParameters*> matched;
};

std::string SUnmatchedBonds::text() const
{
    const auto bonds = [](quint32 count, const char* state) {
        return std::to_string(count) + state + (count == 1 ? " bond" : " bonds");
    };
    std::string out;
    if (intact > 0)
        out = bonds(intact, " intact") + " broken now";
    if (broken > 0)
        out += (out.empty() ? "" : ", ") + bonds(broken, " broken") + " without the time and forces of the break";
    if (toDrop > 0)
        out += (out.empty() ? "" : ", ") + bonds(toDrop, " dropped") + " (state 2) kept as broken (state 0)";
    return out + ": the bonding model has no parameters for the materials";
}

/// Lets a row bear nothing from a time on. \return whether it said anything else before
static bool breakBond(CBondsBase& bonds, quint32 row, double time)
{
    bool changed = bonds.state[row] != eBrokenBond || bonds.breakTime[row] != time;
    bonds.state[row] = eBrokenBond;
    bonds.breakTime[row] = time;
    for (auto* loads : {&bonds.normalForce, &bonds.tangentialForce, &bonds.normalTorque, &bonds.tangentialTorque}) {
        C3DVector& load = (*loads)[row];
        changed |= load.x != 0.0 || load.y != 0.0 || load.z != 0.0; // vectors compare as equal when they are close
        load = C3DVector();
    }
    return changed;
}

SUnmatchedBonds CBonds::matchParameters(const CParticleTypes& types, double time, const BondParametersOf& parametersOf)
{
    CSurfaceSurfaceBonds& b = surfaceSurface;
    CMatchedTypes matched(types, parametersOf);
    SUnmatchedBonds unmatched;
    for (quint32 row = 0; row < b.rowCount(); ++row) {
        b.parameters[row] = matched.of(b.rows[row]);
        if (b.parameters[row] != nullptr)
            continue;
        quint32& kind = b.state[row] == eBrokenBond    ? unmatched.broken
                        : b.state[row] == eDroppedBond ? unmatched.toDrop
                                                       : unmatched.intact;
        kind += breakBond(b, row, time) ? 1 : 0;
    }
    return unmatched;
}

// ---------------------------------------------------------------- values by the names of attributes

bool CBondsBase::getValue(NAttributes::SAttributeValue& out, const NAttributes::CAttributeDescriptor* attribute,
                          quint32 row) const
{
    return valueOfRows(
        out, row, rowCount(), attribute, [](quint32) { return true; },
        [&](NAttributes::SAttributeValue& one, quint32 i) { return attribute->valueForBond(one, *this, i); });
}

} // namespace NBrenmark
