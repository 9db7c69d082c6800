#pragma once
// Values as attributes and datasets: one shape for each kind of value. What has a length of its own
// per particle or record goes through bulk_arrays.h instead. All failures are exceptions that name the
// HDF5 path; a missing attribute or dataset is one.

#include "io/hdf5/bulk_arrays.h"
#include "io/hdf5/types.h"

#include "maths/matrix3.h"
#include "maths/quaternion.h"
#include "maths/transform.h"
#include "maths/vector.h"

#include <QString>
#include <QStringList>

#include <H5Cpp.h>

#include <array>
#include <string>
#include <vector>

namespace NBrenmark {

// ---------------------------------------------------------------- attributes, all scalar but the list of flags

/// \throws unstorable_error  for a text, in UTF-8, that is too long for an attribute of that name
void checkAttributeText(const std::string& name, const std::string& text);

void writeAttribute(const std::string& name, qint32 value, H5::H5Object& location);
void writeAttribute(const std::string& name, quint32 value, H5::H5Object& location);
void writeAttribute(const std::string& name, double value, H5::H5Object& location);
/// One byte, 0 or 1.
void writeAttribute(const std::string& name, bool value, H5::H5Object& location);
void writeAttribute(const std::string& name, const std::vector<bool>& flags, H5::H5Object& location);
/// A null-terminated text of just its length, UTF-8. \throws unstorable_error  it is too long
void writeAttribute(const std::string& name, const std::string& text, H5::H5Object& location);
void writeAttribute(const std::string& name, const QString& text, H5::H5Object& location);
void writeAttribute(const std::string& name, const C3DPoint& value, H5::H5Object& location);
void writeAttribute(const std::string& name, const C3DVector& value, H5::H5Object& location);
void writeAttribute(const std::string& name, const C3DMatrix& value, H5::H5Object& location);
void writeAttribute(const std::string& name, const C3DTransform& value, H5::H5Object& location);
// A text in quotes would become a bool.
void writeAttribute(const std::string& name, const char* text, H5::H5Object& location) = delete;

/// Overwrite an attribute that is there.
void rewriteAttribute(const std::string& name, qint32 value, H5::H5Object& location);
void rewriteAttribute(const std::string& name, quint32 value, H5::H5Object& location);

void readAttribute(const std::string& name, qint32& value, const H5::H5Object& location);
void readAttribute(const std::string& name, quint32& value, const H5::H5Object& location);
void readAttribute(const std::string& name, qint64& value, const H5::H5Object& location);
void readAttribute(const std::string& name, double& value, const H5::H5Object& location);
void readAttribute(const std::string& name, bool& value, const H5::H5Object& location);
void readAttribute(const std::string& name, std::vector<bool>& flags, const H5::H5Object& location);
void readAttribute(const std::string& name, std::string& text, const H5::H5Object& location);
void readAttribute(const std::string& name, QString& text, const H5::H5Object& location);
void readAttribute(const std::string& name, C3DPoint& value, const H5::H5Object& location);
void readAttribute(const std::string& name, C3DVector& value, const H5::H5Object& location);
void readAttribute(const std::string& name, C3DMatrix& value, const H5::H5Object& location);
void readAttribute(const std::string& name, C3DTransform& value, const H5::H5Object& location);

// ---------------------------------------------------------------- datasets, with default creation properties

void writeDataset(const std::string& name, const C3DPoint& value, H5::H5Location& location);
void writeDataset(const std::string& name, const C3DVector& value, H5::H5Location& location);
void writeDataset(const std::string& name, const CQuaternion& value, H5::H5Location& location);
void writeDataset(const std::string& name, const C3DTransform& value, H5::H5Location& location);
void writeDataset(const std::string& name, const QString& text, H5::H5Location& location);
void writeDataset(const std::string& name, const QStringList& texts, H5::H5Location& location);

void readDataset(const std::string& name, C3DPoint& value, const H5::H5Location& location);
void readDataset(const std::string& name, C3DVector& value, const H5::H5Location& location);
void readDataset(const std::string& name, CQuaternion& value, const H5::H5Location& location);
void readDataset(const std::string& name, C3DTransform& value, const H5::H5Location& location);
void readDataset(const std::string& name, QString& text, const H5::H5Location& location);
void readDataset(const std::string& name, QStringList& texts, const H5::H5Location& location);
void readDataset(const std::string& name, HDF5DATATYPES::SDomainType::SRecord& record, const H5::H5Location& location);

// ---------------------------------------------------------------- compound tables

void writeTable(const std::string& name, const H5::CompType& type, const void* records, hsize_t count,
                H5::H5Location& location);
/// Every member of the type must be in the file.
/// \param allocate  takes memory for so many records
void readTable(const std::string& name, const H5::CompType& type, const std::function<void*(hsize_t)>& allocate,
               const H5::H5Location& location);

/// A table of TType, one of HDF5DATATYPES.
template <class TType>
void writeTable(const std::string& name, const std::vector<typename TType::SRecord>& records, H5::H5Location& location)
{
    writeTable(name, TType(), records.data(), records.size(), location);
}

template <class TType>
std::vector<typename TType::SRecord> readTable(const std::string& name, const H5::H5Location& location)
{
    std::vector<typename TType::SRecord> records;
    readTable(
        name, TType(),
        [&](hsize_t count) {
            records.resize(count);
            return static_cast<void*>(records.data());
        },
        location);
    return records;
}

// ---------------------------------------------------------------- texts in fixed fields

/// Puts a text and its terminator into a field of a record.
/// \throws hdf5_error  if it doesn't fit: a name that is cut may be another one's name
void setFixedText(char* field, std::size_t size, const QString& text);
QString fixedText(const char* field, std::size_t size);

template <std::size_t size>
void setText(char (&field)[size], const QString& text)
{
    setFixedText(field, size, text);
}

/// The text up to the terminator, or the whole field if a damaged file holds none.
template <std::size_t size>
QString textOf(const char (&field)[size])
{
    return fixedText(field, size);
}

/// The text of 8-bit characters in a file: UTF-8, or Latin-1 where it can't be that.
QString storedText(const std::string& bytes);

} // namespace NBrenmark
