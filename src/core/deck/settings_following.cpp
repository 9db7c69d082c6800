// Apart from the rest of the settings: who only reads a settings file needs no models.

#include "core/deck/simulation_settings.h"
#include "model/factories/plugin_factory_list.h"
#include "physics/physics_models.h"

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
