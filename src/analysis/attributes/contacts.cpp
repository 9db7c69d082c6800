// The formulas for contacts, and for bonds: what is stored of a row.
#include "analysis/attributes/column_filling.h"
#include "analysis/attributes/primary_attributes.h"

#include "results/bonds.h"
#include "results/contacts.h"

namespace NBrenmark::NAttributes {

bool CAttributePosition::read(const CContactsBase& contacts, const SAttributeRows& rows, double* out) const
{
    return filledFrom(contacts.position, rows, out);
}

bool CAttributeNormalOverlap::read(const CContactsBase& contacts, const SAttributeRows& rows, double* out) const
{
    return filledFrom(contacts.normalOverlap, rows, out);
}

bool CAttributeTangentialOverlap::read(const CContactsBase& contacts, const SAttributeRows& rows, double* out) const
{
    return filledFrom(contacts.tangentialOverlap, rows, out);
}

bool CAttributeNormalForce::read(const CContactsBase& contacts, const SAttributeRows& rows, double* out) const
{
    return filledFrom(contacts.normalForce, rows, out);
}

bool CAttributeTangentialForce::read(const CContactsBase& contacts, const SAttributeRows& rows, double* out) const
{
    return filledFrom(contacts.tangentialForce, rows, out);
}

bool CAttributeContactVector1::read(const CContactsBase& contacts, const SAttributeRows& rows, double* out) const
{
    return filledFrom(contacts.contactVector1, rows, out);
}

bool CAttributeContactVector2::read(const CContactsBase& contacts, const SAttributeRows& rows, double* out) const
{
    return filledFrom(contacts.contactVector2, rows, out);
}

// ---------------------------------------------------------------- bonds

bool CAttributeNormalForce::read(const CBondsBase& bonds, const SAttributeRows& rows, double* out) const
{
    return filledFrom(bonds.normalForce, rows, out);
}

bool CAttributeTangentialForce::read(const CBondsBase& bonds, const SAttributeRows& rows, double* out) const
{
    return filledFrom(bonds.tangentialForce, rows, out);
}

bool CAttributeNormalMoment::read(const CBondsBase& bonds, const SAttributeRows& rows, double* out) const
{
    return filledFrom(bonds.normalTorque, rows, out);
}

bool CAttributeTangentialMoment::read(const CBondsBase& bonds, const SAttributeRows& rows, double* out) const
{
    return filledFrom(bonds.tangentialTorque, rows, out);
}

/// When the bond broke, s, as it is stored: an intact one has no other time than what its row holds.
bool CAttributeEndTime::read(const CBondsBase& bonds, const SAttributeRows& rows, double* out) const
{
    return filledFrom(bonds.breakTime, rows, out);
}

} // namespace NBrenmark::NAttributes
