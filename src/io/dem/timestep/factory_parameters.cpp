// How far the parameters of particle factories have come. Those that aren't here have no state.
#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"
#include "model/factories/factory_position.h"
#include "model/factories/factory_type.h"

namespace NBrenmark {

template <class TForm, class TParam>
static void binaryTypeForm(TForm&& f, TParam& param)
{
    f.i32(param.next); // index of a name; any number is taken round
}
void CDemTimestepDataReader::readBinaryFactoryType(CBinaryFactoryType& param) { binaryTypeForm(in(), param); }
void CDemTimestepDataWriter::writeBinaryFactoryType(const CBinaryFactoryType& param) { binaryTypeForm(out(), param); }

template <class TForm, class TParam>
static void randomPositionForm(TForm&& f, TParam& param)
{
    f.point(param.seedPosition); // m; three not-a-numbers: not set
    f.point(param.seedVector);
}
void CDemTimestepDataReader::readRandomFactoryPosition(CRandomFactoryPosition& param)
{
    randomPositionForm(in(), param);
}
void CDemTimestepDataWriter::writeRandomFactoryPosition(const CRandomFactoryPosition& param)
{
    randomPositionForm(out(), param);
}

template <class TForm, class TLattice>
static void latticeForm(TForm&& f, TLattice& lattice)
{
    f.point(lattice.cursor2); // where the solver's walk is
    f.point(lattice.cursor3); // where the solver's walk is
    f.point(lattice.cursor1); // where the solver's walk is
}
void CDemTimestepDataReader::read3DLattice(C3DLattice& lattice) { latticeForm(in(), lattice); }
void CDemTimestepDataWriter::write3DLattice(const C3DLattice& lattice) { latticeForm(out(), lattice); }

} // namespace NBrenmark
