// Tests links, storage, filters and announced sizes of one object before it is opened or read.
#include "io/hdf5/soundness.h"

#include "core/memory_ceiling.h"
#include "io/hdf5/error_text.h"
#include "platform/free_memory.h"

#include <QtGlobal>

#include <H5Cpp.h>

#include <algorithm>
#include <atomic>
#include <limits>
#include <new>
#include <vector>

namespace NBrenmark {

// ---------------------------------------------------------------- types

static bool isSound(hid_t type);

static constexpr std::size_t mostNumberBytes = 16;

static bool isSoundNumber(hid_t type)
{
    const std::size_t bits = 8 * H5Tget_size(type);
    return bits <= 8 * mostNumberBytes && H5Tget_precision(type) > 0 &&
           static_cast<std::size_t>(H5Tget_offset(type)) + H5Tget_precision(type) <= bits;
}

static bool isSoundFloat(hid_t type)
{
    std::size_t sign = 0;
    std::size_t exponent = 0;
    std::size_t exponentBits = 0;
    std::size_t mantissa = 0;
    std::size_t mantissaBits = 0;
    if (!isSoundNumber(type) || H5Tget_fields(type, &sign, &exponent, &exponentBits, &mantissa, &mantissaBits) < 0)
        return false;
    const std::size_t bits = H5Tget_precision(type);
    return sign < bits && exponentBits > 0 && mantissaBits > 0 && exponent + exponentBits <= bits &&
           mantissa + mantissaBits <= bits;
}

static bool isSoundArray(hid_t type)
{
    const int rank = H5Tget_array_ndims(type);
    if (rank < 1 || rank > H5S_MAX_RANK)
        return false;
    std::vector<hsize_t> sizes(static_cast<std::size_t>(rank));
    H5Tget_array_dims2(type, sizes.data());
    const hid_t element = H5Tget_super(type);
    hsize_t bytes = element >= 0 ? H5Tget_size(element) : 0;
    for (const hsize_t size : sizes)
        bytes = size != 0 && bytes <= std::numeric_limits<quint32>::max() / size ? bytes * size : 0;
    const bool sound = bytes > 0 && bytes == H5Tget_size(type) && isSound(element);
    H5Tclose(element);
    return sound;
}

static bool isSoundCompound(hid_t type)
{
    const int members = H5Tget_nmembers(type);
    bool sound = members > 0;
    for (int i = 0; sound && i < members; ++i) {
        const unsigned number = static_cast<unsigned>(i);
        const hid_t member = H5Tget_member_type(type, number);
        sound = member >= 0 && H5Tget_member_offset(type, number) + H5Tget_size(member) <= H5Tget_size(type) &&
                isSound(member);
        H5Tclose(member);
    }
    return sound;
}

/// Whether the sizes inside a type agree. Types of other classes are nowhere in a deck.
static bool isSound(hid_t type)
{
    switch (H5Tget_class(type)) {
    case H5T_INTEGER: return isSoundNumber(type);
    case H5T_FLOAT: return isSoundFloat(type);
    case H5T_STRING: return H5Tget_size(type) > 0;
    case H5T_ARRAY: return isSoundArray(type);
    case H5T_COMPOUND: return isSoundCompound(type);
    default: return false;
    }
}

static constexpr const char* unsoundType = "is of a type that no deck has";

// ---------------------------------------------------------------- extents

/// The most that a byte of a deflate stream can stand for.
static constexpr hsize_t mostInflation = 1032;
/// A chunk of a foreign file may be greater than what it is inflated from lets expect, but not by any number.
static constexpr hsize_t largestOddChunk = hsize_t(64) << 20;

static hsize_t saturatedProduct(hsize_t a, hsize_t b)
{
    constexpr hsize_t most = std::numeric_limits<hsize_t>::max();
    return a != 0 && b > most / a ? most : a * b;
}

/// The table of chunks is walked from its start for each of them: this many take no time.
static constexpr hsize_t mostCheckedChunks = 5000;

/// Bytes of a chunk when it is inflated.
static hsize_t checkedChunkBytes(const H5::DataSet& dataset, const H5::DSetCreatPropList& properties,
                                 const H5::H5Location& location, const std::string& name)
{
    const H5::DataSpace space = dataset.getSpace();
    hsize_t chunk[H5S_MAX_RANK] = {};
    hsize_t extent[H5S_MAX_RANK] = {};
    hsize_t mostExtent[H5S_MAX_RANK] = {};
    const int rank = properties.getChunk(H5S_MAX_RANK, chunk);
    if (rank != space.getSimpleExtentDims(extent, mostExtent))
        throwAt(location, "dataset", name, "its chunks are of another rank");
    hsize_t bytes = dataset.getDataType().getSize();
    for (int i = 0; i < rank; ++i) {
        bytes = saturatedProduct(bytes, chunk[i]);
        // HDF5 makes no such dataset, and reads past what it has inflated for one.
        if (mostExtent[i] != H5S_UNLIMITED && chunk[i] > mostExtent[i])
            throwAt(location, "dataset", name, "its chunks are larger than itself");
    }
    return bytes;
}

/// A chunk that passed no filter must be there in its full size; HDF5 takes that for granted.
static void checkChunks(const H5::DataSet& dataset, bool isFiltered, hsize_t chunkBytes, const H5::H5Location& location,
                        const std::string& name)
{
    const H5::DataSpace space = dataset.getSpace();
    hsize_t count = 0;
    if (H5Dget_num_chunks(dataset.getId(), space.getId(), &count) < 0)
        throwAt(location, "dataset", name, "its table of chunks is damaged");
    for (hsize_t i = 0; i < std::min(count, mostCheckedChunks); ++i) {
        unsigned skippedFilters = 0;
        hsize_t size = 0;
        if (H5Dget_chunk_info(dataset.getId(), space.getId(), i, nullptr, &skippedFilters, nullptr, &size) < 0)
            throwAt(location, "dataset", name, "its table of chunks is damaged");
        if ((!isFiltered || skippedFilters != 0) && size != chunkBytes)
            throwAt(location, "dataset", name, "a chunk is " + std::to_string(size) + " bytes long");
    }
}

// ---------------------------------------------------------------- elsewhere

/// Its values must be in the file itself, after filters that are part of HDF5.
static void checkStorage(const H5::DSetCreatPropList& properties, const H5::H5Location& location,
                         const std::string& name)
{
    if (properties.getLayout() == H5D_VIRTUAL || H5Pget_external_count(properties.getId()) > 0)
        throwAt(location, "dataset", name, "its values are in another file, which isn't followed");
    for (int i = 0; i < properties.getNfilters(); ++i) {
        unsigned flags = 0;
        std::size_t parameters = 0;
        unsigned configuration = 0;
        char filterName[64] = {};
        const H5Z_filter_t filter = H5Pget_filter2(properties.getId(), static_cast<unsigned>(i), &flags, &parameters,
                                                   nullptr, sizeof filterName, filterName, &configuration);
        if (filter != H5Z_FILTER_DEFLATE && filter != H5Z_FILTER_SHUFFLE && filter != H5Z_FILTER_FLETCHER32)
            throwAt(location, "dataset", name,
                    "it needs the filter " + std::to_string(filter) + ", which isn't loaded for a deck");
    }
}

static H5T_conv_ret_t refuseOthers(H5T_conv_except_t exception, hid_t, hid_t target, void*, void*, void*)
{
    const bool isChanged = exception != H5T_CONV_EXCEPT_PRECISION && H5Tget_class(target) == H5T_INTEGER;
    return isChanged ? H5T_CONV_ABORT : H5T_CONV_UNHANDLED;
}

const H5::DSetMemXferPropList& wholeNumbersOnly()
{
    // Never freed: HDF5 may be gone before statics are.
    static const auto* const properties = [] {
        auto* const made = new H5::DSetMemXferPropList;
        made->setTypeConvCB(refuseOthers, nullptr);
        return made;
    }();
    return *properties;
}

void requireOwn(const H5::H5Location& location, const char* kind, const std::string& path)
{
    for (std::size_t begin = path.find_first_not_of('/'); begin < path.size();) {
        const std::size_t end = std::min(path.find('/', begin), path.size());
        const std::string part = path.substr(0, end);
        H5L_info_t link = {};
        if (H5Lexists(location.getId(), part.c_str(), H5P_DEFAULT) <= 0)
            return; // the open says what is missing
        if (H5Lget_info(location.getId(), part.c_str(), &link, H5P_DEFAULT) < 0 || link.type != H5L_TYPE_HARD)
            throwAt(location, kind, path, "it is a link to something elsewhere, which isn't followed");
        begin = std::min(path.find_first_not_of('/', end), path.size());
    }
}

CWithoutFilterPlugins::CWithoutFilterPlugins()
{
    H5PLget_loading_state(&before);
    H5PLset_loading_state(0);
}

CWithoutFilterPlugins::~CWithoutFilterPlugins() { H5PLset_loading_state(before); }

void checkSound(const H5::Attribute& attribute, const H5::H5Location& location, const std::string& name)
{
    if (!isSound(attribute.getDataType().getId()))
        throwAt(location, "attribute", name, unsoundType);
}

void requireRoomForHdf5()
{
    constexpr std::size_t room = std::size_t(32) << 20; // chunks on their way, metadata, what is deflated
    if (!isMemoryToBeHad(room))
        throw std::bad_alloc();
}

void requireRoomForArray(hsize_t bytes)
{
    // Asking takes as long as a small array does, and sixteen of those with their metadata take far less than the room.
    constexpr hsize_t small = 0x10000;
    static std::atomic<unsigned> smallOnes{0};
    if (bytes > small || smallOnes++ % 16 == 0)
        requireRoomForHdf5();
}

static std::atomic<hsize_t> storageCounted{0};
static std::atomic<unsigned long> fileCounted{0};
/// What a few datasets may have in common is nothing to speak of.
constexpr hsize_t storageSlack = 0x10000;

void beginStorageCount() { storageCounted = 0; }

/// Datasets that share their bytes would be inflated once for each of them.
static void countStorage(hsize_t bytes, const H5::H5Location& location, const std::string& name)
{
    hsize_t fileBytes = 0;
    const hid_t file = H5Iget_file_id(location.getId());
    H5O_info_t info = {};
    const bool isKnown = H5Fget_filesize(file, &fileBytes) >= 0 && H5Oget_info2(file, &info, H5O_INFO_BASIC) >= 0;
    H5Fclose(file);
    if (fileCounted.exchange(info.fileno) != info.fileno)
        beginStorageCount();
    storageCounted += bytes;
    if (isKnown && storageCounted > fileBytes + storageSlack)
        throwAt(location, "dataset", name, "it and those before it claim more bytes than the file has");
}

void checkSound(const H5::DataSet& dataset, const H5::H5Location& location, const std::string& name)
{
    const H5::DSetCreatPropList properties = dataset.getCreatePlist();
    checkStorage(properties, location, name);
    const H5::DataType type = dataset.getDataType();
    if (!isSound(type.getId()))
        throwAt(location, "dataset", name, unsoundType);
    const H5::DataSpace space = dataset.getSpace();
    const hssize_t points = space.getSimpleExtentNpoints();
    const hsize_t announced = saturatedProduct(points > 0 ? static_cast<hsize_t>(points) : 0, type.getSize());
    const hsize_t stored = dataset.getStorageSize();
    countStorage(stored, location, name);

    hsize_t most = stored;
    if (properties.getLayout() == H5D_CHUNKED) {
        if (properties.getNfilters() > 0)
            most = saturatedProduct(stored, mostInflation);
        const hsize_t chunkBytes = checkedChunkBytes(dataset, properties, location, name);
        if (announced > 0 && chunkBytes > std::max(most, largestOddChunk))
            throwAt(location, "dataset", name, "chunks of " + std::to_string(chunkBytes) + " bytes are too large");
        checkChunks(dataset, properties.getNfilters() > 0, chunkBytes, location, name);
    }
    if (announced > most)
        throwAt(location, "dataset", name,
                std::to_string(announced) + " bytes announced, " + std::to_string(stored) + " bytes are stored");
    admitMemory(announced, "the values of a dataset");
}

} // namespace NBrenmark
