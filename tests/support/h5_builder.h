#pragma once
// HDF5 files made by hand, with the plain C interface of HDF5 and nothing of the library's own: what readers are held
// against, files of old versions and damaged ones among them.

#include <QFile>
#include <QString>
#include <hdf5.h>
#include <stdexcept>
#include <string>
#include <vector>

namespace NBrenmark {

/// A file that is open from its making to its end. Paths are absolute; groups on the way are made.
class CH5Builder
{
public:
    explicit CH5Builder(const QString& path, bool isNew = true)
        : file(isNew ? H5Fcreate(QFile::encodeName(path).constData(), H5F_ACC_TRUNC, H5P_DEFAULT, H5P_DEFAULT)
                     : H5Fopen(QFile::encodeName(path).constData(), H5F_ACC_RDWR, H5P_DEFAULT))
    {
        if (file < 0)
            throw std::runtime_error("can't make " + path.toStdString());
    }
    ~CH5Builder() { H5Fclose(file); }
    CH5Builder(const CH5Builder&) = delete;
    CH5Builder& operator=(const CH5Builder&) = delete;

    CH5Builder& group(const std::string& path)
    {
        H5Gclose(madeGroup(path));
        return *this;
    }

    CH5Builder& text(const std::string& group, const std::string& name, const std::string& value)
    {
        const hid_t type = H5Tcopy(H5T_C_S1);
        H5Tset_size(type, value.size() + 1);
        attribute(group, name, type, value.c_str());
        H5Tclose(type);
        return *this;
    }
    CH5Builder& number(const std::string& group, const std::string& name, double value)
    {
        return attribute(group, name, H5T_NATIVE_DOUBLE, &value);
    }
    CH5Builder& integer(const std::string& group, const std::string& name, int value)
    {
        return attribute(group, name, H5T_NATIVE_INT, &value);
    }
    CH5Builder& count(const std::string& group, const std::string& name, unsigned value)
    {
        return attribute(group, name, H5T_NATIVE_UINT, &value);
    }
    CH5Builder& flag(const std::string& group, const std::string& name, bool value)
    {
        const unsigned char byte = value ? 1 : 0;
        return attribute(group, name, H5T_NATIVE_UCHAR, &byte);
    }
    CH5Builder& point(const std::string& group, const std::string& name, double x, double y, double z)
    {
        const double values[] = {x, y, z};
        const hsize_t size = 3;
        const hid_t type = H5Tarray_create2(H5T_NATIVE_DOUBLE, 1, &size);
        attribute(group, name, type, values);
        H5Tclose(type);
        return *this;
    }

    /// A dataset of any type and shape; no extent makes it a scalar.
    CH5Builder& dataset(const std::string& group, const std::string& name, hid_t type,
                        const std::vector<hsize_t>& extent, const void* values, hid_t properties = H5P_DEFAULT)
    {
        const hid_t place = madeGroup(group);
        const hid_t space = extent.empty() ? H5Screate(H5S_SCALAR)
                                           : H5Screate_simple(static_cast<int>(extent.size()), extent.data(), nullptr);
        const hid_t made = H5Dcreate2(place, name.c_str(), type, space, H5P_DEFAULT, properties, H5P_DEFAULT);
        if (values != nullptr)
            H5Dwrite(made, type, H5S_ALL, H5S_ALL, H5P_DEFAULT, values);
        H5Dclose(made);
        H5Sclose(space);
        H5Gclose(place);
        return *this;
    }

    /// A list of texts of variable length.
    CH5Builder& texts(const std::string& group, const std::string& name, const std::vector<const char*>& values)
    {
        const hid_t type = H5Tcopy(H5T_C_S1);
        H5Tset_size(type, H5T_VARIABLE);
        dataset(group, name, type, {values.size()}, values.empty() ? nullptr : values.data());
        H5Tclose(type);
        return *this;
    }

    /// Removes a group or dataset, or an attribute of a group.
    CH5Builder& without(const std::string& path)
    {
        H5Ldelete(file, path.c_str(), H5P_DEFAULT);
        return *this;
    }
    CH5Builder& renamed(const std::string& path, const std::string& newPath)
    {
        H5Lmove(file, path.c_str(), file, newPath.c_str(), H5P_DEFAULT, H5P_DEFAULT);
        return *this;
    }
    CH5Builder& withoutAttribute(const std::string& group, const std::string& name)
    {
        H5Adelete_by_name(file, group.c_str(), name.c_str(), H5P_DEFAULT);
        return *this;
    }

    CH5Builder& attribute(const std::string& group, const std::string& name, hid_t type, const void* value,
                          const std::vector<hsize_t>& extent = {})
    {
        const hid_t place = madeGroup(group);
        const hid_t space = extent.empty() ? H5Screate(H5S_SCALAR)
                                           : H5Screate_simple(static_cast<int>(extent.size()), extent.data(), nullptr);
        if (H5Aexists(place, name.c_str()) > 0)
            H5Adelete(place, name.c_str());
        const hid_t made = H5Acreate2(place, name.c_str(), type, space, H5P_DEFAULT, H5P_DEFAULT);
        H5Awrite(made, type, value);
        H5Aclose(made);
        H5Sclose(space);
        H5Gclose(place);
        return *this;
    }

private:
    hid_t madeGroup(const std::string& path)
    {
        if (path == "/")
            return H5Gopen2(file, "/", H5P_DEFAULT);
        const hid_t links = H5Pcreate(H5P_LINK_CREATE);
        H5Pset_create_intermediate_group(links, 1);
        const bool isThere = exists(path);
        const hid_t group = isThere ? H5Gopen2(file, path.c_str(), H5P_DEFAULT)
                                    : H5Gcreate2(file, path.c_str(), links, H5P_DEFAULT, H5P_DEFAULT);
        H5Pclose(links);
        if (group < 0)
            throw std::runtime_error("no group " + path);
        return group;
    }

    /// Asks step by step, for HDF5 complains about a missing step on the way.
    bool exists(const std::string& path) const
    {
        for (std::size_t end = path.find('/', 1); end != std::string::npos; end = path.find('/', end + 1))
            if (H5Lexists(file, path.substr(0, end).c_str(), H5P_DEFAULT) <= 0)
                return false;
        return path.back() == '/' || H5Lexists(file, path.c_str(), H5P_DEFAULT) > 0;
    }

    hid_t file;
};

} // namespace NBrenmark
