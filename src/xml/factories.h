#pragma once
// The factories of a geometry group, for the part that reads the group.

#include "model/factories/factory_size.h"
#include "xml/serialisers.h"

namespace NBrenmark {

class CParticleFactory;
class CParticleFactoryList;

class CXmlFactories
{
public:
    /// Takes an element that is a factory, or a parameter of the one that is open.
    /// \param list  of the group that is being read
    /// \return false for any other
    bool startDomElement(CParticleFactoryList& list, const CXmlAttributes& attributes, const CXmlIoOptions& options);
    void endDomElement(const QString& tagName);
    /// A group ends, and the factory with it.
    void leave() { openAt(nullptr); }

private:
    bool begin(CParticleFactoryList& list, const CXmlAttributes& attributes, const CXmlIoOptions& options);
    bool readSize(const CXmlAttributes& attributes, const CXmlIoOptions& options);
    void openAt(CParticleFactory* factory);

    CParticleFactory* current = nullptr;   ///< not owned
    std::unique_ptr<IFactorySize> oldSize; ///< that holds for all types
    IFactorySize* size = nullptr;          ///< that was read last of the factory; not owned
};

} // namespace NBrenmark
