// Which words a header has depends on the version that made the deck; a current one always has eight.
#include "io/dem/dem_header.h"

#include "io/dem/dem_data_stream.h"

namespace NBrenmark {

// The header goes by its plain numbers: major 3 isn't counted as 20 here.
static constexpr quint32 versionOfReserved = makeVersion(2, 4, 16);
static constexpr quint32 versionOfEdition = makeVersion(2, 4, 35);
static constexpr quint32 versionOfLastVersion = makeVersion(2, 4, 58);
// Between the two a build wrote decks that no one else may read, and from then on it marked them.
static constexpr quint32 lastBeforeMark = makeVersion(24, 0, 0);
static constexpr quint32 versionOfMark = makeVersion(24, 0, 25);

bool SDemHeader::read(QIODevice& device)
{
    *this = SDemHeader();
    if (!device.seek(0))
        return false;
    CDemDataStream stream(&device);
    stream >> firstVersion;
    lastVersion = firstVersion;
    if (firstVersion >= versionOfLastVersion)
        stream >> lastVersion;
    stream >> timesteps;
    if (firstVersion >= versionOfReserved) {
        quint32 reserved = 0;
        stream >> reservedFlag >> reserved >> reserved >> reserved;
    }
    if (firstVersion >= versionOfEdition)
        stream >> edition;
    return stream.status() == QDataStream::Ok;
}

bool SDemHeader::isAcceptable() const
{
    if (firstVersion == 0 || lastVersion > currentFileVersion())
        return false;
    if (firstVersion < versionOfReserved || lastVersion <= lastBeforeMark)
        return true;
    return lastVersion >= versionOfMark && reservedFlag == 0;
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
