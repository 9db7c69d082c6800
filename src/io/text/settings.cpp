// The text of a deck's companions, by the forms that also read and write them.
#include "io/text/settings.h"
#include "config/config_manager.h"
#include "io/text/text_output.h"
#include "properties/custom_property_manager.h"

namespace NBrenmark {

static void definitions(CTextOutput& out, const char* owner, const CCustomPropertyManager* manager)
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

// Real numbers with all their digits, of which the file's own form keeps six.

template <class T>
static const T* heldIn(const NConfig::SConfigNode& node)
{
    return std::any_cast<T>(&node.value);
}

template <class TNumbers>
static std::string inTurn(const TNumbers& numbers)
{
    std::string text;
    for (const double number : numbers)
        text += (text.empty() ? "" : ",") + NText::text(number);
    return text;
}

static std::string configurationValue(const NConfig::SConfigNode& node, const NConfig::SValueKind& kind)
{
    if (const auto* const real = heldIn<double>(node))
        return NText::text(*real);
    if (const auto* const real = heldIn<float>(node))
        return NText::text(double(*real));
    if (const auto* const point = heldIn<C3DPoint>(node))
        return NText::text(*point);
    if (const auto* const vector = heldIn<C3DVector>(node))
        return NText::text(*vector);
    if (const auto* const numbers = heldIn<std::set<double>>(node))
        return inTurn(*numbers);
    if (const auto* const numbers = heldIn<std::vector<double>>(node))
        return inTurn(*numbers);
    return kind.encode(node.value);
}

static void configurationNode(CTextOutput& out, const NConfig::SConfigNode& node)
{
    if (const NConfig::SValueKind* const kind = NConfig::valueKindOf(node.value))
        out.here(std::string(kind->name) + ':' + configurationValue(node, *kind));
    for (const auto& [name, child] : node.children)
        out.group(NText::segment(name), [&out, &child = child] { configurationNode(out, child); });
}

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
