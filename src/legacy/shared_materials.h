#pragma once
// Particle types that share a material, and the factories that feed them.

namespace NBrenmark {

class CCreatorData;

namespace NLegacySupport {

/// Gives a material of its own to each particle type that shares one and is fed by a factory for it alone.
/// Where another factory feeds several types the types stay, and such a factory gets a copy of its type.
/// Every material and type that is made, and every factory that names no type, is reported.
void splitSharedMaterials(CCreatorData& creator);

/// Reports, in each geometry group, the first factory whose types are of several materials. Nothing is changed:
/// what such a factory is to feed only its user knows.
void checkFactoryMaterials(const CCreatorData& creator);

} // namespace NLegacySupport
} // namespace NBrenmark
