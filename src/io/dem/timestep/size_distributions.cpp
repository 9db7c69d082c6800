// The accounts of the bands of a user-defined size; the other sizes have no state.
#include "core/log.h"
#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"
#include "model/factories/factory_size.h"

#include <array>

namespace NBrenmark {

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
