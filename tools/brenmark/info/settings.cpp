#include "brenmark/info/sections.h"
#include "brenmark/info/table.h"

#include "brenmark/deck_reader.h"
#include "brenmark/terminal.h"
#include "brenmark/units_text.h"
#include "core/deck/simulation_settings.h"
#include "properties/custom_property_meta_data.h"

#include <QFileInfo>

#include <algorithm>

namespace NBrenmark {

static Json initialValues(const CCustomPropertyMetaData& property)
{
    Json values = Json::array();
    for (unsigned int i = 0; i < property.numberOfElements; ++i) {
        if (property.dataType == eBooleanProperty)
            values.push_back(property.initialValue(i) != 0.0);
        else
            values.push_back(property.initialValue(i));
    }
    return values;
}

static Json definitionList(CDeckReader& reader)
{
    Json list = Json::array();
    eachProperty(reader, [&](const char* owner, const CCustomPropertyMetaData& property, bool isStored) {
        list.push_back({{"name", property.name},
                        {"owner", owner},
                        {"type", property.dataType == eBooleanProperty ? "boolean" : "real"},
                        {"elements", property.numberOfElements},
                        {"unitsType", property.unitsType},
                        {"initialValues", initialValues(property)},
                        {"stored", isStored}});
    });
    return list;
}

static Json selectionList(const NSelection::CSelectionMap& selections)
{
    Json list = Json::array();
    for (const auto& [name, selection] : selections.selections())
        list.push_back({{"name", name},
                        {"class", utf8(selection->typeId())},
                        {"active", selection->active},
                        {"filters", selection->filters.filters.size()},
                        {"queries", selection->queries.queryCount()},
                        {"carriedAsBytes", false}});
    for (const NSelection::SCarriedSelection& carried : selections.carried().selections())
        list.push_back({{"name", utf8(carried.name)},
                        {"class", utf8(carried.typeId)},
                        {"version", utf8(versionText(carried.version))},
                        {"sizeBytes", carried.bytes.size()},
                        {"carriedAsBytes", true}});
    return list;
}

static Json fieldList(const NField::CFieldManager& fields)
{
    Json list = Json::array();
    for (const auto& [name, field] : fields.fields())
        list.push_back({{"name", name},
                        {"id", field->id},
                        {"dimension", field->getValueDimension()},
                        {"points", field->positions().size()}});
    return list;
}

static Json fileOf(const QString& path) { return QFileInfo::exists(path) ? Json(utf8(path)) : Json(); }

Json settingsOf(CDeckReader& reader)
{
    CSimulationSettingsAndData& settings = *reader.deck().settings;
    const QString& base = reader.deck().baseName;
    const bool wasRead = settings.readVersion() != 0;
    return {{"file", fileOf(base + NDeckFile::settingsSuffix)},
            {"version", wasRead ? Json(utf8(versionText(settings.readVersion()))) : Json()},
            {"edition", wasRead ? Json(settings.readEdition()) : Json()},
            {"damagedBlocks", settings.damagedBlockCount()},
            {"propertyFile", fileOf(base + NDeckFile::legacyPropertySuffix)},
            {"selections", selectionList(settings.selectionMap())},
            {"fields", fieldList(settings.fieldManager())},
            {"propertyDefinitions", definitionList(reader)}};
}

/// Up to a few values; one for all if they are the same.
static std::string valuesText(const Json& values)
{
    constexpr size_t mostValues = 4;
    const auto textOf = [](const Json& value) {
        return value.is_boolean() ? (value.get<bool>() ? "true" : "false") : shortNumber(value.get<double>());
    };
    if (values.empty())
        return "no values";
    std::string text = textOf(values[0]);
    if (std::all_of(values.begin(), values.end(), [&](const Json& value) { return value == values[0]; }))
        return text;
    for (size_t i = 1; i < std::min(values.size(), mostValues); ++i)
        text += ", " + textOf(values[i]);
    return text + (values.size() > mostValues ? ", ..." : "");
}

/// What follows the name of a selection.
static std::string selectionText(const Json& selection)
{
    const std::string kind = text(selection["class"]).empty() ? "selections in one block" : shown(selection["class"]);
    if (selection["carriedAsBytes"].get<bool>())
        return kind + ", " + countText(selection["sizeBytes"].get<quint64>(), "byte") + " of version " +
               text(selection["version"]) + " carried as they are";
    std::string line = kind + (selection["active"].get<bool>() ? ", active" : "");
    if (const auto filters = selection["filters"].get<quint64>(); filters > 0)
        line += ", " + countText(filters, "filter");
    if (const auto queries = selection["queries"].get<quint64>(); queries > 0)
        line += ", " + countText(queries, "query", "queries");
    return line;
}

void printSettings(const Json& deck)
{
    const Json& settings = deck["settings"];
    printResult(shown(deck["path"]) + '\n');
    if (settings["file"].is_null())
        printResult("  no settings beside it\n");
    else if (settings["version"].is_null())
        printResult("  settings in " + shown(settings["file"]) + " can't be opened\n");
    else
        printResult("  settings in " + shown(settings["file"]) + ", version " + text(settings["version"]) +
                    ", edition " + std::to_string(settings["edition"].get<int>()) + '\n');
    if (const int damaged = settings["damagedBlocks"].get<int>(); damaged > 0)
        printResult("  " + countText(quint64(damaged), "damaged block") + " left out\n");
    if (!settings["propertyFile"].is_null())
        printResult("  particle properties from " + shown(settings["propertyFile"]) + '\n');
    printResult("\n");

    CTable selections;
    for (const Json& selection : settings["selections"])
        selections.row(shown(selection["name"]), selectionText(selection));
    selections.print(countText(selections.size(), "selection"));

    CTable fields;
    for (const Json& field : settings["fields"])
        fields.row(shown(field["name"]), countText(field["dimension"].get<quint64>(), "component") + " at " +
                                             countText(field["points"].get<quint64>(), "point"));
    fields.print(countText(fields.size(), "field"));

    CTable definitions;
    for (const Json& property : settings["propertyDefinitions"])
        definitions.row(shown(property["name"]),
                        "of " + text(property["owner"]) + ", " +
                            countText(property["elements"].get<quint64>(), text(property["type"]) + " element") +
                            ", at first " + valuesText(property["initialValues"]) +
                            (property["stored"].get<bool>() ? "" : ", not in use yet"));
    definitions.print(countText(definitions.size(), "custom property", "custom properties"));
}

} // namespace NBrenmark
