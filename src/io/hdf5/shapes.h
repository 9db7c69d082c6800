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
/// One record. \param record  memory for it
void readDataset(const std::string& name, const H5::CompType& type, void* record, const H5::H5Location& location);

// ---------------------------------------------------------------- compound tables

void writeTable(const std::string& name, const H5::CompType& type, const void* records, hsize_t count,
                H5::H5Location& location);
/// Every member of the type must be in the file.
/// \param allocate  takes memory for so many records
void readTable(const std::string& name, const H5::CompType& type, const std::function<void*(hsize_t)>& allocate,
               const H5::H5Location& location);

/// A table of TRecord, one of HDF5DATATYPES.
template <class TRecord>
void writeTable(const std::string& name, const std::vector<typename TRecord::Row>& rows, H5::H5Location& location)
{
    writeTable(name, compoundOf<TRecord>(), recordsOf<TRecord>(rows).data(), rows.size(), location);
}

/// \param version  of the file
template <class TRecord>
std::vector<typename TRecord::Row> readTable(const std::string& name, quint32 version, const H5::H5Location& location)
{
    const std::size_t size = sizeOf(TRecord::fields, version);
    std::vector<char> records;
    readTable(
        name, compoundOf<TRecord>(version),
        [&](hsize_t count) {
            records.resize(count * size);
            return static_cast<void*>(records.data());
        },
        location);
    std::vector<typename TRecord::Row> rows;
    rows.reserve(records.size() / size);
    for (std::size_t at = 0; at < records.size(); at += size)
        rows.push_back(rowOf<TRecord>(records.data() + at, version));
    return rows;
}

// ---------------------------------------------------------------- texts

/// The text of 8-bit characters in a file: UTF-8, or Latin-1 where it can't be that.
QString storedText(const std::string& bytes);

} // namespace NBrenmark
