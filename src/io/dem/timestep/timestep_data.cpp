// The root of a timestep.
#include "results/timestep_data.h"

#include "core/log.h"
#include "io/dem/custom_properties.h"
#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"
#include "io/dem/geometry_forms.h"
#include "model/creator_data.h"

#include <QDate>
#include <QFileDevice>

namespace NBrenmark {

static constexpr qint64 leastRemovedBytes = 4 + 4;

/// What the timestep holds.
static void readMasks(CInForm& f, CTimestepData& timestep)
{
    f.flag(timestep.isFull, gateMasks, true);
    f.i32(timestep.timestepMask, gateMasks, defaultTimestepMask); // ETimestepMask
    f.i32(timestep.particleMask, gateMasks, defaultParticleMask); // EParticleMask
    f.i32(timestep.geometryMask, gateMasks, defaultGeometryMask); // EGeometryMask
    f.stream.options.timestepMask = timestep.timestepMask;
}

static void writeMasks(COutForm& f, CTimestepData& timestep)
{
    const SSaveOptions& options = f.stream.options;
    timestep.isFull = options.fullSave;
    timestep.timestepMask = options.timestepMask;
    timestep.particleMask = options.particleMask;
    timestep.geometryMask = options.geometryMask;
    f.flag(timestep.isFull);
    f.i32(timestep.timestepMask); // ETimestepMask
    f.i32(timestep.particleMask); // EParticleMask
    f.i32(timestep.geometryMask); // EGeometryMask
}

/// Geometry in the form of the creator block, where an old timestep says so.
static bool storesWholeGeometry(CInForm& f)
{
    bool whole = false;
    f.flag(whole, gateGeometryInCreator.below(22, 0, 0), f.stores(below(20, 0, 10)));
    return whole;
}

static void readRemovedParticles(CInForm& f, CTimestepData& timestep)
{
    timestep.removedParticles.clear();
    const quint32 count = f.count("count of removed particle", leastRemovedBytes);
    for (quint32 i = 0; i < count; ++i) {
        QString typeName;
        f.text(typeName);
        f.i32(timestep.removedParticles[typeName]);
    }
}

/// From the greatest name to the smallest, as every deck has them.
static void writeRemovedParticles(COutForm& f, const CTimestepData& timestep)
{
    f.length("count of removed particle", leastRemovedBytes, timestep.removedParticles);
    for (auto i = timestep.removedParticles.constEnd(); i != timestep.removedParticles.constBegin();) {
        --i;
        f.text(i.key());
        f.i32(i.value());
    }
}

template <class TForm, class TTimestep>
static void runForm(TForm& f, TTimestep& timestep)
{
    f.f64(timestep.elapsedTime); // s, real
    f.i32(timestep.runNumber);
    f.text(timestep.date); // dd/MM/yy, of the writing
}

/// Rows are positions: those that point at nothing are released.
static void checkContacts(CTimestepData& timestep)
{
    if (const quint32 lost = timestep.removeDanglingContacts(); lost > 0)
        report(eLost, NLogTitle::legacyRead, counted(lost, "contact") + " released: a particle or triangle is missing",
               lost);
}

static void matchBonds(CTimestepData& timestep)
{
    if (const SUnmatchedBonds unmatched = timestep.matchBondParameters(); unmatched.any())
        report(eRepaired, NLogTitle::legacyRead, unmatched.text() + ".", unmatched.total());
}

void CDemTimestepDataReader::readTimestepData(CTimestepData& timestep)
{
    CCreatorData& creator = timestep.creatorData;
    stream->options.legacyCreatorFlag = creator.legacyStreamFlag;
    readFileVersionInfo(timestep);
    CInForm f = in();
    if (f.stores(gateMasks))
        f.marker(timestepMarker);
    readMasks(f, timestep);

    const bool wholeGeometry = storesWholeGeometry(f);
    if (wholeGeometry) {
        CDemCreatorDataReader creatorReader(*stream);
        creator.geometryGroups.read(creatorReader);
        linkFactories(creator);
    }
    else
        creator.geometryGroups.read(*this);

    timestep.particleTypes.domain = &creator.domain;
    timestep.particleTypes.read(*this);
    for (const auto& type : timestep.particleTypes.types)
        type->gravity = creator.gravity;

    if (f.since(20, 0, 2))
        timestep.contacts.read(*this);
    checkContacts(timestep);
    if (f.stores(gateContactBlocks))
        timestep.collisions.read(*this);
    if (f.since(21, 0, 2))
        timestep.bonds.read(*this);
    creator.pluginFactories.read(*this);

    f.f64(timestep.time); // s, simulated
    if (!wholeGeometry && !f.since(20, 0, 21)) {
        for (CGeometryGroup* group : creator.geometryGroups.groups())
            if (group != nullptr)
                group->time = timestep.time;
    }
    matchBonds(timestep); // now that the time is there, at which a bond breaks
    runForm(f, timestep);
    timestep.systemEnergy.read(*this);
    readRemovedParticles(f, timestep);
    const CPhysicsModels& physics = creator.physicsModels;
    if (f.stores(gateChargeRows) && (physics.hasElectrostatics() || physics.hasTribocharging()))
        timestep.rebuildChargeProperties();
    timestep.simulationProperties.resetToInitialValues(1);
    if (f.since(23, 0, 0))
        timestep.simulationProperties.read(*this);
    stream->checkStatus("timestep data");
}

/// The time of the timestep, or once the one given in its place.
static void writeTime(COutForm& f, const CTimestepData& timestep)
{
    SSaveOptions& options = f.stream.options;
    f.f64(options.overrideTime ? options.timeOverride : timestep.time); // s, simulated
    options.overrideTime = false;
    options.timeOverride = 0.0;
}

void CDemTimestepDataWriter::writeTimestepData(CTimestepData& timestep)
{
    writeFileVersionInfo(timestep);
    if (auto* file = qobject_cast<QFileDevice*>(stream->device()); file != nullptr && !file->flush())
        stream->setStatus(QDataStream::WriteFailed);
    stream->checkStatus("timestep data");

    CCreatorData& creator = timestep.creatorData;
    COutForm f = out();
    f.marker(timestepMarker);
    writeMasks(f, timestep);
    creator.geometryGroups.write(*this);
    timestep.particleTypes.write(*this);
    timestep.contacts.write(*this);
    timestep.collisions.write(*this);
    timestep.bonds.write(*this);
    creator.pluginFactories.write(*this);

    writeTime(f, timestep);
    timestep.date = QDate::currentDate().toString(QStringLiteral("dd/MM/yy"));
    runForm(f, timestep);
    timestep.systemEnergy.write(*this);
    writeRemovedParticles(f, timestep);
    if (stream->options.writeCustomProperties)
        timestep.simulationProperties.write(*this);
    else
        writeNoCustomProperties(f);
    stream->checkStatus("timestep data");
}

} // namespace NBrenmark
