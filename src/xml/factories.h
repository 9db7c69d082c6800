#pragma once
// The factories of a geometry group, for the part that reads the group.

#include "xml/serialisers.h"

#include <optional>

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
    void endDomElement(const QString& tagName, const CXmlIoOptions& options);
    /// A group ends, and the factory with it.
    void leave() { current = nullptr; }

private:
    bool begin(CParticleFactoryList& list, const CXmlAttributes& attributes, const CXmlIoOptions& options);
    void readSize(const CXmlAttributes& attributes, const CXmlIoOptions& options, const QString& name);

    CParticleFactory* current = nullptr; ///< not owned
    std::optional<CXmlAttributes> oldSize;
};

} // namespace NBrenmark
