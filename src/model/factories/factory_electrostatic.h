#pragma once
// The charge of a factory's new particles, as old files describe it beside the factory. Today a
// charge is a custom property like any other.

#include <QString>
#include <map>
#include <memory>

namespace NBrenmark {

class CCustomPropertyManager;
class IFactoryCustomPropertyParam;
class IFileVisitorReader;

/// By the id of the property.
using FactoryCustomParams = std::map<quint32, std::unique_ptr<IFactoryCustomPropertyParam>>;

namespace NLegacySupport {

class CParticleFactoryElectrostatic
{
public:
    virtual ~CParticleFactoryElectrostatic() = default;
    virtual void read(IFileVisitorReader& visitor);

    /// Puts a parameter of this description in the place of the one of the property "Charge". Nothing
    /// happens without such a property or parameter, or if kind is no known word.
    void applyTo(const CCustomPropertyManager& manager, FactoryCustomParams& customParams) const;

    QString kind;                 ///< "fixed", "random" or "normal"
    double fixedValue = 0.0;      ///< C
    double randomMin = 0.0;       ///< C
    double randomMax = 1.0;       ///< C
    double normalMean = 0.0;      ///< C
    double normalDeviation = 0.0; ///< C
};

} // namespace NLegacySupport
} // namespace NBrenmark
