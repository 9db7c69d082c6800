// What changes of the parameters of particle factories while particles are placed. Most hold nothing that
// does.

#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"

#include "core/log.h"
#include "io/hdf5/lattice.h"
#include "model/factories/factory_size.h"
#include "model/factories/factory_type.h"

namespace NBrenmark {

// ---------------------------------------------------------------- position

template <class TForm, class TParam>
static void randomPositionForm(TForm& f, TParam& p)
{
    f.dataset("seed position", p.seedPosition); // m; three not-a-numbers: not set
    f.dataset("seed vector", p.seedVector);     // state of the walk
}

void CHdf5TimestepDataReader::readRandomFactoryPosition(CRandomFactoryPosition& p) { randomPositionForm(in(), p); }
void CHdf5TimestepDataWriter::writeRandomFactoryPosition(const CRandomFactoryPosition& p)
{
    randomPositionForm(out(), p);
}

void CHdf5TimestepDataReader::read3DLattice(C3DLattice& lattice) { readLattice(in(), latticeState(lattice)); }
void CHdf5TimestepDataWriter::write3DLattice(const C3DLattice& lattice) { writeLattice(out(), latticeState(lattice)); }

// ---------------------------------------------------------------- type

template <class TForm, class TParam>
static void binaryTypeForm(TForm& f, TParam& p)
{
    f.attribute("next", p.next); // index of a name; any number is taken round
}

void CHdf5TimestepDataReader::readBinaryFactoryType(CBinaryFactoryType& p) { binaryTypeForm(in(), p); }
void CHdf5TimestepDataWriter::writeBinaryFactoryType(const CBinaryFactoryType& p) { binaryTypeForm(out(), p); }

// ---------------------------------------------------------------- size

/// A band's account is found by its size, of which the name holds six digits.
static QString bandName(double size) { return QString::number(size, 'g', 6); }

/// The size that a name stands for: that of a band of the law, if there is one, with all of its digits.
static double sizeOfBand(const CUserDefinedFactorySize& p, const QString& name)
{
    for (const auto& [size, share] : p.sizeDistribution.bands)
        if (bandName(size) == name)
            return size;
    return name.toDouble();
}

void CHdf5TimestepDataReader::readUserDefinedFactorySize(CUserDefinedFactorySize& p)
{
    FuzzyMap<CFactoryAccounting> accounts;
    in().children([&](const QString& name) { accounts[sizeOfBand(p, name)].read(*this); });
    p.bandAccounting = std::move(accounts);
}

void CHdf5TimestepDataWriter::writeUserDefinedFactorySize(const CUserDefinedFactorySize& p)
{
    QString before;
    for (const auto& entry : p.bandAccounting) {
        const QString name = bandName(entry.first);
        if (name == before) { // the sizes are in order
            report(eNotCarried, NLogTitle::hdf5Write,
                   "The account of the size band " + QString::number(entry.first, 'g', 17).toStdString() +
                       " of a particle factory is dropped: this family tells bands apart by six digits.");
            continue;
        }
        before = name;
        out().group(name.toStdString(), [&] { entry.second.write(*this); });
    }
}

} // namespace NBrenmark
