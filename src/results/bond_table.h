#pragma once
// The bonds of a timestep for the bonding model.

#include "physics/bond_table.h"
#include "results/bonds.h"

namespace NBrenmark {

/// Sees the bonds between particles. Calls may come from several threads, but make() from one at a time, while no other
/// looks for a row.
class CTimestepBonds : public IBondTable
{
public:
    /// \param bonds  not owned
    explicit CTimestepBonds(CSurfaceSurfaceBonds& bonds) : bonds(bonds) { bonds.rebuildLookup(); }

    bool find(const BondEnds& ends, SBondRow& row) override;
    bool make(const BondEnds& ends, const CBondParameters& parameters, SBondRow& row) override;

private:
    SBondRow at(quint32 row) const;

    CSurfaceSurfaceBonds& bonds;
};

} // namespace NBrenmark
