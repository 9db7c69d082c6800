#pragma once
// The types of exported functions that the kinds of plug-ins share: the one for the interface version, which every
// library has, and those of generation 1, which take all arguments by pointers.

#include <brenmark/plugin/plugin.h>

namespace NBrenmark::NApiCore {

using GetInterfaceVersion = unsigned int (*)();

/// The name of a file in the folder of preferences for plug-ins of this kind.
/// \param name  paddedFileNameSize blanks, of which the first are overwritten; no NUL
using GetPaddedFileName = void (*)(char* name);

/// Called before the first step for each required property.
/// \param index  among the custom properties of particles, by which their values are had
using RegisterParticleProperty = void (*)(const char* name, const unsigned int* index);

/// How many custom properties of particles are needed.
using GetNumberOfProperties = void (*)(unsigned int* count);

/// \param index  below the number of properties
/// \param name   room for propertyNameSize characters, all NUL
/// \return 0 if there is no such property, which ends the list
using GetDetailsForProperty = int (*)(const unsigned int* index, char* name, unsigned int* dataType,
                                      unsigned int* numberOfElements, unsigned int* unitType);

} // namespace NBrenmark::NApiCore
