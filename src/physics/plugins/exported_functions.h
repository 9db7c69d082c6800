#pragma once
// What libraries of generation 1 export beside their work call: the name of a preference file, and from 1.1.0 on the
// custom properties that they need.

#include "physics/plugins/plugin_host.h"
#include "physics/plugins/plugin_library.h"
#include "physics/plugins/plugin_properties.h"

#include <brenmark/plugin/exports.h>

namespace NBrenmark {

/// Path of a library's preference file: the name that its export gives, in the folder of the kind; empty without one.
/// \param exportName  may be missing
std::string paddedPreferenceFile(QLibrary& library, const char* exportName, const SPluginKind& kind,
                                 CPluginErrors& errors);

/// Reports a function that a library must export and doesn't.
void reportUnresolved(const char* exportName, CPluginErrors& errors);

/// The exports for custom properties, which are those of particles.
class CPropertyExports
{
public:
    /// \return false, with what is missing logged
    bool resolve(QLibrary& library, CPluginErrors& errors);
    void clear();
    RequiredProperties requiredProperties(unsigned int ownerType, CPluginErrors& errors);
    /// Lets the library know where its properties are among those of the open deck.
    void registerIndices(CPluginErrors& errors);

    IPluginHost* host = nullptr; ///< gives the values; not owned, null before resolve

private:
    NApiCore::RegisterParticleProperty registerProperty = nullptr;
    NApiCore::GetNumberOfProperties getNumber = nullptr;
    NApiCore::GetDetailsForProperty getDetails = nullptr;
    CPluginProperties properties;
};

} // namespace NBrenmark
