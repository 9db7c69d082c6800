#include "brenmark/info/sections.h"
#include "brenmark/info/table.h"

#include "brenmark/failure.h"
#include "brenmark/units_text.h"
#include "core/deck/simulation_frame.h"

namespace NBrenmark {

Json typeList(const SSimulationFrame& frame)
{
    Json list = Json::array();
    for (const auto& type : frame.timestep.particleTypes.types)
        list.push_back({{"name", type->name},
                        {"material", utf8(type->materialName)},
                        {"spheres", type->spheres.size()},
                        {"particles", type->liveCount()}});
    return list;
}

Json materialList(const SSimulationFrame& frame)
{
    const MaterialMap& materials = frame.creator.materials;
    Json list = Json::array();
    for (auto entry = materials.begin(); entry != materials.end(); ++entry)
        list.push_back({{"name", utf8(entry.key())},
                        {"use", entry.value()->isBulk() ? "bulk" : "equipment"},
                        {"densityKgPerM3", entry.value()->density}});
    return list;
}

void printParticlesAndMaterials(const Json& deck)
{
    CTable types;
    for (const Json& type : deck["particleTypes"])
        types.row(shown(type["name"]), countText(type["particles"].get<quint64>(), "particle") + " of " +
                                           countText(type["spheres"].get<quint64>(), "sphere") + ", material " +
                                           shown(type["material"]));
    types.print(countText(types.size(), "particle type") + " at the last timestep");

    CTable materials;
    for (const Json& material : deck["materials"])
        materials.row(shown(material["name"]),
                      text(material["use"]) + ", " + shortNumber(material["densityKgPerM3"].get<double>()) + " kg/m3");
    materials.print(countText(materials.size(), "material"));
}

} // namespace NBrenmark
