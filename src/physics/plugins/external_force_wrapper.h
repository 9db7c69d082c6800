#pragma once
// An external force of a customer's library. There is one class for each interface version, in the files beside this
// one.

#include "physics/external_force.h"
#include "physics/plugins/plugin_errors.h"
#include "physics/plugins/plugin_host.h"
#include "platform/omp_lock.h"

#include <brenmark/plugin/particle.h>

#include <QLibrary>

#include <memory>
#include <string>

namespace NBrenmark::NApiPbf {

class IPluginExternalForceWrapper : public CNothingToEdit<IExternalForce>
{
public:
    IPluginExternalForceWrapper() : CNothingToEdit(ePluginModel) {}

    QString modelName() const override { return QString::fromStdString(name); }
    bool capabilityFlag() const override { return false; }
    void write(IFileVisitorWriter& /*visitor*/) const override {}
    void read(IFileVisitorReader& /*visitor*/) override {}

    /// As the operations of contact models.
    virtual bool setupPlugin(std::unique_ptr<QLibrary> loaded, const std::string& pluginName) = 0;
    virtual std::unique_ptr<QLibrary> unloadPlugin() = 0;
    QLibrary* library() const { return boundLibrary.get(); }

protected:
    void takeLibrary(std::unique_ptr<QLibrary> loaded, const std::string& pluginName);
    /// Reports a failure of the work call. \return whether the solver goes on
    bool reportResult(int result);

    std::unique_ptr<QLibrary> boundLibrary;
    std::string name;           ///< base name of the file
    std::string preferenceFile; ///< path; empty without one
    mutable CPluginErrors errors;
    COmpLock apiLock; ///< around calls into a library that isn't thread-safe
};

/// A particle as plug-ins see it, out of one as the solver has it, and back.
struct SPluginParticle
{
    /// \param host  gives the view of custom properties; null for none
    SPluginParticle(const SParticleForce& particle, IPluginHost* host);
    void giveBack(SParticleForce& particle) const;

    SParticle particle{};
    SParticleForces forces{};
};

} // namespace NBrenmark::NApiPbf
