// brenmark info: what a deck of either family holds, for a reader.

#include "brenmark/commands.h"
#include "brenmark/deck_family.h"
#include "brenmark/deck_reader.h"
#include "brenmark/json_text.h"
#include "brenmark/terminal.h"
#include "brenmark/units_text.h"

#include "core/deck/simulation_settings.h"
#include "model/factories/factory_type.h"
#include "model/factories/particle_factory.h"
#include "model/factories/particle_factory_list.h"
#include "model/geometry/geometry_group.h"

#include <QFileInfo>

#include <algorithm>
#include <cctype>

namespace NBrenmark {

namespace {

Json timestepList(CDeckReader& reader)
{
    Json list = Json::array();
    for (quint32 i = 0; i < reader.timestepCount(); ++i)
        list.push_back({{"time", reader.index()[i].time}, {"full", reader.index()[i].isFull}});
    return list;
}

Json typeList(const CParticleTypes& types)
{
    Json list = Json::array();
    for (const auto& type : types.types)
        list.push_back({{"name", type->name},
                        {"material", utf8(type->materialName)},
                        {"spheres", type->spheres.size()},
                        {"particles", type->liveCount()}});
    return list;
}

Json materialList(const MaterialMap& materials)
{
    Json list = Json::array();
    for (auto entry = materials.begin(); entry != materials.end(); ++entry)
        list.push_back({{"name", utf8(entry.key())},
                        {"use", entry.value()->isBulk() ? "bulk" : "equipment"},
                        {"density", entry.value()->density}});
    return list;
}

Json geometryList(const GeometryGroups& groups)
{
    Json list = Json::array();
    for (const CGeometryGroup* group : groups.groups()) {
        if (group == nullptr)
            continue;
        Json motions = Json::array();
        for (const auto& motion : group->kinematics.actions)
            motions.push_back({{"name", utf8(motion->name)}, {"kind", utf8(motion->displayName())}});
        list.push_back({{"name", utf8(group->displayedName)},
                        {"shape", utf8(group->displayName())},
                        {"material", utf8(group->materialName)},
                        {"triangles", group->triangleNodes.size()},
                        {"moving", !group->isStatic},
                        {"motions", motions}});
    }
    return list;
}

Json factoryList(const GeometryGroups& groups)
{
    Json list = Json::array();
    for (const CGeometryGroup* group : groups.groups()) {
        if (group == nullptr)
            continue;
        for (const auto& factory : group->factories->factories) {
            Json types = Json::array();
            if (factory->type != nullptr)
                for (const QString& typeName : factory->type->typeNames())
                    types.push_back(utf8(typeName));
            list.push_back({{"name", utf8(factory->name)},
                            {"kind", utf8(factory->typeWord())},
                            {"geometry", utf8(group->displayedName)},
                            {"particleTypes", types},
                            {"created", factory->creationCount},
                            {"complete", factory->isComplete()}});
        }
    }
    return list;
}

Json propertyList(const SPropertyManagers& managers)
{
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

Json fileList(const QStringList& files)
{
    Json list = Json::array();
    for (const QString& file : files)
        list.push_back({{"path", utf8(file)}, {"bytes", QFileInfo(file).size()}});
    return list;
}

/// Everything that is told; the text is made from this object, so that both tell the same.
Json describe(CDeckReader& reader, const QString& path)
{
    // The last timestep tells most: what was created until then is in it. A deck without one has
    // an empty model.
    if (reader.timestepCount() > 0)
        reader.timestep(reader.timestepCount() - 1);
    const SSimulationFrame& frame = *reader.deck().currentFrame;
    const QStringList files = familyFiles(path);
    return {{"path", utf8(path)},
            {"family", reader.familyName()},
            {"createdBy", utf8(versionText(reader.manager().firstVersion))},
            {"lastWrittenBy", utf8(versionText(reader.manager().lastVersion))},
            {"title", utf8(frame.creator.title)},
            {"description", utf8(frame.creator.description)},
            {"timesteps", timestepList(reader)},
            {"particleTypes", typeList(frame.timestep.particleTypes)},
            {"materials", materialList(frame.creator.materials)},
            {"geometryGroups", geometryList(frame.creator.geometryGroups)},
            {"factories", factoryList(frame.creator.geometryGroups)},
            {"customProperties", propertyList(reader.deck().settings->propertyManagers())},
            {"files", fileList(files)},
            {"bytes", bytesOf(files)}};
}

/// A table of which the first column is as wide as its widest text.
class CTable
{
public:
    void row(const std::string& first, const std::string& rest) { rows.emplace_back(first, rest); }

    void print(const std::string& heading) const
    {
        printResult(heading + '\n');
        size_t width = 0;
        for (const auto& [first, rest] : rows)
            width = std::max(width, columns(first));
        for (const auto& [first, rest] : rows)
            printResult("  " + first + std::string(width - columns(first) + 2, ' ') + rest + '\n');
    }

private:
    /// Characters, not bytes: those that begin one.
    static size_t columns(const std::string& text)
    {
        return static_cast<size_t>(std::count_if(
            text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
    }

    std::vector<std::pair<std::string, std::string>> rows;
};

std::string text(const Json& value) { return value.get<std::string>(); }

/// A name with its control characters made harmless.
std::string shown(const Json& name)
{
    std::string out = text(name);
    std::replace_if(
        out.begin(), out.end(), [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; }, ' ');
    return out;
}

/// "Lift, Turn", of a list of names, or of objects by their names.
std::string listText(const Json& list)
{
    std::string out;
    for (const Json& entry : list)
        out += (out.empty() ? "" : ", ") + shown(entry.is_object() ? entry["name"] : entry);
    return out;
}

std::string lowered(std::string word)
{
    if (word != "CAD Geometry" && !word.empty()) // an abbreviation
        word[0] = static_cast<char>(std::tolower(static_cast<unsigned char>(word[0])));
    return word;
}

void printGeometry(const Json& deck)
{
    CTable groups;
    for (const Json& group : deck["geometryGroups"]) {
        const std::string material = shown(group["material"]);
        const std::string motions = listText(group["motions"]);
        groups.row(shown(group["name"]), lowered(text(group["shape"])) + " of " +
                                             countText(group["triangles"].get<quint64>(), "triangle") +
                                             (material.empty() ? ", no material" : ", material " + material) +
                                             (group["moving"].get<bool>() ? ", moving" : ", static") +
                                             (motions.empty() ? "" : ", motions: " + motions));
    }
    if (!deck["geometryGroups"].empty())
        groups.print(countText(deck["geometryGroups"].size(), "geometry group"));
    if (deck["factories"].empty())
        return;

    CTable factories;
    for (const Json& factory : deck["factories"]) {
        const std::string types = listText(factory["particleTypes"]);
        factories.row(shown(factory["name"]), text(factory["kind"]) + " in " + shown(factory["geometry"]) +
                                                  (types.empty() ? ", of no type" : ", of " + types) + ", " +
                                                  countText(factory["created"].get<quint64>(), "particle") +
                                                  " created" + (factory["complete"].get<bool>() ? ", complete" : ""));
    }
    factories.print(std::to_string(deck["factories"].size()) +
                    (deck["factories"].size() == 1 ? " particle factory" : " particle factories"));
}

constexpr size_t mostTimesteps = 40; // more are told by the first and the last ones

void printTimesteps(const Json& timesteps)
{
    CTable table;
    for (size_t i = 0; i < timesteps.size(); ++i) {
        const bool left =
            timesteps.size() > mostTimesteps && i >= mostTimesteps / 2 && i < timesteps.size() - mostTimesteps / 2;
        if (left && i == mostTimesteps / 2)
            table.row("...", std::to_string(timesteps.size() - mostTimesteps) + " more");
        if (!left)
            table.row(std::to_string(i), "t = " + shortNumber(timesteps[i]["time"].get<double>()) + " s" +
                                             (timesteps[i]["full"].get<bool>() ? "" : ", partial"));
    }
    table.print(countText(timesteps.size(), "timestep"));
}

void print(const Json& deck)
{
    const std::string created = text(deck["createdBy"]), last = text(deck["lastWrittenBy"]);
    printResult(text(deck["path"]) + '\n');
    printResult("  " + text(deck["family"]) + " deck, version " + last +
                (created == last ? "" : ", created by version " + created) + ", " +
                sizeText(deck["bytes"].get<double>()) + " in all\n");
    if (!text(deck["title"]).empty())
        printResult("  " + shown(deck["title"]) + '\n');
    if (!text(deck["description"]).empty())
        printResult("  " + shown(deck["description"]) + '\n');
    printResult("\n");
    printTimesteps(deck["timesteps"]);

    CTable types;
    for (const Json& type : deck["particleTypes"])
        types.row(shown(type["name"]), countText(type["particles"].get<quint64>(), "particle") + " of " +
                                           countText(type["spheres"].get<quint64>(), "sphere") + ", material " +
                                           shown(type["material"]));
    types.print(countText(deck["particleTypes"].size(), "particle type") + " at the last timestep");

    CTable materials;
    for (const Json& material : deck["materials"])
        materials.row(shown(material["name"]),
                      text(material["use"]) + ", " + shortNumber(material["density"].get<double>()) + " kg/m3");
    materials.print(countText(deck["materials"].size(), "material"));
    printGeometry(deck);

    CTable properties;
    for (const Json& property : deck["customProperties"])
        properties.row(shown(property["name"]), "of " + text(property["owner"]) + ", " +
                                                    countText(property["elements"].get<quint64>(), "element") +
                                                    (property["stored"].get<bool>() ? "" : ", not in use yet"));
    if (!deck["customProperties"].empty())
        properties.print(std::to_string(deck["customProperties"].size()) +
                         (deck["customProperties"].size() == 1 ? " custom property" : " custom properties"));

    CTable files;
    for (const Json& file : deck["files"])
        files.row(shown(file["path"]), sizeText(file["bytes"].get<double>()));
    files.print(countText(deck["files"].size(), "file"));
}

} // namespace

EExitCode runInfo(const SInfoOptions& options)
{
    CDeckReader reader(options.deck);
    Json deck = describe(reader, options.deck);
    const std::vector<SLogMessage> messages = reader.messages();
    if (options.json) {
        deck["messages"] = jsonMessages(messages);
        printJson(deck);
    }
    else {
        print(deck);
        flushResult();
    }
    printWarnings(messages);
    return eExitDone;
}

} // namespace NBrenmark
