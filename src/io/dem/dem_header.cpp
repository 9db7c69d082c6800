// Which words a header has depends on the version that made the deck; a current one always has eight.
#include "io/dem/dem_header.h"

#include "core/deck/file_families.h"
#include "core/version_history.h"
#include "io/dem/dem_data_stream.h"

namespace NBrenmark {

// The header goes by its plain numbers: major 3 isn't counted as 20 here.
using namespace NFileVersion;

static constexpr quint32 greatestEdition = 4;

bool SDemHeader::read(QIODevice& device)
{
    *this = SDemHeader();
    if (!device.seek(0))
        return false;
    CDemDataStream stream(&device);
    stream >> firstVersion;         // of the program that made the deck; says which words follow
    lastVersion = firstVersion;     // and the last one too, before 2.4.58
    if (firstVersion >= fullHeader) // from 2.4.58 on
        stream >> lastVersion;
    stream >> timesteps;
    if (firstVersion >= reservedWords) { // from 2.4.16 on
        quint32 reserved = 0;
        stream >> reservedFlag >> reserved >> reserved >> reserved;
    }
    if (firstVersion >= withEdition) // from 2.4.35 on
        stream >> edition;
    return stream.status() == QDataStream::Ok;
}

bool SDemHeader::isOfFamily() const
{
    if (firstVersion < first || firstVersion >= hdf5 || timesteps == 0) // any bytes can be read as a header
        return false;
    return (lastVersion < mark || reservedFlag == 0) && edition <= greatestEdition;
}

bool NLegacyFamily::isOwnHeader(QIODevice& device)
{
    SDemHeader header;
    header.read(device); // one that ends early has zeros from there on
    return header.isOfFamily();
}

bool SDemHeader::hasFullHeader(quint32 firstVersion) { return firstVersion >= fullHeader; }

bool SDemHeader::isAcceptable() const
{
    if (firstVersion == 0 || lastVersion > currentFileVersion())
        return false;
    if (firstVersion < reservedWords || lastVersion <= lastBeforeMark)
        return true;
    return lastVersion >= mark && reservedFlag == 0; // what lies between the two was never meant for others
}

bool SDemHeader::write(QIODevice& device) const
{
    if (!device.seek(0))
        return false;
    CDemDataStream stream(&device);
    stream << firstVersion << lastVersion << timesteps << quint32(0) << quint32(0) << quint32(0) << quint32(0)
           << edition;
    return stream.status() == QDataStream::Ok;
}

} // namespace NBrenmark
