// The formulas for collisions. A row is a record.
#include "analysis/attributes/column_filling.h"
#include "analysis/attributes/primary_attributes.h"

#include "results/collisions.h"

namespace NBrenmark::NAttributes {

bool CAttributePosition::read(const CCollisionsBase& collisions, const SAttributeRows& rows, double* out) const
{
    return filledFrom(collisions.position, rows, out);
}

bool CAttributeId::read(const CCollisionsBase& collisions, const SAttributeRows& rows, double* out) const
{
    return filledFrom(collisions.ids, rows, out);
}

bool CAttributeId1::read(const CCollisionsBase& collisions, const SAttributeRows& rows, double* out) const
{
    return filledFrom(collisions.first.ids, rows, out);
}

bool CAttributeId2::read(const CCollisionsBase& collisions, const SAttributeRows& rows, double* out) const
{
    return filledFrom(collisions.second.ids, rows, out);
}

// ---------------------------------------------------------------- forces, N

/// The total over the solver's iterations by their number; no number for a record without iterations.
static bool averaged(const CCollisionsBase& collisions, const std::vector<C3DVector>& total, const SAttributeRows& rows,
                     double* out)
{
    return filled(rows, out, [&](quint32 row) {
        const double n = collisions.iterations[row];
        return C3DVector(total[row].x / n, total[row].y / n, total[row].z / n);
    });
}

bool CAttributeAvgNormalForce::read(const CCollisionsBase& collisions, const SAttributeRows& rows, double* out) const
{
    return averaged(collisions, collisions.totalNormalForce, rows, out);
}

bool CAttributeAvgTangentialForce::read(const CCollisionsBase& collisions, const SAttributeRows& rows,
                                        double* out) const
{
    return averaged(collisions, collisions.totalTangentialForce, rows, out);
}

bool CAttributeMaxNormalForce::read(const CCollisionsBase& collisions, const SAttributeRows& rows, double* out) const
{
    return filledFrom(collisions.maxNormalForce, rows, out);
}

bool CAttributeMaxTangentialForce::read(const CCollisionsBase& collisions, const SAttributeRows& rows,
                                        double* out) const
{
    return filledFrom(collisions.maxTangentialForce, rows, out);
}

// ---------------------------------------------------------------- velocities at the start, m/s

bool CAttributeVelocityA::read(const CCollisionsBase& collisions, const SAttributeRows& rows, double* out) const
{
    return filledFrom(collisions.first.velocity, rows, out);
}

bool CAttributeVelocityB::read(const CCollisionsBase& collisions, const SAttributeRows& rows, double* out) const
{
    return filledFrom(collisions.second.velocity, rows, out);
}

bool CAttributeRelVelocity::read(const CCollisionsBase& collisions, const SAttributeRows& rows, double* out) const
{
    return filledFrom(collisions.relativeVelocity, rows, out);
}

/// (v n) n, n being the unit vector through the point of contact.
static C3DVector normalPart(const CCollisionsBase& collisions, quint32 row)
{
    const C3DVector& n = collisions.unitCpVector[row];
    return n * collisions.relativeVelocity[row].dot(n);
}

bool CAttributeRelVelocityNormal::read(const CCollisionsBase& collisions, const SAttributeRows& rows, double* out) const
{
    return filled(rows, out, [&](quint32 row) { return normalPart(collisions, row); });
}

/// v - (v n) n.
bool CAttributeRelVelocityTangential::read(const CCollisionsBase& collisions, const SAttributeRows& rows,
                                           double* out) const
{
    return filled(rows, out,
                  [&](quint32 row) { return collisions.relativeVelocity[row] - normalPart(collisions, row); });
}

// ---------------------------------------------------------------- energies, J

bool CAttributeShearEnergy::read(const CCollisionsBase& collisions, const SAttributeRows& rows, double* out) const
{
    return filledFrom(collisions.shearEnergy, rows, out);
}

bool CAttributeNormalEnergy::read(const CCollisionsBase& collisions, const SAttributeRows& rows, double* out) const
{
    return filledFrom(collisions.normalEnergy, rows, out);
}

/// The sum of both.
bool CAttributeTotalEnergyLoss::read(const CCollisionsBase& collisions, const SAttributeRows& rows, double* out) const
{
    return filled(rows, out, [&](quint32 row) { return collisions.normalEnergy[row] + collisions.shearEnergy[row]; });
}

// ---------------------------------------------------------------- times, s

bool CAttributeStartTime::read(const CCollisionsBase& collisions, const SAttributeRows& rows, double* out) const
{
    return filledFrom(collisions.startTime, rows, out);
}

bool CAttributeEndTime::read(const CCollisionsBase& collisions, const SAttributeRows& rows, double* out) const
{
    return filledFrom(collisions.endTime, rows, out);
}

bool CAttributeDuration::read(const CCollisionsBase& collisions, const SAttributeRows& rows, double* out) const
{
    return filled(rows, out, [&](quint32 row) { return collisions.endTime[row] - collisions.startTime[row]; });
}

} // namespace NBrenmark::NAttributes
