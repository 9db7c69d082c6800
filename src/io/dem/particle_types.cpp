// Particle types: the definitions, and in a timestep the rows of all particles.
#include "model/particle_types.h"
#include "core/log.h"
#include "core/shortened.h"
#include "io/dem/custom_properties.h"
#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"
#include "model/slot_bytes.h"

namespace NBrenmark {

// The least that an element takes, with empty texts.
static constexpr qint64 leastSphereBytes = 4 + 5 * 8; // its name, two radii and a position
static constexpr qint64 leastTypeBytes = 4 + 2 * 4 + 5 * 8 + 3 * 4;

/// The fields that have an array here.
static constexpr quint32 arrayFields = (allParticleFields & ~quint32(eCreationTime)) | eCharge | eElectrostaticForce;

template <class TForm, class TSphere>
static void sphereForm(TForm& f, TSphere& sphere)
{
    f.text(sphere.name);
    f.f64(sphere.contactRadius);  // m
    f.f64(sphere.physicalRadius); // m
    f.point(sphere.position);     // m, in the particle's frame
}

template <class TForm, class TType>
static void definitionForm(TForm& f, TType& type)
{
    f.marker(particleTypeMarker);
    f.text(type.displayName);
    f.text(type.materialName);
    f.f64(type.rawMass);      // kg, at scale 1
    f.f64(type.rawVolume);    // m^3
    f.point(type.rawInertia); // kg m^2: Ixx, Iyy, Izz
    f.length("sphere", leastSphereBytes, type.spheres);
    f.flag(type.calculateProperties, from(20, 0, 4), true); // whether the three were computed from the spheres
    for (auto& sphere : type.spheres)
        sphereForm(f, sphere);
}

/// The arrays that the word of stored fields names, in the order of the file.
template <class TArrays, class TType>
static void rowsForm(TArrays& arrays, quint32 fields, TType& type)
{
    const auto rows = [&](EParticleField field, const char* what, auto& array) {
        if ((fields & field) != 0)
            arrays.rows(what, array);
    };
    rows(eIds, "particle ids", type.ids);                 // below 1: a free slot
    rows(eVelocity, "velocities", type.velocity);         // m/s
    rows(ePosition, "positions", type.position);          // m
    rows(eOrientation, "orientations", type.orientation); // w, x, y, z
    if constexpr (TArrays::isReading) {
        // Nine numbers a row, of which the first four are the quaternion.
        std::vector<std::array<double, 9>> oldForm;
        rows(eMatrixOrientation, "orientations", oldForm);
        if (!oldForm.empty())
            type.orientation.clear();
        for (const std::array<double, 9>& row : oldForm)
            type.orientation.emplace_back(row[0], row[1], row[2], row[3]);
    }
    rows(eAngularVelocity, "angular velocities", type.angularVelocity);                       // rad/s
    rows(eScale, "scales", type.scale);                                                       // factor of all lengths
    rows(eForceTorque, "forces", type.forceTorque);                                           // N, N m, N
    rows(eUnscaledForceTorque, "unscaled forces", type.unscaledForceTorque);                  // the same, not scaled
    rows(eExternalForceTorque, "external forces", type.externalForceTorque);                  // N, N m, N
    rows(eCharge, "charges", type.electrostatic.charge);                                      // C
    rows(eElectrostaticForce, "electrostatic forces", type.electrostatic.electrostaticForce); // N
}

static quint32 readFields(CInForm& f)
{
    quint32 fields = 0;
    f.i32(fields, from(20, 0, 6), 511u); // EParticleField
    if (upTo(20, 0, 6).holds(f.version()) && (fields & eOrientation) != 0)
        fields = (fields & ~quint32(eOrientation)) | eMatrixOrientation;
    return fields;
}

void CDemReader::readParticleType(CParticleType& type)
{
    CInForm f = in();
    definitionForm(f, type);
    type.setName(type.displayName);
    type.settleSpheres();

    quint32 rows = 0;
    f.i32(rows);
    quint32 fields = readFields(f);
    if (rows != 0 && fields != 0) {
        bool deflated = false;
        f.flag8(deflated, from(20, 0, 1), false);
        f.group(
            deflated, rows, [&](CArrayGroupReader& arrays) { rowsForm(arrays, fields, type); }, slotBytes(type));
    }
    if ((fields & eMatrixOrientation) != 0)
        fields = (fields & ~quint32(eMatrixOrientation)) | eOrientation; // held as quaternions from here on
    type.dataMask = fields;
    if (rows != 0 && (fields & arrayFields) == 0) {
        report(eLost, NLogTitle::legacyRead,
               counted(rows, "row") + " without data of " + shortened(type.name) + " dropped", rows,
               shortened(type.name));
        rows = 0;
    }
    // The arrays that aren't stored become zeros, as the creation times always do in this family, and
    // the custom properties their initial values.
    type.customProperties.resetAll();
    type.resizeSlots(rows);
    if (f.stores(gateParticleProperties))
        type.customProperties.read(*this);
    type.rebuildFreeList();
}

void CDemWriter::writeParticleType(const CParticleType& type)
{
    const SSaveOptions& options = stream->options;
    COutForm f = out();
    definitionForm(f, type);
    const quint32 rows = (options.timestepMask & eParticleRows) != 0 ? type.slotCount() : 0;
    const quint32 fields = reduceParticleFields(allParticleFields, options.particleMask);
    f.i32(rows);
    f.i32(fields); // EParticleField
    if (rows != 0) {
        const bool deflated = compressArrays() && rows >= leastDeflatedRows;
        f.flag8(deflated);
        f.group(deflated, rows, [&](CArrayGroupWriter& arrays) { rowsForm(arrays, fields, type); });
    }
    if ((options.particleMask & eParticleProperties) != 0)
        type.customProperties.write(*this);
    else
        writeNoCustomProperties(f);
}

void CDemReader::readParticleTypes(CParticleTypes& types)
{
    CInForm f = in();
    f.marker(particleTypesMarker);
    qint32 maxId = 0;
    f.i32(maxId); // negative in some decks: counted anew
    const quint32 count = f.count("particle type", leastTypeBytes);
    types.clear();
    for (quint32 i = 0; i < count; ++i)
        types.append().read(*this);
    types.settle(maxId, NLogTitle::legacyRead);
}

void CDemWriter::writeParticleTypes(const CParticleTypes& types)
{
    COutForm f = out();
    f.marker(particleTypesMarker);
    f.i32(types.maxId); // negative in some decks: counted anew
    f.length("particle type", leastTypeBytes, types.types);
    for (const auto& type : types.types)
        type->write(*this);
}

} // namespace NBrenmark
