#pragma once
// Names that go into fields of a fixed size, and texts that may be too long for an attribute. They are tested before a deck is touched: a name that
// doesn't fit can't be stored, and cut it may be another one's.

#include "io/hdf5/types.h"

#include <vector>

namespace NBrenmark {

class CCreatorData;
class CPhysicsModels;
class CTimestepData;
class InteractionMap;
class MaterialMap;

/// \throws unstorable_error  that gives the first one that is too long
void checkFixedTexts(const CCreatorData& creator);
void checkFixedTexts(const CPhysicsModels& physics);
void checkFixedTexts(const CTimestepData& timestep);

std::vector<CMaterial> materialRows(const MaterialMap& materials);
std::vector<HDF5DATATYPES::SInteractionType::Row> interactionRows(const InteractionMap& interactions);

} // namespace NBrenmark
