// Particle factories in a creator model: a group for each by its name, in it a group for each parameter
// with the word of its kind.

#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"

#include "core/log.h"
#include "core/shortened.h"
#include "core/stop_flag.h"
#include "io/hdf5/link_names.h"
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

static const char* const kindName = "type";

// ---------------------------------------------------------------- parameters

/// A factory that has no such parameter has a group without a word.
template <class TFamily>
static void writeParameter(CHdf5CreatorDataWriter& writer, CHdf5FormWriter& out,
                           const std::unique_ptr<TFamily>& parameter)
{
    if (parameter == nullptr)
        return;
    out.attribute(kindName, parameter->kindWord());
    parameter->write(writer);
}

/// \param parameter  of the factory, where setKind puts one of the kind that it is given
/// An unknown word leaves the parameter that is there.
template <class TFamily, class TSetKind>
static void readParameter(CHdf5CreatorDataReader& reader, CHdf5FormReader& in, const CParticleFactory& factory,
                          const std::unique_ptr<TFamily>& parameter, TSetKind&& setKind)
{
    if (!in.hasAttribute(kindName))
        return;
    QString word;
    in.attribute(kindName, word);
    if (!CKindRegistry<TFamily>::instance().knows(word)) {
        report(eLost, NLogTitle::hdf5Read,
               "A parameter of the particle factory \"" + shortened(factory.name) + "\" is skipped: no kind \"" +
                   shortened(word) + "\" is known.",
               1, shortened(factory.name));
        return;
    }
    setKind(word);
    if (parameter != nullptr)
        parameter->read(reader);
}

static void readCustomParams(CHdf5CreatorDataReader& reader, CHdf5FormReader& in, CParticleFactory& factory)
{
    const hsize_t count = in.childCount();
    for (hsize_t i = 0; i < count; ++i)
        in.group(std::to_string(i), [&] {
            QString kind;
            std::string propertyName;
            if (!in.attribute(kindName, kind) || !in.attribute("name", propertyName))
                return;
            const CCustomPropertyManager* const properties = factory.customProperties;
            const CCustomPropertyMetaData* const property =
                properties != nullptr ? properties->property(propertyName) : nullptr;
            if (property == nullptr || !factory.setCustomPropertyKind(property, kind)) {
                report(eLost, NLogTitle::hdf5Read,
                       "What the particle factory \"" + shortened(factory.name) + "\" gives to the custom property \"" +
                           shortened(propertyName) + "\" is skipped: no such " +
                           (property == nullptr ? "property" : "kind \"" + shortened(kind) + "\"") + " is known.",
                       1, shortened(factory.name));
                return;
            }
            factory.customParams.at(property->id)->read(reader);
        });
}

static void writeCustomParams(CHdf5CreatorDataWriter& writer, CHdf5FormWriter& out, const CParticleFactory& factory)
{
    std::size_t number = 0;
    for (const auto& [id, parameter] : factory.customParams) {
        if (parameter == nullptr || parameter->property() == nullptr)
            continue; // gives nothing to anything
        out.group(std::to_string(number++), [&, &held = parameter] {
            out.attribute(kindName, held->kindWord());
            out.attribute("name", held->property()->name);
            held->write(writer);
        });
    }
}

// ---------------------------------------------------------------- what all factories have

template <class TForm, class TFactory>
static void countsForm(TForm& f, TFactory& factory)
{
    f.signedAttribute("creation count", factory.creationCount);    // particles so far
    f.signedAttribute("max search attempts", factory.maxAttempts); // to place one particle
}

void CHdf5CreatorDataReader::readParticleFactory(CParticleFactory& factory)
{
    const auto read = [&](const char* group, const auto& parameter, auto&& setKind) {
        in().group(group, [&] { readParameter(*this, in(), factory, parameter, setKind); });
    };
    countsForm(in(), factory);
    read("FactVelocity/", factory.velocity, [&](const QString& word) { factory.setVelocityKind(word); });
    in().group("FactSize/", [&] {
        in().children([&](const QString& typeName) {
            // Timesteps go by the names: a type whose size isn't known is one of them.
            readParameter(*this, in(), factory, factory.sizes[typeName],
                          [&](const QString& word) { factory.setSizeKind(typeName, word); });
        });
    });
    read("FactOrientation/", factory.orientation, [&](const QString& word) { factory.setOrientationKind(word); });
    read("FactAngVel/", factory.angVel, [&](const QString& word) { factory.setAngVelKind(word); });
    read("FactType/", factory.type, [&](const QString& word) { factory.setTypeKind(word, nullptr); });
    // After the type, which it is given.
    read("FactPosition/", factory.position, [&](const QString& word) { factory.setPositionKind(word); });
    in().group("FactCustomParams/", [&] { readCustomParams(*this, in(), factory); });
    in().fixedRows("Counters/", factory.counters); // the solver's, kept as they are
}

void CHdf5CreatorDataWriter::writeParticleFactory(const CParticleFactory& factory)
{
    countsForm(out(), factory);
    out().group("FactVelocity/", [&] { writeParameter(*this, out(), factory.velocity); });
    out().group("FactSize/", [&] {
        CLinkNames names("particle type with a size", "factory \"" + factory.name.toStdString() + "\"");
        for (const auto& [typeName, size] : factory.sizes)
            out().group(names.next(typeName), [&, &held = size] { writeParameter(*this, out(), held); });
    });
    out().group("FactOrientation/", [&] { writeParameter(*this, out(), factory.orientation); });
    out().group("FactAngVel/", [&] { writeParameter(*this, out(), factory.angVel); });
    out().group("FactType/", [&] { writeParameter(*this, out(), factory.type); });
    out().group("FactPosition/", [&] { writeParameter(*this, out(), factory.position); });
    out().group("FactCustomParams/", [&] { writeCustomParams(*this, out(), factory); });
    out().fixedRows("Counters/", factory.counters); // the solver's, kept as they are
}

// ---------------------------------------------------------------- the two kinds

template <class TForm, class TFactory>
static void dynamicForm(TForm& f, TFactory& factory)
{
    f.attribute("unlimited", factory.unlimited);                                    // never complete
    f.attribute("is mass creation", factory.massCreation);                          // the goal is a mass
    f.attribute("is mass generation", factory.massGeneration);                      // the rate is of mass
    f.attribute("creation rate", factory.creationRate);                             // 1/s, or kg/s of a rate of mass
    f.attribute("creation time", factory.creationTime);                             // s
    f.attribute("rate change time", factory.rateChangeTime);                        // s
    f.signedAttribute("created since rate change", factory.createdSinceRateChange); // particles
    f.signedAttribute("num to create", factory.numToCreate);                        // particles
    f.attribute("mass to create", factory.massToCreate);                            // kg
}

void CHdf5CreatorDataReader::readDynamicParticleFactory(CDynamicParticleFactory& factory)
{
    dynamicForm(in(), factory);
    // The definition starts the rate anew, with nothing created by it; the counts so far come with the timestep.
    factory.changeCreationRate(factory.creationRate, factory.rateChangeTime);
}

void CHdf5CreatorDataWriter::writeDynamicParticleFactory(const CDynamicParticleFactory& factory)
{
    dynamicForm(out(), factory);
}

template <class TForm, class TFactory>
static void staticForm(TForm& f, TFactory& factory)
{
    f.attribute("completed", factory.completed);             // it has filled its shape
    f.attribute("fill shape", factory.fillShape);            // as many as fit, whatever the goal
    f.attribute("is mass creation", factory.massCreation);   // the goal is a mass
    f.attribute("creation time", factory.creationTime);      // s
    f.signedAttribute("num to create", factory.numToCreate); // particles
    f.attribute("mass to create", factory.massToCreate);     // kg
}

void CHdf5CreatorDataReader::readStaticParticleFactory(CStaticParticleFactory& factory) { staticForm(in(), factory); }
void CHdf5CreatorDataWriter::writeStaticParticleFactory(const CStaticParticleFactory& factory)
{
    staticForm(out(), factory);
}

// ---------------------------------------------------------------- all factories of a group

void CHdf5CreatorDataReader::readParticleFactoryList(CParticleFactoryList& list)
{
    list.clear();
    in().group("Factories/", [&] {
        in().children([&](const QString& name) {
            QString type;
            if (!in().attribute(kindName, type))
                return;
            std::unique_ptr<CParticleFactory> factory = createFactory(type, name);
            if (factory == nullptr) {
                report(eLost, NLogTitle::hdf5Read,
                       "The particle factory \"" + shortened(name) + "\" is skipped: no factory \"" + shortened(type) +
                           "\" is known.",
                       1, shortened(name));
                return;
            }
            list.add(std::move(factory)).read(*this);
        });
        leaveIfStopped();
    });
}

void CHdf5CreatorDataWriter::writeParticleFactoryList(const CParticleFactoryList& list)
{
    out().group("Factories/", [&] {
        CLinkNames names("particle factory", "geometry group \"" + list.sectionName.toStdString() + "\"");
        for (const std::unique_ptr<CParticleFactory>& factory : list.factories)
            out().group(names.next(factory->name), [&] {
                out().attribute(kindName, factory->typeWord());
                factory->write(*this);
            });
    });
}

} // namespace NBrenmark
