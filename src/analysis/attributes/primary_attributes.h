#pragma once
// The classes of primary_attributes.def. Their formulas are in the sources of their owners' areas.

#include "analysis/attributes/attribute.h"
#include "model/particle_type.h"
#include "results/contacts.h"

namespace NBrenmark::NAttributes {

/// A primary attribute, which may look at the whole timestep.
class CPrimaryAttribute : public CAttribute
{
public:
    CPrimaryAttribute(const char* name, EAttributeValueKind kind, quint32 quantity, quint32 owners,
                      const SNeededArrays& arrays, const CTimestepData& timestep)
        : CAttribute(QLatin1String(name), kind, quantity, owners, arrays), timestep(timestep)
    {}

protected:
    const CTimestepData& timestep; ///< that the table was built for; not owned
};

#define DECLARED_reads(owner) bool read(const owner&, const SAttributeRows&, double*) const override;
#define DECLARED_nothing(owner)
#define SERVED_reads(owner) owner
#define SERVED_nothing(owner) 0u
#define ATTRIBUTE(type, name, kind, quantity, particle, contact, bond, collision, geometry, ofParticles, ofContacts)   \
    class type : public CPrimaryAttribute                                                                              \
    {                                                                                                                  \
    public:                                                                                                            \
        explicit type(const CTimestepData& timestep)                                                                   \
            : CPrimaryAttribute(name, kind, quantity,                                                                  \
                                SERVED_##particle(eParticleAttribute) | SERVED_##contact(eContactAttribute) |          \
                                    SERVED_##bond(eBondAttribute) | SERVED_##collision(eCollisionAttribute) |          \
                                    SERVED_##geometry(eGeometryAttribute),                                             \
                                {ofParticles, ofContacts}, timestep)                                                   \
        {}                                                                                                             \
                                                                                                                       \
    protected:                                                                                                         \
        using CAttribute::read;                                                                                        \
        DECLARED_##particle(CParticleType) DECLARED_##contact(CContactsBase) DECLARED_##bond(CBondsBase) DECLARED_     \
            ##collision(CCollisionsBase) DECLARED_##geometry(CGeometryGroup)                                           \
    };
#include "analysis/attributes/primary_attributes.def"
#undef DECLARED_reads
#undef DECLARED_nothing
#undef SERVED_reads
#undef SERVED_nothing

} // namespace NBrenmark::NAttributes
