// Makes a custom property parameter of a charge of old files.
#include "model/factories/factory_electrostatic.h"

#include "model/factories/factory_custom_property.h"
#include "properties/custom_property_manager.h"
#include "visitors/file_visitor_reader.h"

namespace NBrenmark {
namespace NLegacySupport {

void CParticleFactoryElectrostatic::read(IFileVisitorReader& v) { v.readParticleFactoryElectrostatic(*this); }

void CParticleFactoryElectrostatic::applyTo(const CCustomPropertyManager& manager,
                                            FactoryCustomParams& customParams) const
{
    const CCustomPropertyMetaData* const charge = manager.property("Charge");
    if (charge == nullptr)
        return;
    const auto entry = customParams.find(charge->id);
    if (entry == customParams.end())
        return;

    // Bound before it gets its numbers, for binding sets numbers of its own.
    if (kind == CFixedValueCustomPropertyFactoryParam::word) {
        auto param = std::make_unique<CFixedValueCustomPropertyFactoryParam>();
        param->bind(charge);
        param->values.assign(charge->numberOfElements, fixedValue);
        entry->second = std::move(param);
    }
    else if (kind == CRandomValueCustomPropertyFactoryParam::word) {
        auto param = std::make_unique<CRandomValueCustomPropertyFactoryParam>();
        param->bind(charge);
        param->distribution.min = randomMin;
        param->distribution.max = randomMax;
        entry->second = std::move(param);
    }
    else if (kind == CNormalDistCustomPropertyFactoryParam::word) {
        auto param = std::make_unique<CNormalDistCustomPropertyFactoryParam>();
        param->bind(charge);
        param->distribution.mean = normalMean;
        param->distribution.deviation = normalDeviation;
        entry->second = std::move(param);
    }
}

} // namespace NLegacySupport
} // namespace NBrenmark
