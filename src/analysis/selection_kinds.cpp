// The words of the classes of selections.
#include "analysis/selection_kinds.h"

#include "analysis/region_selections.h"

namespace NBrenmark::NSelection {

template <class TSelection>
static std::unique_ptr<CSelection> make(const std::string& name, CDisplayOptions& particle, CDisplayOptions& contact)
{
    return std::make_unique<TSelection>(name, particle, contact);
}

struct SSelectionKind
{
    const char* typeId;
    std::unique_ptr<CSelection> (*create)(const std::string& name, CDisplayOptions& particle, CDisplayOptions& contact);
};

static const SSelectionKind selectionKinds[] = {
    {"Manual Selection", make<CManualSelection>},
    {"Lattice Bin Group", make<CLatticeSelection>},
    {"CAD Template Bin Group", make<CCadTemplateSelection>},
    {"Primitive Geometry Bin", make<CPrimitiveSelection>},
    {"Primitive Mass Flow Sensor", make<CMassFlowSensorSelection>},
    {"Primitive Total Mass Sensor", make<CTotalMassSensorSelection>},
    {"Primitive Velocity Profile Sensor", make<CVelocityProfileSensorSelection>},
    {"Primitive Segregation Sensor", make<CSegregationSensorSelection>},
    {"Primitive Bulk Density Sensor", make<CBulkDensitySensorSelection>},
};

QStringList selectionTypeIds()
{
    QStringList words;
    for (const SSelectionKind& kind : selectionKinds)
        words.append(QLatin1String(kind.typeId));
    return words;
}

std::unique_ptr<CSelection> createSelection(const QString& typeId, const std::string& name, CDisplayOptions& particle,
                                            CDisplayOptions& contact)
{
    for (const SSelectionKind& kind : selectionKinds)
        if (typeId == QLatin1String(kind.typeId))
            return kind.create(name, particle, contact);
    return nullptr;
}

} // namespace NBrenmark::NSelection
