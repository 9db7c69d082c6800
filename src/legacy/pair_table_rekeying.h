#pragma once
// The parameter tables of old decks go by pairs of particle types and geometry; current ones go by pairs of
// materials.

#include "physics/physics_models.h"

namespace NBrenmark {

class CCreatorData;

namespace NLegacySupport {

/// The models whose tables by pair name particle types and walls in the stream, until they are turned. Those of all
/// others name materials.
bool storesPairsOfTypes(const IContactModel& model);

/// Turns the pair tables of a chain: linear cohesion, hysteretic spring, JKR and bonding. Where two
/// pairs with different values meet in one pair of materials, the second gets a material of its own.
/// Every entry that is dropped and every material that is made is reported.
/// \param geometrySide  whether the pairs are of a particle type and a geometry group
void rekeyPairTables(CCreatorData& creator, CPhysicsModels::Chain& chain, bool geometrySide);

} // namespace NLegacySupport
} // namespace NBrenmark
