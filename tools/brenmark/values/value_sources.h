#pragma once
// What of a timestep has values: each particle type, geometry group and family of pairs with its rows.

#include "analysis/attributes/attribute.h"
#include "core/deck/simulation_frame.h"

#include <string>
#include <variant>
#include <vector>

namespace NBrenmark {

/// "particle", "contact", "bond", "collision", "geometry", "simulation": in the order in which they are tried where a
/// user names none.
struct SOwnerWord
{
    const char* word;
    NAttributes::EAttributeOwner owner;
};
extern const std::array<SOwnerWord, 6> ownerWords;

struct SValueSource
{
    using Owner = std::variant<const CParticleType*, const CContactsBase*, const CBondsBase*, const CCollisionsBase*,
                               const CGeometryGroup*, const CTimestepData*>;

    std::string name; ///< of the particle type, the group, or the family: "surface-surface"
    Owner owner;
    std::vector<quint32> rows;

    /// Of a particle, triangle or collision; of a pair its row, of the simulation 0.
    qint64 idOf(quint32 row) const;
    /// \return false, with out as it was, if there are no such values
    bool column(const NAttributes::CAttribute& attribute, const NAttributes::SAttributeRows& rows, const SUnit* unit,
                double* out) const;
};

/// Takes the rows out of contacts and bonds that a conversion doesn't store, so that those of a deck and of its
/// conversion are the same.
void compactPairs(CTimestepData& timestep);

/// Of one kind of owner, in the order of the deck.
std::vector<SValueSource> valueSources(const SSimulationFrame& frame, NAttributes::EAttributeOwner owner);

} // namespace NBrenmark
