// A vector that has a first component even where it has none.
#include "analysis/nd_data.h"

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

void CNdData::form(IEntryForm& f)
{
    const quint32 stored = f.count("size", componentCount, sizeof(double));
    if (f.isReading())
        resize(stored);
    for (quint32 i = 0; i < componentCount; ++i)
        f.f64("component", components[i]);
}

} // namespace NBrenmark::NField
