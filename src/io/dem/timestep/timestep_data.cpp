// The root of a timestep.
#include "results/timestep_data.h"

#include "core/log.h"
#include "core/plain_file.h"
#include "io/dem/custom_properties.h"
#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"
#include "io/dem/geometry_forms.h"
#include "io/dem/repeated_names.h"
#include "io/dem/version_stamp.h"
#include "legacy/creator_upgrades.h"
#include "legacy/old_collisions.h"
#include "legacy/old_contacts.h"
#include "legacy/old_pair_conversion.h"
#include "legacy/particle_prototypes.h"
#include "model/creator_data.h"

#include <QDate>
#include <QFileDevice>

namespace NBrenmark {

static constexpr qint64 leastRemovedBytes = 4 + 4; // an empty name and a number

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
        if (timestep.removedParticles.contains(typeName))
            reportRepeated("count of removed particles", typeName);
        f.i32(timestep.removedParticles[typeName]); // particles so far
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

/// From 20.0.0 to 20.0.6 nothing uses them.
static void dropOldCollisions(CDemTimestepDataReader& reader)
{
    NLegacySupport::CActiveCollisions dropped;
    reader.readLegacyActiveCollisions(dropped);
    const std::size_t count = dropped.surfaceSurface.size() + dropped.surfaceGeometry.size();
    if (count > 0)
        report(eNotCarried, NLogTitle::legacyRead,
               counted(static_cast<qint64>(count), "collision") + " dropped, which versions below 20.0.7 don't use",
               count);
}

/// Puts the geometry of a timestep in the place of the model's, which is then a model of its own.
static void readWholeGeometry(CDemDataStream& stream, CCreatorData& creator)
{
    CDemCreatorDataReader reader(stream);
    creator.geometryGroups.read(reader);
    creator.settle(NLogTitle::legacyRead);
    creator.geometryReplaced = true;
    creator.modified = true;
}

/// The current family stores the list with the model: one that differs from that of the timestep before makes another
/// model.
static void readPluginFactories(CDemTimestepDataReader& reader, CCreatorData& creator)
{
    CPluginParticleFactoryList& factories = creator.pluginFactories;
    const bool isFollowing = factories.isRead;
    const std::vector<SPluginFactoryEntry> before = factories.entries();
    factories.read(reader);
    if (isFollowing && !(factories.entries() == before))
        creator.modified = true;
}

/// What waited for the walls of a timestep.
static void runPendingUpgrades(const SSaveOptions& options, CCreatorData& creator)
{
    if (creator.upgradesPending && options.upgradeOldModels)
        NLegacySupport::upgradeCreatorData(creator, creator.fileVersion, options.upgrades);
    creator.upgradesPending = false;
}

bool wholeGeometryFollows(CDemDataStream& stream)
{
    const qint64 start = stream.position();
    CDemDataStream peek(stream.device(), stream.options);
    bool whole = false;
    try {
        CInForm f(peek);
        SDemStamp stamp;
        readStamp(f, stamp);
        if (!f.stores(gateMasks))
            whole = storesWholeGeometry(f);
    }
    catch (const std::exception&) { // the read itself meets it again, and says so
    }
    seekTo(*stream.device(), start);
    return whole;
}

/// A record a particle becomes a row of its type.
static void readParticles(CDemTimestepDataReader& reader, CTimestepData& timestep)
{
    NLegacySupport::CParticlePrototypeRecords records;
    reader.readLegacyParticlePrototypes(records);
    NLegacySupport::fillFromRecords(timestep.particleTypes, records, timestep.creatorData);
}

/// What upgrades did to the types of the model is done to those of the timestep, so that one deck has one definition of
/// each.
static void followUpgrades(CTimestepData& timestep)
{
    const CCreatorData& creator = timestep.creatorData;
    CParticleTypes& types = timestep.particleTypes;
    for (const auto& [name, stored] : creator.materialsBefore) {
        const CParticleType* const definition = creator.particleTypes.find(name);
        if (definition == nullptr)
            continue;
        for (const auto& type : types.types)
            if (type->displayName == name && type->materialName == stored)
                type->materialName = definition->materialName;
        if (stored.isNull() && types.find(name) == nullptr)
            types.append().copyDefinition(*definition);
    }
}

/// Contacts, collisions and bonds.
static void readPairs(CDemTimestepDataReader& reader, CInForm& f, CTimestepData& timestep)
{
    if (f.stores(from(20, 0, 2)))
        timestep.contacts.read(reader);
    if (f.stores(below(20, 0, 7)))
        dropOldCollisions(reader);
    if (f.stores(gateContactBlocks))
        timestep.collisions.read(reader);
    if (f.stores(from(21, 0, 2)))
        timestep.bonds.read(reader);
}

/// The same, where particles and triangles are named by their ids.
static void readOldPairs(CDemTimestepDataReader& reader, CInForm& f, CTimestepData& timestep)
{
    using namespace NLegacySupport;
    const CParticleTypes& types = timestep.particleTypes;
    const GeometryGroups& groups = timestep.creatorData.geometryGroups;
    {
        SLegacyContactLists contacts;
        reader.readLegacyContacts(contacts);
        linkLegacyRows(timestep.contacts, contacts, types, groups);
    }
    CActiveCollisions collisions;
    reader.readLegacyActiveCollisions(collisions);
    linkLegacyRows(timestep.collisions, timestep.contacts, collisions, types, groups);
    if (f.stores(from(2, 4, 41).below(2, 4, 57))) {
        SLegacyContactLists dropped; // a second copy that nothing reads
        reader.readLegacyContacts(dropped);
    }
    if (f.stores(from(13, 0, 9))) {
        CBondList bonds;
        reader.readLegacyBonds(bonds);
        linkLegacyRows(timestep.bonds, bonds, types);
    }
}

static void readEnergies(CDemTimestepDataReader& reader, CInForm& f, CTimestepData& timestep)
{
    const SGate gateBalance = from(2, 4, 32);
    CSystemEnergy& energy = timestep.systemEnergy;
    if (f.stores(gateBalance))
        energy.read(reader);
    else {
        f.f64(energy.total);                          // J
        f.f64(energy.potential, from(2, 4, 30), 0.0); // J
        f.f64(energy.kinetic, from(2, 4, 30), 0.0);   // J
    }
    f.dropI32(0, from(2, 4, 36).below(2, 4, 38));
    if (f.stores(from(2, 4, 38)))
        readRemovedParticles(f, timestep);
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
    if (wholeGeometry)
        readWholeGeometry(*stream, creator);
    runPendingUpgrades(stream->options, creator);
    if (!wholeGeometry)
        creator.geometryGroups.read(*this);

    if (f.stores(gateParticleTypes))
        timestep.particleTypes.read(*this);
    else
        readParticles(*this, timestep);
    followUpgrades(timestep);
    if (stream->options.extent == eReadParticles)
        return;

    if (f.stores(gateParticleTypes))
        readPairs(*this, f, timestep);
    else
        readOldPairs(*this, f, timestep);
    if (f.stores(from(2, 4, 1)))
        readPluginFactories(*this, creator);
    if (f.stores(from(2, 4, 30).below(2, 4, 32)))
        timestep.systemEnergy.cumulative.read(*this);

    f.f64(timestep.time); // s, simulated
    if (!wholeGeometry && !f.since(20, 0, 21)) {
        for (CGeometryGroup* group : creator.geometryGroups.groups())
            if (group != nullptr)
                group->time = timestep.time;
    }
    runForm(f, timestep);
    readEnergies(*this, f, timestep);
    const CPhysicsModels& physics = creator.physicsModels;
    if (f.stores(gateChargeRows) && (physics.hasElectrostatics() || physics.hasTribocharging()))
        timestep.rebuildChargeProperties();
    timestep.simulationProperties.resetToInitialValues(1);
    if (f.since(23, 0, 0))
        timestep.simulationProperties.read(*this);
    stream->checkStatus("timestep data");
    timestep.settle(NLogTitle::legacyRead);
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
