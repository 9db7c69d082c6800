// A manager as any other, but for the file that it can fill itself from.
#include "legacy/legacy_custom_property_manager.h"

#include "visitors/settings_streams.h"

namespace NBrenmark::NLegacySupport {

CLegacyCustomPropertyManager::~CLegacyCustomPropertyManager() = default;

int CLegacyCustomPropertyManager::readPropertyFile() { return NSettingsFamily::readPropertyFile(*this); }

} // namespace NBrenmark::NLegacySupport
