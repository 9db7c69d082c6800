#include "support/h5_tree.h"

#include <QFile>
#include <hdf5.h>
#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <vector>

namespace NBrenmark {

static std::string number(double value) { return QString::number(value, 'g', 9).toStdString(); }

static std::string braces(const std::vector<hsize_t>& sizes)
{
    std::string text;
    for (const hsize_t size : sizes)
        text += (text.empty() ? "" : ",") + std::to_string(size);
    return "{" + text + "}";
}

// ---------------------------------------------------------------- types

std::string typeText(hid_t type)
{
    const std::string bits = std::to_string(8 * H5Tget_size(type));
    switch (H5Tget_class(type)) {
    case H5T_INTEGER:
        return (H5Tget_sign(type) == H5T_SGN_NONE ? "u" : "i") + bits +
               (H5Tget_order(type) == H5Tget_order(H5T_NATIVE_INT) ? "" : " swapped");
    case H5T_FLOAT: return "f" + bits;
    case H5T_STRING: {
        if (H5Tis_variable_str(type) > 0)
            return "string[]";
        const char* const padding[] = {"", " null padded", " space padded"};
        return "string[" + std::to_string(H5Tget_size(type)) + "]" + padding[H5Tget_strpad(type)];
    }
    case H5T_ARRAY: {
        hsize_t sizes[H5S_MAX_RANK] = {};
        const int rank = H5Tget_array_dims2(type, sizes);
        const hid_t element = H5Tget_super(type);
        std::string text = typeText(element);
        H5Tclose(element);
        for (int i = 0; i < rank; ++i)
            text += "[" + std::to_string(sizes[i]) + "]";
        return text;
    }
    case H5T_COMPOUND: {
        std::string text;
        for (unsigned i = 0; i < static_cast<unsigned>(H5Tget_nmembers(type)); ++i) {
            char* const name = H5Tget_member_name(type, i);
            const hid_t member = H5Tget_member_type(type, i);
            text += (i == 0 ? "" : ", ") + std::string(name) + "@" + std::to_string(H5Tget_member_offset(type, i)) +
                    " " + typeText(member);
            H5Tclose(member);
            H5free_memory(name);
        }
        return "{" + text + "} " + std::to_string(H5Tget_size(type));
    }
    default: return "other";
    }
}

static std::vector<hsize_t> extentOf(hid_t space)
{
    std::vector<hsize_t> sizes(static_cast<std::size_t>(H5Sget_simple_extent_ndims(space)));
    H5Sget_simple_extent_dims(space, sizes.data(), nullptr);
    return sizes;
}

// ---------------------------------------------------------------- values

/// One value of a native type: numbers as doubles, a row of a table in braces.
static std::string valueText(hid_t type, const char* bytes)
{
    switch (H5Tget_class(type)) {
    case H5T_STRING: {
        const char* const text = H5Tis_variable_str(type) > 0 ? *reinterpret_cast<const char* const*>(bytes) : bytes;
        const std::size_t most = H5Tis_variable_str(type) > 0 ? std::strlen(text) : H5Tget_size(type);
        return "\"" + std::string(text, strnlen(text, most)) + "\"";
    }
    case H5T_ARRAY: {
        const hid_t element = H5Tget_super(type);
        std::string text;
        for (std::size_t at = 0; at < H5Tget_size(type); at += H5Tget_size(element))
            text += (at == 0 ? "" : " ") + valueText(element, bytes + at);
        H5Tclose(element);
        return text;
    }
    case H5T_COMPOUND: {
        std::string text;
        for (unsigned i = 0; i < static_cast<unsigned>(H5Tget_nmembers(type)); ++i) {
            const hid_t member = H5Tget_member_type(type, i);
            text += (i == 0 ? "" : ", ") + valueText(member, bytes + H5Tget_member_offset(type, i));
            H5Tclose(member);
        }
        return "{" + text + "}";
    }
    default: {
        double value = 0.0;
        std::vector<char> converted(std::max(sizeof value, H5Tget_size(type)));
        std::memcpy(converted.data(), bytes, H5Tget_size(type));
        H5Tconvert(type, H5T_NATIVE_DOUBLE, 1, converted.data(), nullptr, H5P_DEFAULT);
        std::memcpy(&value, converted.data(), sizeof value);
        return number(value);
    }
    }
}

/// \param read  fills memory of a type
template <class TRead>
static std::string valuesText(hid_t stored, hid_t space, hssize_t mostValues, TRead&& read)
{
    const auto points = static_cast<std::size_t>(H5Sget_simple_extent_npoints(space));
    const hid_t type = H5Tget_native_type(stored, H5T_DIR_ASCEND);
    std::size_t values = points;
    if (H5Tget_class(type) == H5T_ARRAY) {
        const hid_t element = H5Tget_super(type);
        values *= H5Tget_size(type) / H5Tget_size(element);
        H5Tclose(element);
    }
    std::string text;
    if (points > 0 && values <= static_cast<std::size_t>(mostValues)) {
        std::vector<char> bytes(points * H5Tget_size(type));
        read(type, bytes.data());
        for (std::size_t i = 0; i < points; ++i)
            text += " " + valueText(type, bytes.data() + i * H5Tget_size(type));
        if (H5Tget_class(type) == H5T_STRING && H5Tis_variable_str(type) > 0)
            H5Dvlen_reclaim(type, space, H5P_DEFAULT, bytes.data());
    }
    H5Tclose(type);
    return text.empty() ? text : " =" + text;
}

static std::string attributeText(hid_t attribute)
{
    const hid_t type = H5Aget_type(attribute);
    const hid_t space = H5Aget_space(attribute);
    std::string text = typeText(type);
    if (H5Sget_simple_extent_type(space) != H5S_SCALAR)
        text += " " + braces(extentOf(space));
    text += valuesText(type, space, 16, [&](hid_t memory, void* values) { H5Aread(attribute, memory, values); });
    H5Sclose(space);
    H5Tclose(type);
    return text;
}

static std::string layoutText(hid_t dataset)
{
    const hid_t properties = H5Dget_create_plist(dataset);
    std::string text;
    if (H5Pget_layout(properties) == H5D_CHUNKED) {
        std::vector<hsize_t> chunk(H5S_MAX_RANK);
        chunk.resize(static_cast<std::size_t>(H5Pget_chunk(properties, H5S_MAX_RANK, chunk.data())));
        text += " chunks " + braces(chunk);
    }
    for (unsigned i = 0; i < static_cast<unsigned>(H5Pget_nfilters(properties)); ++i) {
        unsigned flags = 0;
        unsigned values[1] = {};
        size_t count = 1;
        const H5Z_filter_t filter = H5Pget_filter2(properties, i, &flags, &count, values, 0, nullptr, nullptr);
        text += filter == H5Z_FILTER_DEFLATE ? " deflate " + std::to_string(values[0]) : " other filter";
    }
    H5Pclose(properties);
    return text;
}

static std::string datasetText(hid_t dataset, ETreeDetail detail)
{
    const hid_t type = H5Dget_type(dataset);
    const hid_t space = H5Dget_space(dataset);
    std::string text = typeText(type);
    if (H5Sget_simple_extent_type(space) != H5S_SCALAR)
        text += " " + braces(extentOf(space));
    text += layoutText(dataset);
    if (H5Tget_class(type) != H5T_COMPOUND || detail == eAllValues)
        text += valuesText(type, space, detail == eAllValues ? 64 : 6, [&](hid_t memory, void* values) {
            H5Dread(dataset, memory, H5S_ALL, H5S_ALL, H5P_DEFAULT, values);
        });
    H5Sclose(space);
    H5Tclose(type);
    return text;
}

// ---------------------------------------------------------------- the walk

static void walk(hid_t group, const std::string& path, ETreeDetail detail, std::string& lines)
{
    lines += path + "\n";
    H5O_info_t info = {};
    H5Oget_info2(group, &info, H5O_INFO_NUM_ATTRS);
    for (hsize_t i = 0; i < info.num_attrs; ++i) {
        const hid_t attribute = H5Aopen_by_idx(group, ".", H5_INDEX_NAME, H5_ITER_NATIVE, i, H5P_DEFAULT, H5P_DEFAULT);
        char name[256] = {};
        H5Aget_name(attribute, sizeof name, name);
        lines += path + "@" + name + " " + attributeText(attribute) + "\n";
        H5Aclose(attribute);
    }
    H5G_info_t members = {};
    H5Gget_info(group, &members);
    for (hsize_t i = 0; i < members.nlinks; ++i) {
        char name[256] = {};
        H5Lget_name_by_idx(group, ".", H5_INDEX_NAME, H5_ITER_INC, i, name, sizeof name, H5P_DEFAULT);
        const hid_t member = H5Oopen(group, name, H5P_DEFAULT);
        if (H5Iget_type(member) == H5I_GROUP)
            walk(member, path + name + "/", detail, lines);
        else
            lines += path + name + " " + datasetText(member, detail) + "\n";
        H5Oclose(member);
    }
}

std::string treeOf(const QString& path, const std::string& from)
{
    const hid_t file = H5Fopen(QFile::encodeName(path).constData(), H5F_ACC_RDONLY, H5P_DEFAULT);
    if (file < 0)
        throw std::runtime_error("can't open " + path.toStdString());
    std::string lines = treeOf(file, from, eFewValues);
    H5Fclose(file);
    return lines;
}

std::string treeOf(hid_t file, const std::string& from, ETreeDetail detail)
{
    const hid_t group = H5Gopen2(file, from.c_str(), H5P_DEFAULT);
    std::string lines;
    walk(group, from, detail, lines);
    H5Gclose(group);
    return lines;
}

} // namespace NBrenmark
