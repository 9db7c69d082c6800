#pragma once
// What a document is to hold, and the version that it is of.

#include "core/version.h"

namespace NBrenmark {

/// Versions of documents are counted by themselves, beside those of decks.
constexpr quint32 documentVersion(quint32 major, quint32 minor, quint32 build)
{
    return makeVersion(major, minor, build);
}

namespace NDocumentVersion {
constexpr quint32 oldest = documentVersion(2, 4, 0);        ///< that can be read
constexpr quint32 closureIsWord = documentVersion(2, 4, 4); ///< "volume" or "surface"; before, "closed" or not
constexpr quint32 sizesByType = documentVersion(30, 0, 0);  ///< a factory has a size for each particle type
constexpr quint32 current = documentVersion(30, 0, 1);      ///< that this library writes
} // namespace NDocumentVersion

struct CXmlIoOptions
{
    quint32 version = NDocumentVersion::current; ///< of the document that is written or read
    bool writeParticles = true;                  ///< the particles of a timestep
    bool writeGeometryGroups = true;             ///< the groups of a definition
    bool writeContacts = false;
    bool writeBonds = false;
    bool writeCollisions = false;
    bool writeCustomProperties = true; ///< values of the simulation, of particles and of contacts
    bool reserved = false;
    bool overrideTime = false;  ///< the next timestep's time is timeOverride, for one write
    double timeOverride = 0.0;  ///< s
    quint64 reservedWord = 0;   ///< for a driver; nothing reads it
    quint32 reservedNumber = 2; ///< for a driver; nothing reads it
};

} // namespace NBrenmark
