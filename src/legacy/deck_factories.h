#pragma once
// The particle factories of a deck, in the order in which upgrades look at them.

#include <QString>

#include <vector>

namespace NBrenmark {

class CCreatorData;
class CParticleFactory;

namespace NLegacySupport {

struct SDeckFactory
{
    CParticleFactory* factory;      ///< not owned
    quint32 group;                  ///< position of the geometry group that holds it
    std::vector<QString> typeNames; ///< as its type parameter lists them; empty ones left out

    bool feeds(const QString& typeName) const;
};

/// Of all groups in order, in each in the order of its list.
std::vector<SDeckFactory> factoriesOf(const CCreatorData& creator);

} // namespace NLegacySupport
} // namespace NBrenmark
