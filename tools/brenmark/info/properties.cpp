#include "brenmark/info/sections.h"
#include "brenmark/info/table.h"

#include "brenmark/deck_reader.h"
#include "brenmark/units_text.h"
#include "core/deck/simulation_settings.h"

namespace NBrenmark {

Json propertyList(CDeckReader& reader)
{
    const SPropertyManagers managers = reader.deck().settings->propertyManagers();
    Json list = Json::array();
    const std::pair<const char*, const CCustomPropertyManager*> owners[] = {{"particles", managers.particle},
                                                                            {"contacts", managers.contact},
                                                                            {"geometry", managers.geometry},
                                                                            {"simulation", managers.simulation}};
    for (const auto& [owner, manager] : owners)
        for (unsigned int i = 0; i < manager->propertyCount(); ++i)
            list.push_back({{"name", manager->property(i)->name},
                            {"owner", owner},
                            {"elements", manager->property(i)->numberOfElements},
                            {"stored", i < manager->finalizedCount()}});
    return list;
}

void printProperties(const Json& deck)
{
    CTable properties;
    for (const Json& property : deck["customProperties"])
        properties.row(shown(property["name"]), "of " + text(property["owner"]) + ", " +
                                                    countText(property["elements"].get<quint64>(), "element") +
                                                    (property["stored"].get<bool>() ? "" : ", not in use yet"));
    properties.printUnlessEmpty(countText(properties.size(), "custom property", "custom properties"));
}

} // namespace NBrenmark
