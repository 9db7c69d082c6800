#pragma once
// What the settings file of a deck holds: its selections, its fields, and the custom properties of its four owners.

#include "analysis/field_manager.h"
#include "analysis/selection_map.h"
#include "config/settings_file.h"
#include "legacy/legacy_custom_property_manager.h"
#include "results/physics_linked_property_manager.h"

namespace NBrenmark {

class CPluginParticleFactoryList;

class CSimulationSettingsAndData : public CSettingsFile
{
public:
    CSimulationSettingsAndData();

    NSelection::CSelectionMap& selectionMap() { return selections; }
    NField::CFieldManager& fieldManager() { return fields; }
    /// Can fill itself from the property file of an old deck, too.
    NLegacySupport::CLegacyCustomPropertyManager& particleProperties() { return particle; }
    SPropertyManagers propertyManagers();
    /// Defines from now on what the models and plug-in factories of a deck work on. The settings must outlive them.
    void follow(CPhysicsModels& physics, CPluginParticleFactoryList& factories);

private:
    NSelection::CSelectionMap selections;
    NField::CFieldManager fields;
    NLegacySupport::CLegacyCustomPropertyManager particle;
    CPhysicsLinkedCustomPropertyManager geometry;
    CPhysicsLinkedCustomPropertyManager contact;
    CPhysicsLinkedCustomPropertyManager simulation;
};

} // namespace NBrenmark
