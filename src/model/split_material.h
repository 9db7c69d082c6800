#pragma once
// A second material like one that a model has.

#include "physics/table_copies.h"

namespace NBrenmark {

class CCreatorData;

/// Makes a material like another one, with its interactions and with its entries in the tables of models and forces.
/// \param namesMaterials  whether the table by pair of a model goes by materials
/// \return its name; empty if there is no material of the other name
/// \throws memory_ceiling_error  if a model has more of them than its file accounts for
QString splitMaterial(CCreatorData& creator, const QString& original, bool equipmentCopy,
                      const HasPairsOfThese& namesMaterials);

} // namespace NBrenmark
