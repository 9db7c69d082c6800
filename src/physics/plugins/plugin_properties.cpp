#include "physics/plugins/plugin_properties.h"

#include "properties/custom_property_manager.h"

#include <algorithm>

namespace NBrenmark {

/// A library that miscounts must not keep the host asking.
static constexpr unsigned int mostPluginProperties = 4096;

static CCustomPropertyMetaData definitionOf(SPluginProperty& property)
{
    property.name.back() = '\0';
    const unsigned int elements = std::min(property.numberOfElements, NApiCore::mostElements);
    const std::vector<double> values(property.initialValues.begin(), property.initialValues.begin() + elements);
    const std::string name(property.name.data());
    if (property.dataType == NApiCore::eBoolean) {
        std::vector<bool> flags(values.size());
        std::transform(values.begin(), values.end(), flags.begin(), [](double value) { return value != 0.0; });
        return {name, eBooleanProperty, property.numberOfElements, property.unitType, flags};
    }
    return {name, eDoubleProperty, property.numberOfElements, property.unitType, values};
}

static std::vector<CCustomPropertyMetaData> asked(const std::function<unsigned int()>& count,
                                                  const std::function<bool(unsigned int, SPluginProperty&)>& ask)
{
    std::vector<CCustomPropertyMetaData> definitions;
    const unsigned int announced = std::min(count(), mostPluginProperties);
    for (unsigned int index = 0; index < announced; ++index) {
        const auto property = std::make_unique<SPluginProperty>();
        if (!ask(index, *property))
            break;
        definitions.push_back(definitionOf(*property));
    }
    return definitions;
}

RequiredProperties CPluginProperties::of(unsigned int ownerType, const std::function<unsigned int()>& count,
                                         const std::function<bool(unsigned int, SPluginProperty&)>& ask,
                                         CPluginErrors& errors)
{
    std::optional<std::vector<CCustomPropertyMetaData>>& definitions = known.at(ownerType);
    if (!definitions)
        definitions = errors.guarded(std::vector<CCustomPropertyMetaData>(), [&] { return asked(count, ask); });
    RequiredProperties required;
    for (const CCustomPropertyMetaData& d : *definitions)
        required.push_back(d.dataType == eBooleanProperty
                               ? std::make_unique<CCustomPropertyMetaData>(d.name, d.dataType, d.numberOfElements,
                                                                           d.unitsType, d.initialFlags)
                               : std::make_unique<CCustomPropertyMetaData>(d.name, d.dataType, d.numberOfElements,
                                                                           d.unitsType, d.initialValues));
    return required;
}

} // namespace NBrenmark
