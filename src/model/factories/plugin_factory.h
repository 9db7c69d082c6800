#pragma once
// What a particle factory of a plug-in library is to a deck, beside being a factory: the custom properties that it
// works on, and what to call it when one of them can't be had. A deck stores its name and its library, and none of its
// parameters.

#include "model/factories/particle_factory.h"
#include "physics/required_property.h"

#include <brenmark/plugin/new_particle.h>

#include <memory>
#include <string>

class QLibrary;

namespace NBrenmark {

class CPluginParticleFactoryList;

class IPluginParticleFactoryWrapper : public CParticleFactory
{
public:
    /// Binds the factory to a loaded library; one that was bound before is unloaded.
    /// \param factoryName  under which the deck has it
    /// \param list         that it is for; not owned
    /// \return false, with the reason logged, if the library lacks something or refuses
    virtual bool setupPlugin(std::unique_ptr<QLibrary> loaded, const QString& factoryName,
                             CPluginParticleFactoryList* list) = 0;
    /// Before it is deleted: lets go of its library.
    virtual void unloadPlugin() = 0;
    /// For a person: plug-in factory (Feeder).
    virtual std::string label() const = 0;
    /// Whether several threads may create particles at once.
    virtual bool isThreadSafe() const { return false; }
    /// Called by a solver before the first step. \return false if the factory isn't ready
    virtual bool starting() = 0;
    virtual void stopping() = 0;
    /// Says whether a particle is to be created now, and which.
    /// \param time     s
    /// \param types    those that a particle may be of
    /// \param created  whether particle is one; false after a failure
    /// \return whether the solver goes on
    virtual bool createParticle(double time, const CParticleTypes& types, NApiFactory::SNewParticle& particle,
                                bool& created) = 0;
    /// New definitions for an owner, an ECustomPropertyOwner.
    virtual RequiredProperties requiredProperties(unsigned int /*ownerType*/) const { return {}; }
    /// The largest scale of a particle that it creates.
    virtual double largestScale() const { return 1.0; }

    void read(IFileVisitorReader& /*visitor*/) override {}
    void write(IFileVisitorWriter& /*visitor*/) const override {}

    QString libraryName; ///< as the deck has it
};

} // namespace NBrenmark
