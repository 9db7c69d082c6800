#pragma once
// The text of what stands beside the timesteps: definitions of custom properties, the configuration.

namespace NBrenmark {

class CCustomPropertyManager;
class CTextOutput;
struct SPropertyManagers;
namespace NConfig {
class CConfigManager;
}

/// The definitions of the deck's four owners.
void writePropertyDefinitions(CTextOutput& out, const SPropertyManagers& managers);

/// Every value of the configuration under its key, in the form that a configuration file gives it:
/// "KIND:VALUE". What that form doesn't keep no deck keeps.
void writeConfigurationText(CTextOutput& out, NConfig::CConfigManager& configuration);

} // namespace NBrenmark
