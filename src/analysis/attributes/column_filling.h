#pragma once
// Fills a column by a formula for one row.

#include "analysis/attributes/attribute.h"
#include "maths/quaternion.h"

namespace NBrenmark::NAttributes {

inline double* stored(double* out, double value)
{
    *out = value;
    return out + 1;
}
inline double* stored(double* out, const C3DVector& value)
{
    return stored(stored(stored(out, value.x), value.y), value.z);
}
inline double* stored(double* out, const C3DPoint& value) { return stored(out, value.toVector()); }
inline double* stored(double* out, const CQuaternion& value)
{
    return stored(stored(out, value.w), C3DVector(value.x, value.y, value.z));
}

/// \param valueOf  the formula: double, C3DVector, C3DPoint or CQuaternion of a row
/// \return true
template <class TValueOf>
bool filled(const SAttributeRows& rows, double* out, const TValueOf& valueOf)
{
    for (const quint32 row : rows)
        out = stored(out, valueOf(row));
    return true;
}

/// The same for an array of the owner's. \return false, with nothing filled, if it is too short
template <class TValue>
bool filledFrom(const std::vector<TValue>& values, const SAttributeRows& rows, double* out)
{
    for (const quint32 row : rows)
        if (row >= values.size())
            return false;
    return filled(rows, out, [&values](quint32 row) { return values[row]; });
}

} // namespace NBrenmark::NAttributes
