// Vectors of any length from a stream, without more memory than the stream has bytes for.
#include "analysis/nd_data.h"

#include "core/versioned_stream.h"

#include <algorithm>
#include <cmath>

namespace NBrenmark::NField {

CNdData::CNdData(quint32 size) { resize(size); }

CNdData::CNdData(std::initializer_list<double> list) : CNdData(static_cast<quint32>(list.size()))
{
    std::copy(list.begin(), list.end(), components.begin());
}

void CNdData::resize(quint32 size)
{
    componentCount = size;
    components.assign(std::max<quint32>(size, 1), 0.0);
}

double CNdData::length() const
{
    double sum = 0.0;
    for (quint32 i = 0; i < componentCount; ++i)
        sum += components[i] * components[i];
    return std::sqrt(sum);
}

bool CNdData::write(CVersionedStream& stream, IProgressController*)
{
    stream << qint32(componentCount);
    for (quint32 i = 0; i < componentCount; ++i)
        stream << components[i];
    return stream.status() == QDataStream::Ok;
}

bool CNdData::read(CVersionedStream& stream, IProgressController*)
{
    qint64 left = stream.bytesLeft();
    return readWithin(stream, left);
}

bool CNdData::readWithin(CVersionedStream& stream, qint64& left)
{
    qint32 stored = 0;
    stream >> stored;
    left -= 4;
    if (stream.status() != QDataStream::Ok || stored < 0 || stored > left / 8)
        return false;
    resize(static_cast<quint32>(stored));
    for (quint32 i = 0; i < componentCount; ++i)
        stream >> components[i];
    left -= 8 * qint64(stored);
    return stream.status() == QDataStream::Ok;
}

} // namespace NBrenmark::NField
