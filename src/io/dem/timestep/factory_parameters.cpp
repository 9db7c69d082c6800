// How far the parameters of particle factories have come. Those that aren't here have no state.
#include "core/log.h"
#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"
#include "model/factories/factory_position.h"
#include "model/factories/factory_size.h"
#include "model/factories/factory_type.h"

#include <array>

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
    f.point(param.seedVector);   // state of the walk
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

// ---------------------------------------------------------------- the accounts of the bands of a user-defined size

static constexpr std::size_t accountNumbers = 3;

/// The numbers of an account in the order of the file.
template <class TAccount>
static auto numbersOf(TAccount& account)
{
    return std::array{&account.massCreated, &account.massRemainder, &account.massSinceRateChange};
}

/// A bare list of numbers: as many for each band as there are, in the order of the bands. A deck whose
/// solver kept none has an empty one.
void CDemTimestepDataReader::readUserDefinedFactorySize(CUserDefinedFactorySize& size)
{
    CInForm f = in();
    std::vector<double> stored;
    f.length("number of size bands", 8, stored);
    for (double& number : stored)
        f.f64(number); // kg

    size.bandAccounting.clear();
    const FuzzyMap<double>& bands = size.sizeDistribution.bands;
    for (const auto& [value, share] : bands)
        size.bandAccounting[value];
    const std::size_t perBand = bands.empty() ? 0 : stored.size() / bands.size();
    if (perBand * bands.size() != stored.size() || perBand > accountNumbers) {
        report(eLost, NLogTitle::legacyRead,
               counted(static_cast<qint64>(stored.size()), "number") + " for " +
                   counted(static_cast<qint64>(bands.size()), "size band") + " of a factory dropped",
               stored.size());
        return;
    }
    auto number = stored.begin();
    for (auto& [value, account] : size.bandAccounting)
        for (std::size_t i = 0; i < perBand; ++i)
            *numbersOf(account)[i] = *number++;
}

void CDemTimestepDataWriter::writeUserDefinedFactorySize(const CUserDefinedFactorySize& size)
{
    const FuzzyMap<double>& bands = size.sizeDistribution.bands;
    COutForm f = out();
    f.i32(static_cast<quint32>(accountNumbers * bands.size()));
    for (const auto& [value, share] : bands) {
        const auto entry = size.bandAccounting.find(value);
        const bool isKept = entry != size.bandAccounting.end() && !stream->options.overrideTime;
        const CFactoryAccounting account = isKept ? entry->second : CFactoryAccounting();
        for (const double* number : numbersOf(account))
            f.f64(*number); // kg
    }
}

} // namespace NBrenmark
