#pragma once
// Particle factories that come from plug-in libraries. None can be held yet: the list is always
// empty, and a deck with such a factory is refused by the visitors.

#include <QtGlobal>

namespace NBrenmark {

class IFileVisitorReader;
class IFileVisitorWriter;

class CPluginParticleFactoryList
{
public:
    void read(IFileVisitorReader& visitor);
    void write(IFileVisitorWriter& visitor) const;

    quint32 count() const { return 0; }
    void clear() {}
};

} // namespace NBrenmark
