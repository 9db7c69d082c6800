// What the external forces of all interface versions share.
#include "physics/plugins/external_force_wrapper.h"

#include <brenmark/plugin/plugin.h>

namespace NBrenmark::NApiPbf {

void IPluginExternalForceWrapper::takeLibrary(std::unique_ptr<QLibrary> loaded, const std::string& pluginName)
{
    unloadPlugin();
    boundLibrary = std::move(loaded);
    name = pluginName;
    errors.setTitle(QString("External Force Plugin (%1)").arg(modelName()));
}

bool IPluginExternalForceWrapper::reportResult(int result)
{
    if (result == NApiCore::eRecoverable)
        errors.report(
            QString("%1 - Particle Body Force\nexternalForce() method returned a recoverable error.").arg(modelName()));
    else if (result != NApiCore::eOk)
        errors.reportAlways(
            QString("%1 - Particle Body Force\nexternalForce() method returned a fatal error.\nProcessing will halt.")
                .arg(modelName()));
    return result == NApiCore::eOk || result == NApiCore::eRecoverable;
}

SPluginParticle::SPluginParticle(const SParticleForce& from, IPluginHost* host)
{
    particle.name = from.name.c_str();
    particle.mass = from.mass;
    if (host != nullptr)
        particle.properties = host->view(eFirstView, from.properties);
    forces = {{from.force.x, from.force.y, from.force.z}, {from.torque.x, from.torque.y, from.torque.z}};
}

void SPluginParticle::giveBack(SParticleForce& to) const
{
    to.force = {forces.force[0], forces.force[1], forces.force[2]};
    to.torque = {forces.torque[0], forces.torque[1], forces.torque[2]};
}

} // namespace NBrenmark::NApiPbf
