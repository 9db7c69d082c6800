#pragma once
// The text of what is stored beside the timesteps: definitions of custom properties, selections,
// fields, the configuration.

namespace NBrenmark {

class CCustomPropertyManager;
class CTextOutput;
struct SPropertyManagers;
namespace NConfig {
class CConfigManager;
}
namespace NField {
class CFieldManager;
}
namespace NSelection {
class CSelectionMap;
}

/// The definitions of the deck's four owners.
void writePropertyDefinitions(CTextOutput& out, const SPropertyManagers& managers);

/// Every selection that is stored, with its queries.
void writeSelections(CTextOutput& out, const NSelection::CSelectionMap& selections);
/// Every field that is stored, with its points and values.
void writeFields(CTextOutput& out, const NField::CFieldManager& fields);

/// Every value of the configuration under its key: "KIND:VALUE", as in a configuration file but for real numbers, which
/// have 17 digits.
void writeConfigurationText(CTextOutput& out, NConfig::CConfigManager& configuration);

} // namespace NBrenmark
