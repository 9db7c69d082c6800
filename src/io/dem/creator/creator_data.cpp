// The root of a creator block.
#include "model/creator_data.h"

#include "core/log.h"
#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"
#include "legacy/creator_upgrades.h"
#include "legacy/particle_prototypes.h"

#include <optional>

namespace NBrenmark {

/// A unique id of 16 bytes, and two numbers of one kind of damping.
static void dropAfterDamping(CInForm& f, qint32 kind)
{
    constexpr qint32 kindWithNumbers = 2; // the only kind that stores numbers of its own
    f.dropF64(below(2, 4, 16));           // first half of the id
    f.dropF64(below(2, 4, 16));           // second half of the id
    if (kind != kindWithNumbers)
        return;
    f.dropF64();
    f.dropF64();
}

/// Title, damping and description, with what was between them once.
template <class TForm, class TCreator>
static void titleForm(TForm& f, TCreator& creator)
{
    constexpr qint32 writtenWord = 3; // dropped by a reader; its meaning is lost
    f.text(creator.title);
    if constexpr (TForm::isReading) {
        qint32 kind = 0;
        f.i32(kind, below(2, 4, 19), 0); // of damping
        f.dropI32();
        f.f64(creator.damping); // factor
        dropAfterDamping(f, kind);
    }
    else {
        f.dropI32(writtenWord);
        f.f64(creator.damping); // factor
    }
    f.text(creator.description, from(2, 4, 8), QString());
}

template <class TForm, class TCreator>
static void limitsForm(TForm& f, TCreator& creator)
{
    f.i32(creator.velocityRestricted, gateLimits, 0);        // not 0: limited
    f.f64(creator.velocityLimit, gateLimits, 0.0);           // m/s
    f.i32(creator.angularVelocityRestricted, gateLimits, 0); // not 0: limited
    f.f64(creator.angularVelocityLimit, gateLimits, 0.0);    // rad/s
}

/// Whether charges are stored beside the particles of old timesteps. From 22.0.0 the flag keeps its value.
static void readStreamFlag(CInForm& f, CCreatorData& creator)
{
    if (!f.stores(below(22, 0, 0)))
        return;
    qint32 stored = 0;
    f.i32(stored, gateStreamFlag, 0);
    creator.legacyStreamFlag = stored == 1; // any other number means no
    f.stream.options.legacyCreatorFlag = creator.legacyStreamFlag;
}

/// All that is stored.
static void readModel(CDemCreatorDataReader& reader, CInForm& f, CCreatorData& creator)
{
    reader.readFileVersionInfo(creator);
    readStreamFlag(f, creator);
    f.point(creator.gravity); // m/s^2
    creator.domain.read(reader);
    if (f.stores(gatePhysicsInFront))
        creator.physicsModels.read(reader);
    if (f.stores(gateParticleTypes))
        creator.particleTypes.read(reader);
    else {
        NLegacySupport::CParticlePrototypeMap prototypes;
        reader.readParticlePrototypeList(prototypes);
        NLegacySupport::fillFromPrototypes(creator.particleTypes, prototypes);
        creator.physicsModels.read(reader);
    }
    if (f.since(2, 4, 39)) { // before, no material is stored
        creator.materials.read(reader);
        creator.interactions.read(reader);
    }
    if (f.stores(gateGeometryInCreator))
        creator.geometryGroups.read(reader);
    creator.settle(NLogTitle::legacyRead);
    titleForm(f, creator);
    limitsForm(f, creator);
    f.stream.checkStatus("creator data");
}

void CDemCreatorDataReader::readCreatorData(CCreatorData& creator)
{
    CInForm f = in();
    {
        std::optional<CLogSilence> silence;
        if (stream->options.isReadAgain)
            silence.emplace();
        readModel(*this, f, creator);
    }
    // What belongs to walls waits for them, where they come with a timestep.
    creator.upgradesPending = !f.stores(gateGeometryInCreator) || stream->options.upgradeWithGeometry;
    if (stream->options.upgradeOldModels && !creator.upgradesPending)
        NLegacySupport::upgradeCreatorData(creator, stream->fileVersion(), stream->options.upgrades);
}

void CDemCreatorDataWriter::writeCreatorData(CCreatorData& creator)
{
    writeFileVersionInfo(creator);
    COutForm f = out();
    f.point(creator.gravity); // m/s^2
    creator.domain.write(*this);
    creator.physicsModels.write(*this);
    creator.particleTypes.write(*this);
    creator.materials.write(*this);
    creator.interactions.write(*this);
    creator.geometryGroups.write(*this);
    titleForm(f, creator);
    limitsForm(f, creator);
    stream->checkStatus("creator data");
}

} // namespace NBrenmark
