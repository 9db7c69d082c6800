#include "brenmark/info/sections.h"
#include "brenmark/info/table.h"

#include "brenmark/deck_reader.h"
#include "brenmark/units_text.h"
#include "core/deck/simulation_settings.h"

namespace NBrenmark {

void eachProperty(CDeckReader& reader,
                  const std::function<void(const char*, const CCustomPropertyMetaData&, bool)>& take)
{
    const SPropertyManagers managers = reader.deck().settings->propertyManagers();
    const std::pair<const char*, const CCustomPropertyManager*> owners[] = {{"particles", managers.particle},
                                                                            {"contacts", managers.contact},
                                                                            {"geometry", managers.geometry},
                                                                            {"simulation", managers.simulation}};
    for (const auto& [owner, manager] : owners)
        for (unsigned int i = 0; i < manager->propertyCount(); ++i)
            take(owner, *manager->property(i), i < manager->finalizedCount());
}

Json propertyList(CDeckReader& reader)
{
    Json list = Json::array();
    eachProperty(reader, [&](const char* owner, const CCustomPropertyMetaData& property, bool isStored) {
        list.push_back({{"name", property.name},
                        {"owner", owner},
                        {"elements", property.numberOfElements},
                        {"boolean", property.dataType == eBooleanProperty},
                        {"stored", isStored}});
    });
    return list;
}

void printProperties(const Json& deck)
{
    CTable properties;
    for (const Json& property : deck["customProperties"])
        properties.row(shown(property["name"]), "of " + text(property["owner"]) + ", " +
                                                    countText(property["elements"].get<quint64>(), "element") +
                                                    (property["boolean"].get<bool>() ? ", true or false" : "") +
                                                    (property["stored"].get<bool>() ? "" : ", not in use yet"));
    properties.printUnlessEmpty(countText(properties.size(), "custom property", "custom properties"));
}

} // namespace NBrenmark
