// How far particle factories have come: counts and accounts, by the names of factories and particle types.

#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"

#include "core/log.h"
#include "core/shortened.h"
#include "io/hdf5/link_names.h"
#include "model/factories/dynamic_particle_factory.h"
#include "model/factories/factory_angular_velocity.h"
#include "model/factories/factory_orientation.h"
#include "model/factories/factory_position.h"
#include "model/factories/factory_size.h"
#include "model/factories/factory_type.h"
#include "model/factories/factory_velocity.h"
#include "model/factories/particle_factory_list.h"
#include "model/factories/static_particle_factory.h"

#include <set>
#include <stdexcept>

namespace NBrenmark {

// ---------------------------------------------------------------- accounts

template <class TForm, class TAccounting>
static void accountingForm(TForm& f, TAccounting& accounting)
{
    f.attribute("mass created", accounting.massCreated);                           // kg
    f.attribute("mass remainder", accounting.massRemainder);                       // kg
    f.attribute("mass created since rate change", accounting.massSinceRateChange); // kg
}

void CHdf5TimestepDataReader::readFactoryAccounting(CFactoryAccounting& accounting)
{
    accountingForm(in(), accounting);
}

/// A deck whose time is set anew begins with empty accounts.
void CHdf5TimestepDataWriter::writeFactoryAccounting(const CFactoryAccounting& accounting)
{
    const CFactoryAccounting empty;
    accountingForm(out(), options.overrideTime ? empty : accounting);
}

// ---------------------------------------------------------------- what all factories have

/// \param visit  reads or writes a parameter
/// \param sizes  reads or writes those of the particle types
/// \param account  reads or writes the account
template <class TForm, class TFactory, class TVisit, class TSizes>
static void factoryForm(TForm& f, TFactory& factory, TVisit&& visit, TSizes&& sizes)
{
    f.signedAttribute("creation count", factory.creationCount); // particles so far
    f.group("FactVelocity/", [&] { visit(factory.velocity.get()); });
    f.group("FactSize/", [&] { sizes(); });
    f.group("FactOrientation/", [&] { visit(factory.orientation.get()); });
    f.group("FactAngVel/", [&] { visit(factory.angVel.get()); });
    f.group("FactType/", [&] { visit(factory.type.get()); });
    // The kinds of lattices have no slots here: the state is that of any lattice.
    f.group("FactPosition/", [&] {
        if (auto* const lattice = dynamic_cast<C3DLattice*>(factory.position.get()))
            visit.lattice(*lattice);
        else
            visit(factory.position.get());
    });
    f.group("Accounting/", [&] { visit(&factory.accounting); });
    f.fixedRows("Counters/", factory.counters); // the solver's, kept as they are
}

namespace {

struct SReadPart
{
    CHdf5TimestepDataReader& reader;

    template <class TPart>
    void operator()(TPart* part) const
    {
        if (part != nullptr)
            part->read(reader);
    }
    void lattice(C3DLattice& lattice) const { reader.read3DLattice(lattice); }
};

struct SWritePart
{
    CHdf5TimestepDataWriter& writer;

    template <class TPart>
    void operator()(TPart* part) const
    {
        if (part != nullptr)
            part->write(writer);
    }
    void lattice(const C3DLattice& lattice) const { writer.write3DLattice(lattice); }
};

} // namespace

void CHdf5TimestepDataReader::readParticleFactory(CParticleFactory& factory)
{
    const SReadPart part{*this};
    factoryForm(in(), factory, part, [&] {
        size_t found = 0;
        in().children([&](const QString& typeName) {
            const auto size = factory.sizes.find(typeName);
            if (size == factory.sizes.end())
                throw std::out_of_range("invalid map<K, T> key");
            part(size->second.get());
            ++found;
        });
        if (options.examine && found < factory.sizes.size())
            report(eDefaulted, NLogTitle::hdf5Read,
                   "The particle factory \"" + shortened(factory.name) + "\" lacks size distributions (" +
                       std::to_string(factory.sizes.size() - found) + "): they remain as the model has them.",
                   factory.sizes.size() - found, shortened(factory.name));
    });
}

void CHdf5TimestepDataWriter::writeParticleFactory(const CParticleFactory& factory)
{
    const SWritePart part{*this};
    factoryForm(out(), factory, part, [&] {
        CLinkNames names("particle type with a size", "factory \"" + factory.name.toStdString() + "\"");
        for (const auto& entry : factory.sizes)
            out().group(names.next(entry.first), [&] { part(entry.second.get()); });
    });
}

// ---------------------------------------------------------------- the two kinds

static const char* const createdName = "created since rate change";

void CHdf5TimestepDataReader::readDynamicParticleFactory(CDynamicParticleFactory& factory)
{
    in().signedAttribute(createdName, factory.createdSinceRateChange); // particles
    factory.typeAccounting.clear();                                    // those of another timestep
    in().group("TypeAccounting/",
               [&] { in().children([&](const QString& typeName) { factory.typeAccounting[typeName].read(*this); }); });
}

void CHdf5TimestepDataWriter::writeDynamicParticleFactory(const CDynamicParticleFactory& factory)
{
    out().signedAttribute(createdName, factory.createdSinceRateChange); // particles
    out().group("TypeAccounting/", [&] {
        CLinkNames names("particle type with an account", "factory \"" + factory.name.toStdString() + "\"");
        for (const auto& entry : factory.typeAccounting)
            out().group(names.next(entry.first), [&] { entry.second.write(*this); });
    });
}

template <class TForm, class TFactory>
static void staticForm(TForm& f, TFactory& factory)
{
    f.attribute("completed", factory.completed); // it has filled its shape
}

void CHdf5TimestepDataReader::readStaticParticleFactory(CStaticParticleFactory& factory) { staticForm(in(), factory); }
void CHdf5TimestepDataWriter::writeStaticParticleFactory(const CStaticParticleFactory& factory)
{
    staticForm(out(), factory);
}

// ---------------------------------------------------------------- all factories of a group

void CHdf5TimestepDataReader::readParticleFactoryList(CParticleFactoryList& list)
{
    std::set<const CParticleFactory*> found;
    in().group("Factories/", [&] {
        in().children([&](const QString& name) {
            CParticleFactory* const factory = list.find(name);
            found.insert(factory);
            if (factory != nullptr)
                factory->read(*this);
            else
                report(eLost, NLogTitle::hdf5Read,
                       "The state of the particle factory \"" + shortened(name) +
                           "\" is skipped: the model has no such factory.",
                       1, shortened(name));
        });
        for (const std::unique_ptr<CParticleFactory>& factory : list.factories)
            if (options.examine && found.count(factory.get()) == 0)
                report(eDefaulted, NLogTitle::hdf5Read,
                       "The particle factory \"" + shortened(factory->name) + "\" has no state: it is as in the model.",
                       1, shortened(factory->name));
    });
}

void CHdf5TimestepDataWriter::writeParticleFactoryList(const CParticleFactoryList& list)
{
    out().group("Factories/", [&] {
        CLinkNames names("particle factory", "geometry group \"" + list.sectionName.toStdString() + "\"");
        for (const std::unique_ptr<CParticleFactory>& factory : list.factories)
            out().group(names.next(factory->name), [&] { factory->write(*this); });
    });
}

} // namespace NBrenmark
