#pragma once
// What a particle factory of a plug-in library is to a deck, beside being a factory: the custom properties that it
// works on, and what to call it when one of them can't be had.

#include "model/factories/particle_factory.h"
#include "physics/required_property.h"

#include <string>

namespace NBrenmark {

class IPluginParticleFactoryWrapper : public CParticleFactory
{
public:
    /// For a person: plug-in factory (Feeder).
    virtual std::string label() const = 0;
    /// New definitions for an owner, an ECustomPropertyOwner.
    virtual RequiredProperties requiredProperties(unsigned int ownerType) const = 0;
    /// Before it is deleted: lets go of its library.
    virtual void unloadPlugin() = 0;
};

} // namespace NBrenmark
