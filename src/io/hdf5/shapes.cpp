// Each shape in both directions. A type or extent other than expected is refused with the path of the object.
#include "io/hdf5/shapes.h"

#include "core/log.h"
#include "core/shortened.h"
#include "io/hdf5/closed.h"
#include "io/hdf5/error_text.h"
#include "io/hdf5/read_audit.h"
#include "io/hdf5/soundness.h"

#include <QTextCodec>

#include <algorithm>
#include <cstring>

namespace NBrenmark {

using H5::PredType;

// ---------------------------------------------------------------- attributes

static void writeAs(const std::string& name, const H5::DataType& type, const H5::DataSpace& space, const void* value,
                    H5::H5Object& location)
{
    try {
        closed(location.createAttribute(name, type, space),
               [&](H5::Attribute& attribute) { attribute.write(type, value); });
    }
    catch (const H5::Exception& error) {
        throwAt(location, "attribute", name, error);
    }
}

static void writeScalar(const std::string& name, const H5::DataType& type, const void* value, H5::H5Object& location)
{
    closed(H5::DataSpace(H5S_SCALAR), [&](H5::DataSpace& space) { writeAs(name, type, space, value, location); });
}

static void rewriteScalar(const std::string& name, const H5::DataType& type, const void* value, H5::H5Object& location)
{
    try {
        closed(location.openAttribute(name), [&](H5::Attribute& attribute) {
            if (attribute.getSpace().getSimpleExtentNpoints() != 1)
                throwAt(location, "attribute", name, "isn't a single value");
            attribute.write(type, value);
        });
    }
    catch (const H5::Exception& error) {
        throwAt(location, "attribute", name, error);
    }
}

/// \param allocate  is given the number of values and gives the place for them
template <class TAllocate>
static void readValues(const std::string& name, const H5::DataType& type, const H5::H5Object& location,
                       TAllocate&& allocate)
{
    try {
        CReadAudit::askedForAttribute(location, name);
        const H5::Attribute attribute = location.openAttribute(name);
        CReadAudit::compareTypes(attribute.getDataType(), type, "attribute", name);
        checkSound(attribute, location, name);
        if (type.getClass() == H5T_INTEGER && attribute.getTypeClass() != H5T_INTEGER)
            throwAt(location, "attribute", name, "isn't a whole number");
        void* const target = allocate(attribute.getSpace().getSimpleExtentNpoints());
        attribute.read(type, target);
    }
    catch (const H5::Exception& error) {
        throwAt(location, "attribute", name, error);
    }
}

static void readScalar(const std::string& name, const H5::DataType& type, void* value, const H5::H5Object& location)
{
    readValues(name, type, location, [&](hssize_t points) {
        if (points != 1)
            throwAt(location, "attribute", name, std::to_string(points) + " values where one is needed");
        return value;
    });
}

static H5::ArrayType rowOfDoubles(hsize_t count) { return H5::ArrayType(PredType::NATIVE_DOUBLE, 1, &count); }

static H5::ArrayType squareOfDoubles(hsize_t side)
{
    const hsize_t sides[] = {side, side};
    return H5::ArrayType(PredType::NATIVE_DOUBLE, 2, sides);
}

static void writeArrayAttribute(const std::string& name, const H5::ArrayType& type, const double* values,
                                H5::H5Object& location)
{
    closed(H5::ArrayType(type), [&](H5::ArrayType& array) { writeScalar(name, array, values, location); });
}

// ---------------------------------------------------------------- datasets

static void writeData(const std::string& name, const H5::DataType& type, const H5::DataSpace& space, const void* value,
                      H5::H5Location& location)
{
    try {
        closed(location.createDataSet(name, type, space), [&](H5::DataSet& dataset) {
            if (space.getSimpleExtentNpoints() > 0)
                dataset.write(value, type);
        });
    }
    catch (const H5::Exception& error) {
        throwAt(location, "dataset", name, error);
    }
}

template <class TType>
static void writeScalarData(const std::string& name, TType type, const void* value, H5::H5Location& location)
{
    closed(std::move(type), [&](TType& memory) {
        closed(H5::DataSpace(H5S_SCALAR),
               [&](H5::DataSpace& space) { writeData(name, memory, space, value, location); });
    });
}

/// A file's compound may have its members in other places, but must have them.
static void checkMembers(const std::string& name, const H5::CompType& wanted, const H5::DataSet& dataset,
                         const H5::H5Location& location)
{
    if (dataset.getTypeClass() != H5T_COMPOUND)
        throwAt(location, "dataset", name, "isn't a table of records");
    const H5::CompType found = dataset.getCompType();
    for (int i = 0; i < wanted.getNmembers(); ++i) {
        const std::string member = wanted.getMemberName(static_cast<unsigned>(i));
        if (H5Tget_member_index(found.getId(), member.c_str()) < 0)
            throwAt(location, "dataset", name, "has no member \"" + member + "\"");
    }
}

static void readRecord(const std::string& name, const H5::CompType& type, void* record, const H5::H5Location& location)
{
    try {
        CReadAudit::askedForObject(location, name);
        requireOwn(location, "dataset", name);
        const H5::DataSet dataset = location.openDataSet(name);
        if (dataset.getSpace().getSimpleExtentNpoints() != 1)
            throwAt(location, "dataset", name, "isn't a single record");
        checkSound(dataset, location, name);
        checkMembers(name, type, dataset, location);
        dataset.read(record, type, H5::DataSpace::ALL, H5::DataSpace::ALL, wholeNumbersOnly());
    }
    catch (const H5::Exception& error) {
        throwAt(location, "dataset", name, error);
    }
}

/// Texts of variable length end at a zero byte. What follows one is lost, and reported.
static std::string storableText(const std::string& name, const std::string& text)
{
    const std::size_t end = text.find('\0');
    if (end == std::string::npos)
        return text;
    report(eNotCarried, NLogTitle::hdf5Write,
           "The text of \"" + name + "\" is cut after \"" + shortened(text.substr(0, end)) +
               "\", where it has a zero byte.");
    return text.substr(0, end);
}

static H5::StrType variableText() { return H5::StrType(PredType::C_S1, H5T_VARIABLE); }

/// The texts of a dataset of variable-length texts, of any rank.
static std::vector<std::string> readTexts(const std::string& name, const H5::H5Location& location)
{
    std::vector<std::string> texts;
    try {
        CReadAudit::askedForObject(location, name);
        requireOwn(location, "dataset", name);
        const H5::DataSet dataset = location.openDataSet(name);
        if (dataset.getTypeClass() != H5T_STRING || !dataset.getStrType().isVariableStr())
            throwAt(location, "dataset", name, "holds no texts");
        checkSound(dataset, location, name);
        const H5::DataSpace space = dataset.getSpace();
        std::vector<char*> pointers(static_cast<std::size_t>(space.getSimpleExtentNpoints()), nullptr);
        if (pointers.empty())
            return texts;
        const H5::StrType type = variableText();
        dataset.read(pointers.data(), type);
        for (const char* text : pointers)
            texts.emplace_back(text ? text : "");               // a text that was never written is a null
        H5::DataSet::vlenReclaim(pointers.data(), type, space); // HDF5 took the memory of each text
    }
    catch (const H5::Exception& error) {
        throwAt(location, "dataset", name, error);
    }
    return texts;
}

// ---------------------------------------------------------------- attributes

void writeAttribute(const std::string& name, qint32 value, H5::H5Object& location)
{
    writeScalar(name, PredType::NATIVE_INT, &value, location);
}

void writeAttribute(const std::string& name, quint32 value, H5::H5Object& location)
{
    writeScalar(name, PredType::NATIVE_UINT, &value, location);
}

void writeAttribute(const std::string& name, double value, H5::H5Object& location)
{
    writeScalar(name, PredType::NATIVE_DOUBLE, &value, location);
}

void writeAttribute(const std::string& name, bool value, H5::H5Object& location)
{
    const unsigned char byte = value ? 1 : 0; // files hold yes and no as 1 and 0
    writeScalar(name, PredType::NATIVE_UCHAR, &byte, location);
}

void writeAttribute(const std::string& name, const std::vector<bool>& flags, H5::H5Object& location)
{
    const std::vector<unsigned char> bytes(flags.begin(), flags.end());
    const hsize_t count = bytes.size();
    closed(H5::DataSpace(1, &count),
           [&](H5::DataSpace& space) { writeAs(name, PredType::NATIVE_UCHAR, space, bytes.data(), location); });
}

/// Bytes of text that fit in an attribute, with the zero byte after them. It is one message of an object header, of up
/// to 65528 bytes, which hold what it is, 24 bytes, and its name, with a zero byte and up to a multiple of eight.
/// Of seven bytes more HDF5 makes a file without complaint that it can't read.
static std::size_t roomInAttribute(const std::string& name) { return 65528 - 24 - (name.size() + 8) / 8 * 8; }

void checkAttributeText(const std::string& name, const std::string& text)
{
    if (text.size() >= roomInAttribute(name))
        throw unstorable_error("The text of \"" + name + "\" takes " + std::to_string(text.size()) + " bytes, " +
                               std::to_string(roomInAttribute(name) - 1) + " can be stored.");
}

void writeAttribute(const std::string& name, const std::string& text, H5::H5Object& location)
{
    // The type's size gives the length of the text: zero bytes within are stored like any other.
    checkAttributeText(name, text);
    if (!text.empty() && text.back() == '\0')
        report(eNotCarried, NLogTitle::hdf5Write,
               "The text of \"" + name + "\" ends in zero bytes, which a reader takes for its end.",
               text.size() - (text.find_last_not_of('\0') + 1));
    closed(H5::StrType(PredType::C_S1, text.size() + 1),
           [&](H5::StrType& type) { writeScalar(name, type, text.c_str(), location); });
}

void writeAttribute(const std::string& name, const QString& text, H5::H5Object& location)
{
    writeAttribute(name, text.toStdString(), location);
}

void writeAttribute(const std::string& name, const C3DPoint& value, H5::H5Object& location)
{
    writeArrayAttribute(name, rowOfDoubles(3), &value.x, location);
}

void writeAttribute(const std::string& name, const C3DVector& value, H5::H5Object& location)
{
    writeArrayAttribute(name, rowOfDoubles(3), &value.x, location);
}

void writeAttribute(const std::string& name, const C3DMatrix& value, H5::H5Object& location)
{
    writeArrayAttribute(name, squareOfDoubles(3), value.data(), location);
}

void writeAttribute(const std::string& name, const C3DTransform& value, H5::H5Object& location)
{
    writeArrayAttribute(name, squareOfDoubles(4), value.data(), location);
}

void rewriteAttribute(const std::string& name, qint32 value, H5::H5Object& location)
{
    rewriteScalar(name, PredType::NATIVE_INT, &value, location);
}

void rewriteAttribute(const std::string& name, quint32 value, H5::H5Object& location)
{
    rewriteScalar(name, PredType::NATIVE_UINT, &value, location);
}

void readAttribute(const std::string& name, qint32& value, const H5::H5Object& location)
{
    readScalar(name, PredType::NATIVE_INT, &value, location);
}

void readAttribute(const std::string& name, quint32& value, const H5::H5Object& location)
{
    readScalar(name, PredType::NATIVE_UINT, &value, location);
}

void readAttribute(const std::string& name, qint64& value, const H5::H5Object& location)
{
    readScalar(name, PredType::NATIVE_LLONG, &value, location); // holds what is signed and what is unsigned
}

void readAttribute(const std::string& name, double& value, const H5::H5Object& location)
{
    readScalar(name, PredType::NATIVE_DOUBLE, &value, location);
}

void readAttribute(const std::string& name, bool& value, const H5::H5Object& location)
{
    unsigned char byte = 0;
    readScalar(name, PredType::NATIVE_UCHAR, &byte, location);
    CReadAudit::compareFlag(byte, "attribute", name);
    value = byte != 0;
}

void readAttribute(const std::string& name, std::vector<bool>& flags, const H5::H5Object& location)
{
    std::vector<unsigned char> bytes;
    readValues(name, PredType::NATIVE_UCHAR, location, [&](hssize_t points) {
        bytes.resize(static_cast<std::size_t>(points)); // no more than an object header holds
        return static_cast<void*>(bytes.data());
    });
    for (const unsigned char byte : bytes)
        CReadAudit::compareFlag(byte, "attribute", name);
    flags.assign(bytes.size(), false);
    std::transform(bytes.begin(), bytes.end(), flags.begin(), [](unsigned char byte) { return byte != 0; });
}

void readAttribute(const std::string& name, std::string& text, const H5::H5Object& location)
{
    try {
        CReadAudit::askedForAttribute(location, name);
        const H5::Attribute attribute = location.openAttribute(name);
        checkSound(attribute, location, name);
        if (attribute.getTypeClass() != H5T_STRING || attribute.getStrType().isVariableStr() ||
            attribute.getSpace().getSimpleExtentNpoints() != 1)
            throwAt(location, "attribute", name, "isn't a text of fixed length");
        const H5::StrType type = attribute.getStrType();
        std::string bytes(type.getSize(), '\0');
        attribute.read(type, static_cast<void*>(&bytes[0]));
        // The last byte is the terminator, unless the writer padded its texts without one.
        if (bytes.back() == '\0' || type.getStrpad() == H5T_STR_NULLTERM)
            bytes.pop_back();
        // Others store short texts in long types: zero bytes at the end fill these up.
        bytes.erase(bytes.find_last_not_of('\0') + 1);
        text = bytes;
    }
    catch (const H5::Exception& error) {
        throwAt(location, "attribute", name, error);
    }
}

void readAttribute(const std::string& name, QString& text, const H5::H5Object& location)
{
    std::string bytes;
    readAttribute(name, bytes, location);
    text = storedText(bytes);
}

void readAttribute(const std::string& name, C3DPoint& value, const H5::H5Object& location)
{
    readScalar(name, rowOfDoubles(3), &value.x, location);
}

void readAttribute(const std::string& name, C3DVector& value, const H5::H5Object& location)
{
    readScalar(name, rowOfDoubles(3), &value.x, location);
}

void readAttribute(const std::string& name, C3DMatrix& value, const H5::H5Object& location)
{
    readScalar(name, squareOfDoubles(3), value.data(), location);
}

void readAttribute(const std::string& name, C3DTransform& value, const H5::H5Object& location)
{
    readScalar(name, squareOfDoubles(4), value.data(), location);
}

// ---------------------------------------------------------------- datasets

void writeDataset(const std::string& name, const C3DPoint& value, H5::H5Location& location)
{
    writeScalarData(name, compoundOf<HDF5DATATYPES::SPointType>(), &value.x, location);
}

void writeDataset(const std::string& name, const C3DVector& value, H5::H5Location& location)
{
    writeScalarData(name, compoundOf<HDF5DATATYPES::SPointType>(), &value.x, location);
}

void writeDataset(const std::string& name, const CQuaternion& value, H5::H5Location& location)
{
    writeScalarData(name, compoundOf<HDF5DATATYPES::SQuaternionType>(), &value.w, location);
}

void writeDataset(const std::string& name, const C3DTransform& value, H5::H5Location& location)
{
    CArrayWriter(location, false).writePlain(name, PredType::NATIVE_DOUBLE, {4, 4}, value.data());
}

void writeDataset(const std::string& name, const QString& text, H5::H5Location& location)
{
    const std::string bytes = storableText(name, text.toStdString());
    const char* const pointer = bytes.c_str();
    writeScalarData(name, variableText(), &pointer, location);
}

void writeDataset(const std::string& name, const QStringList& texts, H5::H5Location& location)
{
    std::vector<std::string> bytes;
    for (const QString& text : texts)
        bytes.push_back(storableText(name, text.toStdString()));
    std::vector<const char*> pointers;
    pointers.reserve(bytes.size());
    for (const std::string& text : bytes)
        pointers.push_back(text.c_str());
    const hsize_t count = pointers.size();
    closed(variableText(), [&](H5::StrType& type) {
        closed(H5::DataSpace(1, &count),
               [&](H5::DataSpace& space) { writeData(name, type, space, pointers.data(), location); });
    });
}

void readDataset(const std::string& name, C3DPoint& value, const H5::H5Location& location)
{
    readRecord(name, compoundOf<HDF5DATATYPES::SPointType>(), &value.x, location);
}

void readDataset(const std::string& name, C3DVector& value, const H5::H5Location& location)
{
    readRecord(name, compoundOf<HDF5DATATYPES::SPointType>(), &value.x, location);
}

void readDataset(const std::string& name, CQuaternion& value, const H5::H5Location& location)
{
    readRecord(name, compoundOf<HDF5DATATYPES::SQuaternionType>(), &value.w, location);
}

void readDataset(const std::string& name, C3DTransform& value, const H5::H5Location& location)
{
    CArrayReader(location).read(name, PredType::NATIVE_DOUBLE, 4, [&](const SArrayShape& shape) {
        if (shape.rows != 4)
            throwAt(location, "dataset", name, "isn't a 4 by 4 matrix");
        return static_cast<void*>(value.data());
    });
}

void readDataset(const std::string& name, QString& text, const H5::H5Location& location)
{
    const std::vector<std::string> texts = readTexts(name, location);
    if (texts.size() != 1)
        throwAt(location, "dataset", name, std::to_string(texts.size()) + " texts where one is needed");
    text = storedText(texts.front());
}

void readDataset(const std::string& name, QStringList& texts, const H5::H5Location& location)
{
    texts.clear();
    for (const std::string& text : readTexts(name, location))
        texts.append(storedText(text));
}

void readDataset(const std::string& name, const H5::CompType& type, void* record, const H5::H5Location& location)
{
    readRecord(name, type, record, location);
}

// ---------------------------------------------------------------- compound tables

void writeTable(const std::string& name, const H5::CompType& type, const void* records, hsize_t count,
                H5::H5Location& location)
{
    closed(H5::CompType(type), [&](H5::CompType& memory) {
        closed(H5::DataSpace(1, &count),
               [&](H5::DataSpace& space) { writeData(name, memory, space, records, location); });
    });
}

void readTable(const std::string& name, const H5::CompType& type, const std::function<void*(hsize_t)>& allocate,
               const H5::H5Location& location)
{
    try {
        CReadAudit::askedForObject(location, name);
        requireOwn(location, "dataset", name);
        const H5::DataSet dataset = location.openDataSet(name);
        const H5::DataSpace space = dataset.getSpace();
        if (space.getSimpleExtentNdims() != 1)
            throwAt(location, "dataset", name, "isn't a table of one dimension");
        checkMembers(name, type, dataset, location);
        checkSound(dataset, location, name);
        const hssize_t count = space.getSimpleExtentNpoints();
        void* const records = allocate(static_cast<hsize_t>(count));
        if (count > 0)
            dataset.read(records, type, H5::DataSpace::ALL, H5::DataSpace::ALL, wholeNumbersOnly());
    }
    catch (const H5::Exception& error) {
        throwAt(location, "dataset", name, error);
    }
}

// ---------------------------------------------------------------- texts

void putText(char* bytes, std::size_t size, const QString& text)
{
    const std::string stored = text.toStdString();
    if (stored.size() >= size)
        throw unstorable_error("The name \"" + stored + "\" takes " + std::to_string(stored.size()) + " bytes, " +
                               std::to_string(size - 1) + " can be stored.");
    if (const std::size_t end = stored.find('\0'); end != std::string::npos)
        throw unstorable_error("The name \"" + stored.substr(0, end) +
                               "\" goes on after a zero byte, where texts end.");
    std::memset(bytes, 0, size); // what follows a text is part of the file, too
    std::copy(stored.begin(), stored.end(), bytes);
}

QString takenText(const char* bytes, std::size_t size) { return storedText(std::string(bytes, strnlen(bytes, size))); }

QString storedText(const std::string& bytes)
{
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    static const QTextCodec* const utf8 = QTextCodec::codecForName("UTF-8");
    const int size = static_cast<int>(bytes.size());
    const QString text = utf8->toUnicode(bytes.data(), size, &state);
    return state.invalidChars == 0 && state.remainingChars == 0 ? text : QString::fromLatin1(bytes.data(), size);
}

} // namespace NBrenmark
