#pragma once
// A numbered file of a converted deck, opened to be changed by plain HDF5 calls.

#include <QString>

#include <H5Cpp.h>

#include <string>
#include <vector>

namespace NBrenmark {

class CStoredPart
{
public:
    /// \param branch  "TimestepData" or "CreatorData": all paths begin in its one child
    CStoredPart(const QString& path, const char* branch) : file(path.toStdString(), H5F_ACC_RDWR)
    {
        const H5::Group all = file.openGroup(branch);
        root = all.openGroup(all.getObjnameByIdx(0));
    }

    /// Flips the lowest bit of a byte of a dataset.
    void flip(const std::string& path, size_t byte)
    {
        H5::DataSet data = root.openDataSet(path);
        std::vector<char> bytes(data.getInMemDataSize());
        data.read(bytes.data(), data.getDataType());
        bytes.at(byte) = static_cast<char>(bytes[byte] ^ 1);
        data.write(bytes.data(), data.getDataType());
    }
    /// The checksum of an array's first chunk.
    void damageChunk(const std::string& path)
    {
        const H5::DataSet data = root.openDataSet(path);
        const hsize_t offset[2] = {};
        hsize_t size = 0;
        uint32_t filters = 0;
        H5Dget_chunk_storage_size(data.getId(), offset, &size);
        std::vector<char> stored(size);
        H5Dread_chunk(data.getId(), H5P_DEFAULT, offset, &filters, stored.data());
        stored.at(size - 1) ^= 1;
        H5Dwrite_chunk(data.getId(), H5P_DEFAULT, filters, offset, size, stored.data());
    }
    template <class T>
    void attribute(const std::string& group, const char* name, T value)
    {
        H5::Attribute attribute = at(group).openAttribute(name);
        attribute.write(attribute.getDataType(), &value);
    }
    /// A text of as many bytes as the one that is there.
    void text(const std::string& group, const char* name, const char* value)
    {
        H5::Attribute attribute = at(group).openAttribute(name);
        attribute.write(attribute.getDataType(), value);
    }
    void remove(const std::string& path) { root.unlink(path); }
    void removeAttribute(const std::string& group, const char* name) { at(group).removeAttr(name); }

    // What no deck has.
    void addAttribute(const std::string& group, const char* name)
    {
        const double value = 1.5;
        at(group)
            .createAttribute(name, H5::PredType::NATIVE_DOUBLE, H5S_SCALAR)
            .write(H5::PredType::NATIVE_DOUBLE, &value);
    }
    void addDataset(const std::string& path)
    {
        root.createDataSet(path, H5::PredType::NATIVE_DOUBLE, H5::DataSpace(H5S_SCALAR));
    }
    void addGroup(const std::string& path) { root.createGroup(path); }

    /// Puts a dataset of another type or extent in the place of a list of whole numbers.
    void replaceList(const std::string& path, const H5::PredType& type, hsize_t dropped, double added)
    {
        const H5::DataSet data = root.openDataSet(path);
        std::vector<double> values(static_cast<size_t>(data.getSpace().getSimpleExtentNpoints()));
        data.read(values.data(), H5::PredType::NATIVE_DOUBLE);
        root.unlink(path);
        const hsize_t count = values.size() - dropped;
        values[0] += added;
        root.createDataSet(path, type, H5::DataSpace(1, &count)).write(values.data(), H5::PredType::NATIVE_DOUBLE);
    }

    H5::H5File file;
    H5::Group root;

private:
    H5::Group at(const std::string& group) { return group.empty() ? root : root.openGroup(group); }
};

} // namespace NBrenmark
