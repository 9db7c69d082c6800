#pragma once
// How single values and names look in a deck's text. Equal text is equal bits: each value has one
// form, and no two values of a type share it. No form depends on the locale.

#include "maths/matrix3.h"
#include "maths/quaternion.h"
#include "maths/transform.h"
#include "maths/vector.h"

#include <QString>

#include <string>

namespace NBrenmark::NText {

/// A number with 17 significant digits, as "%.17g" prints it; "inf", "-inf", "-0"; a NaN with its
/// bits in hexadecimal: "nan:7ff8000000000000".
std::string text(double value);
/// The same at the end of a text, for those who write many.
void append(std::string& out, double value);
std::string text(bool value);
std::string text(qint32 value);
std::string text(quint32 value);
std::string text(quint64 value);
/// In double quotes, with \" \\ \n \r \t; other control characters, and bytes that are no UTF-8,
/// as \x and two hexadecimal digits a byte.
std::string text(const std::string& value);
std::string text(const QString& value);
std::string text(const char* value);
/// Numbers in round brackets, with a comma and a blank between them.
std::string text(const C3DVector& value);
std::string text(const C3DPoint& value);
std::string text(const CQuaternion& value);
std::string text(const C3DMatrix& value);
std::string text(const C3DTransform& value);
/// The same for a run of numbers.
std::string tuple(const double* values, size_t count);

/// A name as one segment of a path. Blanks, control characters, slashes, percent and number signs,
/// and bytes that are no UTF-8 are written as a percent sign and two hexadecimal digits a byte.
std::string segment(const std::string& name);
std::string segment(const QString& name);

} // namespace NBrenmark::NText
