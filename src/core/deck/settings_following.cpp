// Apart from the rest of the settings: who only reads a settings file needs no models.

#include "core/deck/simulation_settings.h"
#include "physics/physics_models.h"
#include "physics/plugins/plugin_factory_list.h"

namespace NBrenmark {

void CSimulationSettingsAndData::follow(CPhysicsModels& physics, CPluginParticleFactoryList& factories)
{
    for (CPhysicsLinkedCustomPropertyManager* manager :
         {static_cast<CPhysicsLinkedCustomPropertyManager*>(&particle), &contact, &geometry, &simulation}) {
        physics.addListener(manager);
        factories.addListener(manager);
    }
}

} // namespace NBrenmark
