// What changes of the geometry with time: it lies on the groups of the creator model.

#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"

#include "core/left_behind.h"
#include "core/log.h"
#include "core/shortened.h"
#include "io/hdf5/geometry.h"
#include "model/factories/particle_factory_list.h"
#include "model/geometry_groups.h"

#include <algorithm>
#include <set>

namespace NBrenmark {

// ---------------------------------------------------------------- one group

/// \param visit  reads or writes a part by its own form
template <class TForm, class TGroup, class TVisit>
static void movingForm(TForm& f, TGroup& g, TVisit&& visit)
{
    f.attribute("reset velocities", g.resetVelocities);
    centresForm(f, g);
    f.attribute("xform", g.transform);         // from the mesh as it was made to where it is
    f.attribute("translation", g.translation); // m
    f.attribute("velocity", g.velocity);       // m/s
    visit(g.motionHistory);
}

void CHdf5TimestepDataReader::readGeometryGroup(CGeometryGroup& g)
{
    bool standsStill = true;
    in().attribute("static", standsStill); // never moved so far
    if (standsStill) {
        g.standStill();
    }
    else {
        movingForm(in(), g, [this](auto& part) { part.read(*this); });
        g.moveTo(g.transform);
    }
    in().attribute("time", g.time); // s

    quint32 size = 0;
    in().attribute("size", size); // what is announced; the arrays have the last word
    if ((options.timestepMask & eTriangleRows) == 0)
        size = 0;
    if (size > 0 && size != g.triangleNodes.size())
        report(eRepaired, NLogTitle::hdf5Read,
               std::to_string(size) + " triangles are announced and " + std::to_string(g.triangleNodes.size()) +
                   " are there.",
               1, g.name);
    in().attribute("mask", g.dataMask); // ETriangleField
    quint32 fields = size > 0 ? g.dataMask : 0;
    if ((options.geometryMask & eGeometryForces) == 0)
        fields &= ~eTriangleForces;
    g.triangleForces.clear(); // those of another timestep
    trianglesForm(in(), g, fields);
    checkForces(g, options.examine);
    g.triangleForces.resize(g.triangleNodes.size());
    if ((fields & eTriangleNodes) != 0)
        g.recomputeDerivedData();

    g.kinematics.read(*this);
    g.customProperties.resetToInitialValues(static_cast<unsigned int>(g.triangleNodes.size()));
    if ((options.geometryMask & eGeometryProperties) != 0)
        g.customProperties.read(*this);
    g.factories->read(*this);
}

/// Charges have a place in this family only as a custom property of that name.
static void noteLostCharges(const CGeometryGroup& g)
{
    const CCustomPropertyManager* const manager = g.customProperties.manager();
    const std::vector<double>& charges = g.electrostatic.charges;
    const bool anyCharge = std::any_of(charges.begin(), charges.end(), [](double charge) { return charge != 0.0; });
    if (anyCharge && (manager == nullptr || manager->indexOf("Charge") >= manager->finalizedCount()))
        noteLeftBehind("charges of triangles", charges.size());
}

void CHdf5TimestepDataWriter::writeGeometryGroup(const CGeometryGroup& g)
{
    if (!out().isMeasuring())
        noteLostCharges(g);
    out().attribute("static", g.isStatic); // never moved so far
    if (!g.isStatic)
        movingForm(out(), g, [this](const auto& part) { part.write(*this); });
    out().attribute("time", g.time); // s

    const bool hasRows = (options.timestepMask & eTriangleRows) != 0;
    const quint32 size = hasRows ? static_cast<quint32>(g.triangleNodes.size()) : 0;
    const quint32 mask = (options.geometryMask & eGeometryForces) != 0 ? quint32(eTriangleForces) : 0;
    out().attribute("size", size); // 0 where the masks leave the rows out
    out().attribute("mask", mask); // ETriangleField
    trianglesForm(out(), g, size > 0 ? mask : 0);

    g.kinematics.write(*this);
    if ((options.geometryMask & eGeometryProperties) != 0)
        g.customProperties.write(*this);
    else
        out().group("CustomProperties/", [] {});
    g.factories->write(*this);
}

// ---------------------------------------------------------------- all groups

// Shapes have no slots of their own here: their state is that of any group.

void CHdf5TimestepDataReader::readGeometryGroups(GeometryGroups& groups)
{
    bool hasNewIds = false;
    std::set<const CGeometryGroup*> found;
    in().group("GeometryGroups/", [&] {
        in().children([&](const QString& number) {
            bool isNumber = false;
            CGeometryGroup* const group = groups.at(number.toUInt(&isNumber));
            if (group == nullptr || !isNumber) {
                report(eLost, NLogTitle::hdf5Read,
                       "The state of geometry group " + shortened(number) +
                           " is skipped: the model has no such group.");
                return;
            }
            found.insert(group);
            readGeometryGroup(*group);
            hasNewIds |= (group->dataMask & (eTriangleIds | eTriangleNodes)) != 0;
        });
        for (const CGeometryGroup* const group : groups.groups())
            if (options.examine && group != nullptr && found.count(group) == 0)
                report(eDefaulted, NLogTitle::hdf5Read,
                       "The geometry group \"" + shortened(group->name) + "\" has no state: it is as in the model.", 1,
                       shortened(group->name));
    });
    groups.settleState(hasNewIds);
}

void CHdf5TimestepDataWriter::writeGeometryGroups(const GeometryGroups& groups)
{
    out().group("GeometryGroups/", [&] {
        for (const CGeometryGroup* group : groups.groups())
            if (group != nullptr)
                out().group(std::to_string(group->index), [&] { writeGeometryGroup(*group); });
    });
}

} // namespace NBrenmark
