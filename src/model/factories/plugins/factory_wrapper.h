#pragma once
// A particle factory of a customer's library. There is one class for each interface version, in the files beside this
// one.

#include "model/factories/plugin_factory.h"
#include "physics/plugins/plugin_errors.h"
#include "platform/omp_lock.h"

#include <QLibrary>

namespace NBrenmark::NApiFactory {

/// What the factories of all interface versions share.
class CPluginParticleFactoryWrapper : public IPluginParticleFactoryWrapper
{
public:
    std::string label() const override;
    QString typeWord() const override;
    QString displayName() const override { return QStringLiteral("Plug-in factory"); }
    bool isComplete() const override { return false; }
    bool isMassCreation() const override { return false; }

    /// The library that is bound, or null.
    QLibrary* library() const { return boundLibrary.get(); }

protected:
    /// What every setupPlugin begins with.
    void takeLibrary(std::unique_ptr<QLibrary> loaded, const QString& factoryName, CPluginParticleFactoryList* list);
    /// Binds a new factory to the same library. \return null, with the reason logged, if the library refuses
    std::unique_ptr<CParticleFactory> boundCopy(std::unique_ptr<CPluginParticleFactoryWrapper> copy) const;
    /// Reports a particle of a type that isn't there. \return whether the type is there, or nothing was created
    bool checkType(const CParticleTypes& types, SNewParticle& particle, bool created);

    std::unique_ptr<QLibrary> boundLibrary;
    CPluginParticleFactoryList* owner = nullptr; ///< not owned
    std::string preferenceFile;                  ///< path; empty without one
    mutable CPluginErrors errors;
    COmpLock apiLock; ///< around calls into a library that isn't thread-safe
};

/// A particle as factories get it to fill in.
SNewParticle emptyParticle();

} // namespace NBrenmark::NApiFactory
