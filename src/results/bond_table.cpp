// Finds and makes bonds for the bonding model.
#include "results/bond_table.h"

namespace NBrenmark {

static_assert(std::is_same_v<BondEnds, PairRow>, "the ends of a bond are its row");

SBondRow CTimestepBonds::at(quint32 row) const
{
    return {&bonds.state[row],           &bonds.breakTime[row],    &bonds.parameters[row],      &bonds.normalForce[row],
            &bonds.tangentialForce[row], &bonds.normalTorque[row], &bonds.tangentialTorque[row]};
}

bool CTimestepBonds::find(const BondEnds& ends, SBondRow& row)
{
    quint32 number = 0;
    if (!bonds.findRow(ends, number))
        return false;
    row = at(number);
    return true;
}

bool CTimestepBonds::make(const BondEnds& ends, const CBondParameters& parameters, SBondRow& row)
{
    quint32 number = 0;
    if (!bonds.allocateRow(number, false))
        return false;
    bonds.rows[number] = ends;
    bonds.state[number] = eIntactBond;
    bonds.parameters[number] = &parameters;
    // Entered by itself while a third of the table stays free.
    if (bonds.lookup.size() * 3 > bonds.rows.size() * 5)
        bonds.lookup[bonds.findSlot(ends)] = number + 1;
    else
        bonds.rebuildLookup();
    row = at(number);
    return true;
}

} // namespace NBrenmark
