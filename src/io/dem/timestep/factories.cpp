// What changes with time of particle factories. Each follows in place, in the order of its list.
#include "core/plain_file.h"
#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"
#include "io/dem/geometry_forms.h"
#include "model/factories/dynamic_particle_factory.h"
#include "model/factories/factory_angular_velocity.h"
#include "model/factories/factory_orientation.h"
#include "model/factories/factory_position.h"
#include "model/factories/factory_size.h"
#include "model/factories/factory_type.h"
#include "model/factories/factory_velocity.h"
#include "model/factories/particle_factory_list.h"
#include "model/factories/static_particle_factory.h"

#include <QIODevice>
#include <stdexcept>

namespace NBrenmark {

static constexpr qint64 leastSizeBytes = 4;            // the particle type; most sizes have no state
static constexpr qint64 leastAccountBytes = 4 + 3 * 8; // the particle type and its account

// ---------------------------------------------------------------- accounts

static const SGate gateAccounts = from(22, 0, 1); // when goals and rates of mass came

template <class TForm, class TAccount>
static void accountForm(TForm&& f, TAccount& account)
{
    f.f64(account.massCreated, gateAccounts, 0.0);         // kg
    f.f64(account.massRemainder, gateAccounts, 0.0);       // kg
    f.f64(account.massSinceRateChange, gateAccounts, 0.0); // kg
}
void CDemTimestepDataReader::readFactoryAccounting(CFactoryAccounting& account) { accountForm(in(), account); }

/// A deck whose time starts anew starts its accounts anew. The object keeps its own.
void CDemTimestepDataWriter::writeFactoryAccounting(const CFactoryAccounting& account)
{
    const CFactoryAccounting nothing;
    accountForm(out(), stream->options.overrideTime ? nothing : account);
}

// ---------------------------------------------------------------- sizes

/// Below 30.0.0 one size was stored for all types: each of them reads the same bytes.
static void readSharedSize(CDemTimestepDataReader& reader, CInForm& f, CParticleFactory& factory)
{
    const qint64 start = f.stream.position();
    for (const auto& [typeName, size] : factory.sizes) {
        seekTo(*f.stream.device(), start);
        if (size != nullptr)
            size->read(reader);
    }
}

static void readSizes(CDemTimestepDataReader& reader, CInForm& f, CParticleFactory& factory)
{
    const quint32 count = f.count("size", leastSizeBytes);
    for (quint32 i = 0; i < count; ++i) {
        QString typeName;
        f.text(typeName);
        const auto entry = factory.sizes.find(typeName);
        if (entry == factory.sizes.end())
            throw std::out_of_range("invalid map<K, T> key");
        if (entry->second != nullptr)
            entry->second->read(reader);
    }
}

// ---------------------------------------------------------------- a factory

/// The state of a lattice is that of all its kinds: their own slots are empty here.
template <class TLatticeSlot, class TOther>
static void visitPosition(const std::unique_ptr<IFactoryPosition>& position, TLatticeSlot&& lattice, TOther&& other)
{
    if (auto* const walk = dynamic_cast<C3DLattice*>(position.get()))
        lattice(*walk);
    else if (position != nullptr)
        other(*position);
}

void CDemTimestepDataReader::readParticleFactory(CParticleFactory& factory)
{
    CInForm f = in();
    const auto read = [&](const auto& param) {
        if (param != nullptr)
            param->read(*this);
    };
    f.i32(factory.creationCount); // particles so far
    read(factory.velocity);
    if (f.since(30, 0, 0))
        readSizes(*this, f, factory);
    else
        readSharedSize(*this, f, factory);
    read(factory.orientation);
    read(factory.angVel);
    read(factory.type);
    visitPosition(
        factory.position, [&](C3DLattice& lattice) { read3DLattice(lattice); },
        [&](IFactoryPosition& position) { position.read(*this); });
    factory.accounting.read(*this);
    factoryCountersForm(f, factory);
}

void CDemTimestepDataWriter::writeParticleFactory(const CParticleFactory& factory)
{
    COutForm f = out();
    const auto write = [&](const auto& param) {
        if (param != nullptr)
            param->write(*this);
    };
    f.i32(factory.creationCount); // particles so far
    write(factory.velocity);
    f.length("size", leastSizeBytes, factory.sizes);
    for (const auto& [typeName, size] : factory.sizes) {
        f.text(typeName);
        write(size);
    }
    write(factory.orientation);
    write(factory.angVel);
    write(factory.type);
    visitPosition(
        factory.position, [&](const C3DLattice& lattice) { write3DLattice(lattice); },
        [&](const IFactoryPosition& position) { position.write(*this); });
    factory.accounting.write(*this);
    factoryCountersForm(f, factory);
}

void CDemTimestepDataReader::readDynamicParticleFactory(CDynamicParticleFactory& factory)
{
    CInForm f = in();
    f.i32(factory.createdSinceRateChange); // particles
    factory.typeAccounting.clear();
    if (!f.since(30, 0, 0)) // before, the factory has one account for all types
        return;
    const quint32 count = f.count("account of a particle type", leastAccountBytes);
    for (quint32 i = 0; i < count; ++i) {
        QString typeName;
        f.text(typeName);
        factory.typeAccounting[typeName].read(*this);
    }
}

void CDemTimestepDataWriter::writeDynamicParticleFactory(const CDynamicParticleFactory& factory)
{
    COutForm f = out();
    f.i32(factory.createdSinceRateChange); // particles
    f.length("account of a particle type", leastAccountBytes, factory.typeAccounting);
    for (const auto& [typeName, account] : factory.typeAccounting) {
        f.text(typeName);
        account.write(*this);
    }
}

template <class TForm, class TFactory>
static void staticForm(TForm&& f, TFactory& factory)
{
    f.flag(factory.completed); // it has filled its shape
}
void CDemTimestepDataReader::readStaticParticleFactory(CStaticParticleFactory& factory) { staticForm(in(), factory); }
void CDemTimestepDataWriter::writeStaticParticleFactory(const CStaticParticleFactory& factory)
{
    staticForm(out(), factory);
}

void CDemTimestepDataReader::readParticleFactoryList(CParticleFactoryList& list)
{
    for (const auto& factory : list.factories)
        factory->read(*this);
}

void CDemTimestepDataWriter::writeParticleFactoryList(const CParticleFactoryList& list)
{
    for (const auto& factory : list.factories)
        factory->write(*this);
}

} // namespace NBrenmark
