// Particle factories: the lists of the geometry groups, what all factories have in common, and the
// two kinds.
#include "core/log.h"
#include "core/shortened.h"
#include "core/stop_flag.h"
#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"
#include "io/dem/geometry_forms.h"
#include "model/creator_data.h"
#include "model/factories/dynamic_particle_factory.h"
#include "model/factories/factory_angular_velocity.h"
#include "model/factories/factory_custom_property.h"
#include "model/factories/factory_orientation.h"
#include "model/factories/factory_position.h"
#include "model/factories/factory_size.h"
#include "model/factories/factory_type.h"
#include "model/factories/factory_velocity.h"
#include "model/factories/particle_factory_list.h"
#include "model/factories/static_particle_factory.h"

namespace NBrenmark {

// The least that an element takes, with empty texts.
static constexpr qint64 leastFactoryBytes = 2 * 4; // its kind and its name
static constexpr qint64 leastSizeBytes = 2 * 4;    // particle type and kind
static constexpr qint64 leastCustomBytes = 2 * 4;  // property and kind

static void report(EEffect effect, const CParticleFactory& factory, const std::string& what)
{
    const std::string name = shortened(factory.name);
    report(effect, NLogTitle::legacyRead, "factory \"" + name + "\": " + what, 1, name);
}

// ---------------------------------------------------------------- the charge of old files

void CDemCreatorDataReader::readParticleFactoryElectrostatic(NLegacySupport::CParticleFactoryElectrostatic& charge)
{
    CInForm f = in();
    f.text(charge.kind); // says how many numbers follow; none after another word
    if (charge.kind == CFixedValueCustomPropertyFactoryParam::word)
        f.f64(charge.fixedValue); // C
    else if (charge.kind == CRandomValueCustomPropertyFactoryParam::word) {
        f.f64(charge.randomMin); // C
        f.f64(charge.randomMax); // C
    }
    else if (charge.kind == CNormalDistCustomPropertyFactoryParam::word) {
        f.f64(charge.normalMean);      // C
        f.f64(charge.normalDeviation); // C
    }
}

// ---------------------------------------------------------------- parameters

/// A parameter is a word and what an object of that kind stores. A word that names no kind has no data.
template <class TParam>
static void writeParam(CDemCreatorDataWriter& writer, COutForm& f, const std::unique_ptr<TParam>& param)
{
    f.text(param != nullptr ? param->kindWord() : QString());
    if (param != nullptr)
        param->write(writer);
}

template <class TParam>
static void readMade(CDemCreatorDataReader& reader, const CParticleFactory& factory, const char* what,
                     const QString& word, const std::unique_ptr<TParam>& param)
{
    if (param != nullptr)
        param->read(reader);
    else if (!word.isEmpty())
        report(eLost, factory, std::string(what) + " of the unknown kind \"" + shortened(word) + "\" skipped");
}

/// \param setKind  the factory's operation that makes the parameter
template <class TParam, class TSetKind>
static void readParam(CDemCreatorDataReader& reader, CInForm& f, const CParticleFactory& factory, const char* what,
                      const std::unique_ptr<TParam>& param, TSetKind&& setKind)
{
    QString word;
    f.text(word);
    setKind(word);
    readMade(reader, factory, what, word, param);
}

/// From 30.0.0 each particle type has a size of its own.
static void readSizes(CDemCreatorDataReader& reader, CInForm& f, CParticleFactory& factory)
{
    const quint32 count = f.count("size", leastSizeBytes);
    for (quint32 i = 0; i < count; ++i) {
        QString typeName;
        QString word;
        f.text(typeName);
        f.text(word);
        factory.setSizeKind(typeName, word);
        readMade(reader, factory, "size", word, factory.sizes[typeName]);
    }
}

/// Before, one size is that of all types, whose names follow later.
static std::unique_ptr<IFactorySize> readSharedSize(CDemCreatorDataReader& reader, CInForm& f,
                                                    const CParticleFactory& factory)
{
    QString word;
    f.text(word);
    std::unique_ptr<IFactorySize> size = CFactorySizeRegistry::instance().create(word);
    readMade(reader, factory, "size", word, size);
    return size;
}

static void shareSize(CParticleFactory& factory, const IFactorySize& size)
{
    if (factory.type == nullptr || factory.type->typeNames().empty()) {
        report(eLost, factory, "names no particle type; its size is dropped");
        return;
    }
    for (const QString& typeName : factory.type->typeNames())
        factory.setSize(typeName, size.clone());
}

// ---------------------------------------------------------------- custom properties

/// The parameter of an entry: that of the property, or one that only takes the entry's bytes.
static IFactoryCustomPropertyParam* paramOf(CParticleFactory& factory, const CCustomPropertyMetaData* property,
                                            const QString& word, std::unique_ptr<IFactoryCustomPropertyParam>& dropped)
{
    if (property != nullptr && factory.setCustomPropertyKind(property, word))
        return factory.customParams[property->id].get();
    dropped = CFactoryCustomPropertyRegistry::instance().create(word);
    return dropped.get();
}

/// A property that isn't defined ends the list: what follows is consumed, but not kept.
static void readCustomParams(CDemCreatorDataReader& reader, CInForm& f, CParticleFactory& factory)
{
    const quint32 count = f.count("custom parameter", leastCustomBytes);
    bool ended = false;
    for (quint32 i = 0; i < count; ++i) {
        QString propertyName;
        QString word;
        f.text(propertyName);
        f.text(word);
        const CCustomPropertyMetaData* property = nullptr;
        if (!ended && factory.customProperties != nullptr)
            property = factory.customProperties->property(propertyName.toStdString());
        if (property == nullptr && !ended)
            report(eLost, factory,
                   "custom parameters from the one of the undefined property \"" + shortened(propertyName) +
                       "\" on dropped");
        ended |= property == nullptr;
        // What was called so before 25.0.0 is a fixed value, and is stored as one.
        if (word == CInitialValueCustomPropertyFactoryParam::word && !f.since(25, 0, 0))
            word = CFixedValueCustomPropertyFactoryParam::word;
        std::unique_ptr<IFactoryCustomPropertyParam> dropped;
        IFactoryCustomPropertyParam* const param = paramOf(factory, property, word, dropped);
        if (param != nullptr)
            param->read(reader);
        else
            report(eLost, factory,
                   "parameter of the property \"" + shortened(propertyName) + "\" of the unknown kind \"" +
                       shortened(word) + "\" skipped");
    }
}

static void writeCustomParams(CDemCreatorDataWriter& writer, COutForm& f, const CParticleFactory& factory)
{
    std::vector<const IFactoryCustomPropertyParam*> stored;
    for (const auto& [id, param] : factory.customParams)
        if (param != nullptr && param->property() != nullptr)
            stored.push_back(param.get());
    f.length("custom parameter", leastCustomBytes, stored);
    for (const IFactoryCustomPropertyParam* param : stored) {
        f.text(param->property()->name);
        f.text(param->kindWord());
        param->write(writer);
    }
}

// ---------------------------------------------------------------- a factory

template <class TForm, class TFactory>
static void countsForm(TForm& f, TFactory& factory)
{
    f.i32(factory.creationCount);                    // particles so far
    f.i32(factory.maxAttempts, from(2, 4, 27), 20u); // to place one particle
}

void CDemCreatorDataReader::readParticleFactory(CParticleFactory& factory)
{
    CInForm f = in();
    countsForm(f, factory);
    if (factory.name.isEmpty())
        factory.name = QStringLiteral("Unnamed Factory");
    const auto read = [&](const char* what, const auto& param, auto&& setKind) {
        readParam(*this, f, factory, what, param, setKind);
    };
    read("velocity", factory.velocity, [&](const QString& word) { factory.setVelocityKind(word); });
    std::unique_ptr<IFactorySize> sharedSize;
    if (f.since(30, 0, 0))
        readSizes(*this, f, factory);
    else
        sharedSize = readSharedSize(*this, f, factory);
    read("orientation", factory.orientation, [&](const QString& word) { factory.setOrientationKind(word); });
    read("angular velocity", factory.angVel, [&](const QString& word) { factory.setAngVelKind(word); });
    read("type", factory.type, [&](const QString& word) { factory.setTypeKind(word, nullptr); });
    if (sharedSize != nullptr)
        shareSize(factory, *sharedSize);
    read("position", factory.position, [&](const QString& word) { factory.setPositionKind(word); });
    if (f.stores(gateFactoryCharge))
        factory.electrostatic.read(*this);
    if (f.stores(gateFactoryProperties))
        readCustomParams(*this, f, factory);
    if (f.stores(gateFactoryCharge) && factory.customProperties != nullptr)
        factory.electrostatic.applyTo(*factory.customProperties, factory.customParams);
    factoryCountersForm(f, factory);
}

void CDemCreatorDataWriter::writeParticleFactory(const CParticleFactory& factory)
{
    COutForm f = out();
    countsForm(f, factory);
    writeParam(*this, f, factory.velocity);
    f.length("size", leastSizeBytes, factory.sizes);
    for (const auto& [typeName, size] : factory.sizes) {
        f.text(typeName);
        writeParam(*this, f, size);
    }
    writeParam(*this, f, factory.orientation);
    writeParam(*this, f, factory.angVel);
    writeParam(*this, f, factory.type);
    writeParam(*this, f, factory.position);
    writeCustomParams(*this, f, factory);
    factoryCountersForm(f, factory);
}

template <class TForm, class TFactory>
static void dynamicForm(TForm&& f, TFactory& factory)
{
    const SGate gateMass = from(2, 4, 52);
    f.i32(factory.numToCreate);                                                      // particles
    f.flag(factory.unlimited);                                                       // never complete
    f.f64(factory.creationRate);                                                     // 1/s, or kg/s of a rate of mass
    f.f64(factory.creationTime);                                                     // s
    f.i32(factory.maxAttempts, from(2, 4, 20).below(2, 4, 27), factory.maxAttempts); // to place one particle
    f.f64(factory.massToCreate, gateMass, 100.0);                                    // kg
    f.i32(factory.createdSinceRateChange, gateMass, 0u);                             // particles
    f.flag(factory.massCreation, from(22, 0, 1), false);                             // the goal is a mass
    f.flag(factory.massGeneration, from(22, 0, 1), false);                           // the rate is of mass
    f.f64(factory.rateChangeTime, from(22, 0, 2), 0.0);                              // s
}
void CDemCreatorDataReader::readDynamicParticleFactory(CDynamicParticleFactory& factory)
{
    dynamicForm(in(), factory);
    // The definition starts the rate anew, with nothing created by it; the counts so far come with the timestep.
    factory.changeCreationRate(factory.creationRate, factory.rateChangeTime);
}
void CDemCreatorDataWriter::writeDynamicParticleFactory(const CDynamicParticleFactory& factory)
{
    dynamicForm(out(), factory);
}

template <class TForm, class TFactory>
static void staticForm(TForm&& f, TFactory& factory)
{
    f.flag(factory.completed);                           // it has filled its shape
    f.f64(factory.creationTime);                         // s
    f.flag(factory.fillShape, from(2, 4, 50), true);     // as many as fit, whatever the goal
    f.i32(factory.numToCreate, from(2, 4, 50), 1000u);   // particles
    f.flag(factory.massCreation, from(22, 0, 2), false); // the goal is a mass
    f.f64(factory.massToCreate, from(22, 0, 2), 0.0);    // kg
}
void CDemCreatorDataReader::readStaticParticleFactory(CStaticParticleFactory& factory) { staticForm(in(), factory); }
void CDemCreatorDataWriter::writeStaticParticleFactory(const CStaticParticleFactory& factory)
{
    staticForm(out(), factory);
}

// ---------------------------------------------------------------- the list

void CDemCreatorDataReader::readParticleFactoryList(CParticleFactoryList& list)
{
    CInForm f = in();
    list.clear();
    const quint32 count = f.count("particle factory", leastFactoryBytes);
    for (quint32 i = 0; i < count; ++i) {
        QString word;
        QString name;
        f.text(word);
        f.text(name);
        std::unique_ptr<CParticleFactory> factory = createFactory(word, name);
        if (factory == nullptr) {
            report(eLost, NLogTitle::legacyRead,
                   "factory \"" + shortened(name) + "\" of the unknown kind \"" + shortened(word) + "\" skipped", 1,
                   shortened(name));
            continue;
        }
        list.add(std::move(factory)).read(*this);
    }
    leaveIfStopped();
}

void CDemCreatorDataWriter::writeParticleFactoryList(const CParticleFactoryList& list)
{
    COutForm f = out();
    f.length("particle factory", leastFactoryBytes, list.factories);
    for (const auto& factory : list.factories) {
        f.text(factory->typeWord());
        f.text(factory->name);
        factory->write(*this);
    }
}

} // namespace NBrenmark
