// The definitions of custom properties, an element for each under that of their owner, and the values of single items.

#include "core/cause.h"
#include "core/log.h"
#include "core/shortened.h"
#include "properties/custom_property_data.h"
#include "xml/property_definitions.h"
#include "xml/property_values.h"
#include "xml/serialisers.h"

#include <QSet>

#include <algorithm>
#include <array>

namespace NBrenmark {

QString tagPart(const std::string& name)
{
    QString part;
    for (const QChar c : QString::fromStdString(name)) {
        if (c.isSpace())
            part += '_';
        else if (c.isLetterOrNumber() || c == '_')
            part += c;
    }
    return part;
}

// ---------------------------------------------------------------- values of an item

CXmlValues::CXmlValues(const CCustomPropertyManager* manager)
{
    QSet<QString> taken;
    const unsigned int count = manager != nullptr ? manager->finalizedCount() : 0;
    for (unsigned int index = 0; index < count; ++index) {
        const CCustomPropertyMetaData& property = *manager->property(index);
        const QString name = "cust_attr_" + tagPart(property.name) + '_';
        QStringList& ofProperty = names.emplace_back();
        if (taken.contains(name)) {
            reportOnce(eNotCarried, NLogTitle::xmlExport,
                       "The custom property \"" + shortened(property.name) +
                           "\" has no values in XML: another one has its name there.",
                       1, shortened(property.name));
            continue;
        }
        taken.insert(name);
        for (unsigned int element = 0; element < property.numberOfElements; ++element)
            ofProperty << name + QString::number(element);
    }
}

/// Runs visit(name, value) for each named element of an item.
template <class TData, class TVisit>
static void forEachValue(const std::vector<QStringList>& names, TData& data, unsigned int item, TVisit&& visit)
{
    for (std::size_t property = 0; property < std::min(names.size(), data.lists.size()); ++property) {
        auto* const values = data.lists[property]->item(item);
        for (int element = 0; values != nullptr && element < names[property].size(); ++element)
            visit(names[property][element], values[element]);
    }
}

void CXmlValues::write(CXmlOutput& out, const CCustomPropertyData& data, unsigned int item) const
{
    forEachValue(names, data, item, [&](const QString& name, double value) { out.attribute(name, value); });
}

void CXmlValues::read(const CXmlAttributes& attributes, CCustomPropertyData& data, unsigned int item) const
{
    forEachValue(names, data, item, [&](const QString& name, double& value) {
        if (attributes.has(name))
            value = attributes.number(name);
    });
}

// ---------------------------------------------------------------- definitions

static QString managerTag(const CCustomPropertyManager& manager)
{
    return "custom_properties_" + tagPart(manager.name);
}

static const QLatin1String definitionPrefix("custom_property_");

/// \param index  of the property
static void writeDefinition(CXmlOutput& out, const CCustomPropertyManager& manager, unsigned int index)
{
    const CCustomPropertyMetaData& property = *manager.property(index);
    out.element(definitionPrefix + tagPart(property.name), [&] {
        out.attribute("name", property.name);
        out.attribute("index", index);
        out.attribute("data_type", property.dataType); // ECustomPropertyType
        out.attribute("number_of_elements", property.numberOfElements);
        out.attribute("units", property.unitsType);         // the quantity
        out.flag("type", index < manager.finalizedCount()); // whether values are stored for it
        for (unsigned int element = 0; element < property.numberOfElements; ++element)
            out.attribute("initial_value_" + QString::number(element), property.initialValue(element));
    });
}

void writePropertyDefinitions(CXmlOutput& out, const CCustomPropertyManager* manager)
{
    if (manager == nullptr || manager->propertyCount() == 0)
        return;
    out.element(managerTag(*manager), [&] {
        for (unsigned int index = 0; index < manager->propertyCount(); ++index)
            writeDefinition(out, *manager, index);
    });
}

static std::unique_ptr<CCustomPropertyMetaData> readDefinition(const CXmlAttributes& attributes)
{
    const std::string name = attributes.text("name").toStdString();
    attributes.know("index"); // they come in their order
    const quint32 dataType = attributes.count("data_type");
    const quint32 elements =
        std::min(attributes.count("number_of_elements"), quint32(CCustomPropertyMetaData::mostElements));
    const quint32 units = attributes.count("units");
    std::vector<double> values(elements);
    for (quint32 element = 0; element < elements; ++element) {
        const QString own = "initial_value_" + QString::number(element);
        values[element] = attributes.number(attributes.has(own) ? own : QString("initial_value"));
    }
    if (dataType != eBooleanProperty)
        return std::make_unique<CCustomPropertyMetaData>(name, eDoubleProperty, elements, units, values);
    std::vector<bool> flags;
    flags.reserve(values.size());
    for (const double value : values)
        flags.push_back(value != 0.0);
    return std::make_unique<CCustomPropertyMetaData>(name, eBooleanProperty, elements, units, flags);
}

namespace {

class CPropertyDefinitionsPart : public CXmlSerialiser
{
public:
    explicit CPropertyDefinitionsPart(const SPropertyManagers& managers)
        : managers{managers.particle, managers.contact, managers.geometry, managers.simulation}
    {
        for (std::size_t owner = 0; owner < tags.size(); ++owner)
            if (this->managers[owner] != nullptr)
                tags[owner] = managerTag(*this->managers[owner]);
    }

    void fromDomElement(const CXmlAttributes& attributes, const CXmlIoOptions&) override { add(attributes); }
    void toDomElement(CXmlOutput& out, CXmlIoOptions&) override
    {
        for (const CCustomPropertyManager* manager : managers)
            writePropertyDefinitions(out, manager);
    }

    bool startDomElement(const QString& tagName, const CXmlAttributes& attributes,
                         const CXmlIoOptions& options) override
    {
        for (std::size_t owner = 0; owner < tags.size(); ++owner)
            if (managers[owner] != nullptr && tagName == tags[owner]) {
                current = managers[owner];
                return true;
            }
        if (current == nullptr || !tagName.startsWith(definitionPrefix))
            return false;
        fromDomElement(attributes, options);
        return true;
    }

    void endDomElement(const QString& tagName, const CXmlIoOptions&) override
    {
        if (current == nullptr || tagName != managerTag(*current))
            return;
        current->notifyChanged(0); // values of those that have some from now on
        current = nullptr;
    }

private:
    void add(const CXmlAttributes& attributes)
    {
        // Each is held against all names before it, and every particle has values of each.
        constexpr unsigned int mostProperties = 1000;
        if (current->propertyCount() >= mostProperties)
            throw caused_error(eCauseSource, "More than " + std::to_string(mostProperties) +
                                                 " custom properties of one owner can't be read.");
        std::unique_ptr<CCustomPropertyMetaData> property = readDefinition(attributes);
        const std::string name = property->name;
        if (!current->addProperty(property)) {
            attributes.passOver();
            report(eLost, NLogTitle::xmlImport,
                   "The custom property \"" + shortened(name) + "\" is left out: its name isn't valid or met twice.", 1,
                   shortened(name));
            return;
        }
        if (attributes.flag("type"))
            current->lastFinalisedPropertyIndex = static_cast<int>(current->propertyCount()) - 1;
    }

    const std::array<CCustomPropertyManager*, 4> managers;
    std::array<QString, 4> tags;               ///< of their elements
    CCustomPropertyManager* current = nullptr; ///< not owned
};

} // namespace

std::unique_ptr<CXmlSerialiser> propertyDefinitionsPart(const SPropertyManagers& managers)
{
    return std::make_unique<CPropertyDefinitionsPart>(managers);
}

} // namespace NBrenmark
