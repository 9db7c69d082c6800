#include "brenmark/info/sections.h"
#include "brenmark/info/table.h"

#include "brenmark/failure.h"
#include "brenmark/units_text.h"
#include "model/factories/factory_type.h"
#include "model/factories/particle_factory.h"
#include "model/factories/particle_factory_list.h"
#include "model/geometry/geometry_group.h"
#include "model/geometry_groups.h"

#include <cctype>

namespace NBrenmark {

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

static std::string lowered(std::string word)
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
    groups.printUnlessEmpty(countText(groups.size(), "geometry group"));

    CTable factories;
    for (const Json& factory : deck["factories"]) {
        const std::string types = listText(factory["particleTypes"]);
        factories.row(shown(factory["name"]), text(factory["kind"]) + " in " + shown(factory["geometry"]) +
                                                  (types.empty() ? ", of no type" : ", of " + types) + ", " +
                                                  countText(factory["created"].get<quint64>(), "particle") +
                                                  " created" + (factory["complete"].get<bool>() ? ", complete" : ""));
    }
    factories.printUnlessEmpty(countText(factories.size(), "particle factory", "particle factories"));
}

} // namespace NBrenmark
