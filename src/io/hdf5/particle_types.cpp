// Particle types and the particles in them. In a creator model a type has no particles, but the form is
// the same.

#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"

#include "core/left_behind.h"
#include "core/log.h"
#include "core/shortened.h"
#include "io/hdf5/stored_length.h"
#include "model/particle_types.h"
#include "model/slot_bytes.h"

#include <algorithm>

namespace NBrenmark {

using HDF5DATATYPES::SSphereType;

template <class TForm, class TType>
static void definitionForm(TForm& f, TType& t)
{
    f.attribute("material name", t.materialName);
    if (f.since(30, 0, 6)) {
        f.attribute("surface based", t.surfaceBased);              // kept and compared; steers nothing here
        f.attribute("auto center particle", t.autoCenterParticle); // kept and compared; steers nothing here
        f.attribute("template name", t.templateName);              // kept and compared; steers nothing here
        f.attribute("auto properties", t.autoProperties);          // kept and compared; steers nothing here
    }
    f.attribute("raw mass", t.rawMass);               // kg, at scale 1
    f.attribute("raw volume", t.rawVolume);           // m^3
    f.attribute("raw inertia", t.rawInertia);         // kg m^2: Ixx, Iyy, Izz
    f.attribute("calc props", t.calculateProperties); // whether the three were computed from the spheres
}

/// The arrays of a type, each with its bit in the stored-fields word.
template <class TForm, class TType, class TTimes>
static void particlesForm(TForm& f, TType& t, TTimes& creationTime, quint32 fields)
{
    const auto has = [fields](quint32 field) { return (fields & field) != 0; };
    f.rows("ids", t.ids, has(eIds));                                                   // below 1: a free slot
    f.rows("velocity", t.velocity, has(eVelocity));                                    // m/s
    f.rows("position", t.position, has(ePosition));                                    // m
    f.rows("orientation", t.orientation, has(eOrientation));                           // w, x, y, z
    f.rows("angular velocity", t.angularVelocity, has(eAngularVelocity));              // rad/s
    f.rows("scale", t.scale, has(eScale));                                             // factor of all lengths
    f.rows("force torque", t.forceTorque, has(eForceTorque));                          // N, N m, N
    f.rows("us_force torque", t.unscaledForceTorque, has(eUnscaledForceTorque));       // the same, not scaled
    f.rows("external force torque", t.externalForceTorque, has(eExternalForceTorque)); // N, N m, N
    f.rows("creation time", creationTime, has(eCreationTime));                         // s
}

/// Runs check(name, rows) for each array that the word names.
template <class TCheck>
static void forEachArray(const CParticleType& t, quint32 fields, TCheck&& check)
{
    const auto checkIf = [&](quint32 field, const char* name, std::size_t rows) {
        if ((fields & field) != 0)
            check(name, rows);
    };
    checkIf(eIds, "ids", t.ids.size());
    checkIf(eVelocity, "velocity", t.velocity.size());
    checkIf(ePosition, "position", t.position.size());
    checkIf(eOrientation, "orientation", t.orientation.size());
    checkIf(eAngularVelocity, "angular velocity", t.angularVelocity.size());
    checkIf(eScale, "scale", t.scale.size());
    checkIf(eForceTorque, "force torque", t.forceTorque.size());
    checkIf(eUnscaledForceTorque, "us_force torque", t.unscaledForceTorque.size());
    checkIf(eExternalForceTorque, "external force torque", t.externalForceTorque.size());
    checkIf(eCreationTime, "creation time", t.creationTime.size());
}

/// All arrays of a type have one length, or its slots mean nothing.
static quint32 commonLength(const CParticleType& t, quint32 fields)
{
    const char* firstName = nullptr;
    std::size_t length = 0;
    forEachArray(t, fields, [&](const char* name, std::size_t rows) {
        if (firstName == nullptr) {
            firstName = name;
            length = rows;
        }
        if (rows != length)
            throw hdf5_error("Particle type \"" + t.name + "\" has " + std::to_string(length) + " rows of " +
                             firstName + " and " + std::to_string(rows) + " of " + name + ".");
    });
    return static_cast<quint32>(length);
}

/// Charges have a place in this family only as custom properties of these names.
static void noteLostCharges(const CParticleType& t)
{
    const CCustomPropertyManager* const manager = t.customProperties.manager();
    const auto noteUnless = [&](const char* property, const char* what, std::size_t values) {
        if (manager == nullptr || manager->indexOf(property) >= manager->finalizedCount())
            noteLeftBehind(what, values);
    };
    noteUnless("Charge", "charges of particles", t.electrostatic.charge.size());
    noteUnless("Electrostatic Force", "electrostatic forces on particles", t.electrostatic.electrostaticForce.size());
}

// ---------------------------------------------------------------- one type

namespace {

/// Half a type has arrays of different lengths.
class CEmptiedTypeUnlessWhole
{
public:
    explicit CEmptiedTypeUnlessWhole(CParticleType& type) : type(type) {}
    ~CEmptiedTypeUnlessWhole()
    {
        if (whole)
            return;
        type.ids.clear();
        type.resizeSlots(0);
        type.customProperties.resize(0);
        type.rebuildFreeList();
    }
    CEmptiedTypeUnlessWhole(const CEmptiedTypeUnlessWhole&) = delete;
    CEmptiedTypeUnlessWhole& operator=(const CEmptiedTypeUnlessWhole&) = delete;

    bool whole = false;

private:
    CParticleType& type;
};

} // namespace

static const char* const spheresName = "spheres";

void CHdf5Reader::readParticleType(CParticleType& t)
{
    CEmptiedTypeUnlessWhole reading(t);
    QString name;
    in().attribute("name", name);
    t.setName(name);
    definitionForm(in(), t);
    t.spheres = in().table<SSphereType>(spheresName);
    t.settleSpheres();

    quint32 size = 0;
    in().attribute("size", size); // what is announced; the arrays have the last word
    const bool isWanted = (options.timestepMask & eParticleRows) != 0;
    if (!isWanted)
        size = 0;
    in().attribute("mask", t.dataMask);                   // EParticleField
    if ((t.dataMask & options.wantedParticleFields) != 0) // else the others say how many slots there are
        t.dataMask &= options.wantedParticleFields;
    const bool hasRows = isWanted && (size > 0 || in().hasRows({"ids", "position"}));
    const quint32 fields = hasRows ? reduceParticleFields(t.dataMask, options.particleMask) : 0;
    // The arrays that are there say how many slots there are: memory follows stored bytes only.
    CStoredLength lengths(in(), "Particle type \"" + shortened(t.name) + "\" has");
    particlesForm(lengths, t, t.creationTime, fields);
    const quint32 held = lengths.admitted(slotBytes(t));
    in().together([&](CHdf5RowsReader& f) { particlesForm(f, t, t.creationTime, fields); });
    if (held != size)
        report(held < size ? eLost : eRepaired, NLogTitle::hdf5Read,
               "Particle type \"" + shortened(t.name) + "\" announces " + std::to_string(size) +
                   " particles and holds " + std::to_string(held) + ".",
               std::max(held, size) - std::min(held, size), shortened(t.name));
    t.resizeSlots(held);
    t.customProperties.resize(held);
    if ((options.particleMask & eParticleProperties) != 0)
        t.customProperties.read(*this);
    t.rebuildFreeList();
    reading.whole = true;
}

void CHdf5Writer::writeParticleType(const CParticleType& t)
{
    if (!out().isMeasuring())
        noteLostCharges(t);
    out().attribute("name", t.displayName);
    definitionForm(out(), t);
    out().table<SSphereType>(spheresName, t.spheres);

    const quint32 size = (options.timestepMask & eParticleRows) != 0 ? t.slotCount() : 0;
    const quint32 mask = reduceParticleFields(allParticleFields, options.particleMask);
    out().attribute("size", size); // 0 where the masks leave the rows out
    out().attribute("mask", mask); // EParticleField
    if (size > 0) {
        commonLength(t, mask);
        if (options.overrideTime) {
            const std::vector<double> times(size, options.timeOverride);
            particlesForm(out(), t, times, mask);
        }
        else {
            particlesForm(out(), t, t.creationTime, mask);
        }
    }

    if ((options.particleMask & eParticleProperties) != 0)
        t.customProperties.write(*this);
    else
        out().group("CustomProperties/", [] {});
}

// ---------------------------------------------------------------- all types

void CHdf5Reader::readParticleTypes(CParticleTypes& types)
{
    in().group("ParticleTypes/", [&] {
        qint64 maxId = 0; // unsigned in files of today; a negative one of others asks for a count
        in().attribute("max id", maxId);
        types.recreate(static_cast<quint32>(in().childCount()));
        in().numbered(types.types, [&](const std::unique_ptr<CParticleType>& type) { type->read(*this); });
        types.settle(maxId, NLogTitle::hdf5Read);
    });
}

void CHdf5Writer::writeParticleTypes(const CParticleTypes& types)
{
    out().group("ParticleTypes/", [&] {
        out().attribute("max id", types.maxId);
        out().numbered(types.types, [&](const std::unique_ptr<CParticleType>& type) { type->write(*this); });
    });
}

} // namespace NBrenmark
