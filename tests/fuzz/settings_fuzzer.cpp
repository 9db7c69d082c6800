// Any bytes in place of a settings file. Whatever is read is written in a form that reads and writes the same again,
// and every field finds the nearest of its points.

#include "analysis/field_interpolation.h"
#include "core/deck/simulation_settings.h"
#include "core/versioned_stream.h"
#include "fuzz/memory_file.h"

#include <QBuffer>

#include <cstdlib>

using namespace NBrenmark;

/// Marker, version and edition.
static constexpr qint64 headerBytes = 4 + 16 + 4 + 4;

static QByteArray written(CSimulationSettingsAndData& settings)
{
    QBuffer buffer;
    buffer.open(QIODevice::ReadWrite);
    CVersionedStream stream(&buffer);
    stream << QStringLiteral("ESS FILE") << currentFileVersion() << quint32(0);
    if (!settings.write(stream, nullptr) || stream.status() != QDataStream::Ok)
        std::abort();
    return buffer.data();
}

static void ask(const NField::CFieldData& field)
{
    const NField::CIdwInterpolation idw;
    const NField::CNdData& place = field.positions().front();
    NField::CNdData result;
    std::vector<NField::SFieldNeighbour> neighbours;
    field.valueAt(place, result, neighbours, 0, &idw);
    if (field.valueAt(place, result, neighbours, 0, nullptr) && neighbours.front().distance != 0.0)
        std::abort();
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    static const CMemoryFile file;
    file.hold(bytes, size);
    CSimulationSettingsAndData settings;
    if (!settings.loadSettings(QString::fromStdString(file.path()), nullptr))
        return 0;
    for (const auto& [name, field] : settings.fieldManager().fields())
        ask(*field);

    QByteArray first = written(settings);
    QBuffer buffer(&first);
    buffer.open(QIODevice::ReadOnly);
    buffer.seek(headerBytes);
    CVersionedStream stream(&buffer);
    CSimulationSettingsAndData again;
    if (!again.read(stream, nullptr) || again.isDirty() || written(again) != first)
        std::abort();
    return 0;
}
