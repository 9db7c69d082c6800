#pragma once
// Particle factories that come from plug-in libraries. None can be bound here: the list stays empty, and
// readers tell what they leave out.

#include <QString>

namespace NBrenmark {

class IFileVisitorReader;
class IFileVisitorWriter;

class CPluginParticleFactoryList
{
public:
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    /// Binds a factory of a library. \return false if the library can't be bound; nothing is added then
    bool addFactory(const QString& /*fileName*/, const QString& /*name*/) { return false; }
    quint32 count() const { return 0; }
    void clear() {}
};

} // namespace NBrenmark
