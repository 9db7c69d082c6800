#pragma once
// How many contacts a particle has.

#include "analysis/attributes/primary_attributes.h"

namespace NBrenmark::NAttributes {

/// Live contacts of a particle, with particles and with geometry. They are counted once for all particles, at the first
/// read.
class CAttributeCoordinationNum : public CPrimaryAttribute
{
public:
    explicit CAttributeCoordinationNum(const CTimestepData& timestep);

protected:
    bool read(const CParticleType& type, const SAttributeRows& rows, double* out) const override;
    using CAttribute::read;

private:
    void count() const;

    mutable std::vector<std::vector<quint32>> counts; ///< by type and slot; empty until they are counted
};

} // namespace NBrenmark::NAttributes
