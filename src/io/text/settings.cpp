#include "io/text/settings.h"
#include "config/config_manager.h"
#include "io/text/text_output.h"
#include "results/custom_property_manager.h"

namespace NBrenmark {

namespace {

void definitions(CTextOutput& out, const char* owner, const CCustomPropertyManager* manager)
{
    if (!manager)
        return;
    out.group(owner, [&] {
        out.value("lastFinalisedPropertyIndex", manager->lastFinalisedPropertyIndex);
        for (unsigned int index = 0; index < manager->propertyCount(); ++index) {
            const CCustomPropertyMetaData& property = *manager->property(index);
            std::vector<double> initial;
            for (unsigned int element = 0; element < property.numberOfElements; ++element)
                initial.push_back(property.initialValue(element));
            out.group(NText::segment(property.name), [&] {
                out.value("index", index);
                out.value("dataType", property.dataType);
                out.value("numberOfElements", property.numberOfElements);
                out.value("unitsType", property.unitsType);
                out.array("initialValues", initial);
            });
        }
    });
}

void configurationNode(CTextOutput& out, const NConfig::SConfigNode& node)
{
    if (const NConfig::SValueKind* const kind = NConfig::valueKindOf(node.value))
        out.here(std::string(kind->name) + ':' + kind->encode(node.value));
    for (const auto& [name, child] : node.children)
        out.group(NText::segment(name), [&out, &child = child] { configurationNode(out, child); });
}

} // namespace

void writePropertyDefinitions(CTextOutput& out, const SPropertyManagers& managers)
{
    definitions(out, "particleProperties", managers.particle);
    definitions(out, "contactProperties", managers.contact);
    definitions(out, "geometryProperties", managers.geometry);
    definitions(out, "simulationProperties", managers.simulation);
}

void writeConfigurationText(CTextOutput& out, NConfig::CConfigManager& configuration)
{
    configurationNode(out, *configuration.findNode(NConfig::CKeyPath(), false));
}

} // namespace NBrenmark
