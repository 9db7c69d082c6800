// How arrays are laid out in a file, and what a reader believes of an array's announced size.
#include "core/thread_pool.h"
#include "io/hdf5/bulk_arrays.h"
#include "io/hdf5/chunk_inflating.h"
#include "io/hdf5/chunk_queue.h"
#include "io/hdf5/error_text.h"

#include "support/h5_builder.h"
#include "support/h5_tree.h"
#include "support/temp_folder.h"
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <cmath>
#include <map>
#include <numeric>
#include <ostream>
#include <set>

namespace NBrenmark {

// ---------------------------------------------------------------- layout

struct SLayoutCase
{
    hsize_t rows;
    hsize_t columns;
    const char* layout; ///< in the file, compressed
};

static std::ostream& operator<<(std::ostream& stream, const SLayoutCase& c)
{
    return stream << c.rows << " rows of " << c.columns;
}

class ArrayLayout : public testing::TestWithParam<SLayoutCase>
{
};

// A chunk takes min(rows, 250000) values: 250000 / 3 = 83333.3, 250000 / 7 = 35714.3.
static const SLayoutCase layoutCases[] = {
    {0, 0, "{0}"},
    {0, 3, "{0,3}"},
    {255, 0, "{255}"},
    {255, 7, "{255,7}"},
    {256, 0, "{256} chunks {256} deflate 6"},
    {256, 3, "{256,3} chunks {85,3} deflate 6"},
    {256, 4, "{256,4} chunks {64,4} deflate 6"},
    {256, 7, "{256,7} chunks {36,7} deflate 6"},
    {250000, 3, "{250000,3} chunks {83333,3} deflate 6"},
    {250001, 0, "{250001} chunks {250000} deflate 6"},
    {1000000, 3, "{1000000,3} chunks {83333,3} deflate 6"},
    {1000000, 7, "{1000000,7} chunks {35714,7} deflate 6"},
};

TEST_P(ArrayLayout, goesByTheRows)
{
    const CTempFolder folder;
    const SArrayShape shape{GetParam().rows, GetParam().columns};
    const std::vector<double> values(shape.elements(), 1.5);
    const std::string expected = "/\n/a f64 " + std::string(GetParam().layout) + "\n";
    for (const bool compress : {true, false}) {
        {
            H5::H5File file(folder.path("a.h5").toStdString(), H5F_ACC_TRUNC);
            CArrayWriter(file, compress).write("a", H5::PredType::NATIVE_DOUBLE, shape, values.data(), shape.rows);
        }
        std::string written = treeOf(folder.path("a.h5"));
        if (!compress && expected.find(" deflate") != std::string::npos)
            written.insert(written.size() - 1, " deflate 6"); // all else is the same
        EXPECT_EQ(written, expected);
    }
}

INSTANTIATE_TEST_SUITE_P(All, ArrayLayout, testing::ValuesIn(layoutCases));

TEST(ArrayLayouts, ofCustomPropertiesGoByAllValues)
{
    // 100 items of 3 are 300 values: chunked, though there are fewer than 256 items.
    EXPECT_EQ(arrayLayout(300, 3, true).chunkRows, 100u);
    // The widest property there is, with the fewest items that make a chunk.
    EXPECT_EQ(arrayLayout(256, 256, true).chunkRows, 1u);
    EXPECT_EQ(arrayLayout(255, 255, true).chunkRows, 0u);
    EXPECT_EQ(arrayLayout(10000000, 256, true).chunkRows, 976u); // 250000 / 256
}

TEST(ArrayLayouts, areLeftAloneForShortArraysOfAFixedLength)
{
    const CTempFolder folder;
    const std::vector<double> values(900, 2.0);
    {
        H5::H5File file(folder.path("a.h5").toStdString(), H5F_ACC_TRUNC);
        CArrayWriter(file, true).writePlain("a", H5::PredType::NATIVE_DOUBLE, {300, 3}, values.data());
    }
    EXPECT_EQ(treeOf(folder.path("a.h5")), "/\n/a f64 {300,3}\n");
}

// ---------------------------------------------------------------- deflated outside of HDF5

/// Where the chunks of dataset "a" lie in the file, and what they are.
static std::string chunksOf(const QString& path)
{
    const H5::H5File file(path.toStdString(), H5F_ACC_RDONLY);
    const H5::DataSet dataset = file.openDataSet("a");
    const H5::DataSpace space = dataset.getSpace();
    QFile bytes(path);
    EXPECT_TRUE(bytes.open(QIODevice::ReadOnly));
    hsize_t count = 0, size = 0;
    haddr_t address = 0;
    std::string chunks;
    H5Dget_num_chunks(dataset.getId(), space.getId(), &count);
    for (hsize_t i = 0; i < count; ++i) {
        EXPECT_GE(H5Dget_chunk_info(dataset.getId(), space.getId(), i, nullptr, nullptr, &address, &size), 0);
        bytes.seek(static_cast<qint64>(address));
        chunks += std::to_string(address) + bytes.read(static_cast<qint64>(size)).toStdString();
    }
    return chunks;
}

TEST(ArrayDeflating, givesOneFileWithAnyNumberOfThreadsThatTheFilterOfHdf5Inflates)
{
    const CTempFolder folder;
    for (const hsize_t columns : {hsize_t(0), hsize_t(3)}) {
        std::vector<double> values(700000 * std::max<hsize_t>(columns, 1) + 7 * columns); // the last chunk isn't full
        for (size_t i = 0; i < values.size(); ++i)
            values[i] = i % 5 == 0 ? 1.0 : std::sqrt(double(i));
        const SArrayShape shape{values.size() / std::max<hsize_t>(columns, 1), columns};
        std::set<std::string> files;
        for (const unsigned threads : {1u, 4u}) {
            const CThreadPool pool(threads);
            const QString path = folder.path("a.h5");
            {
                H5::H5File file(path.toStdString(), H5F_ACC_TRUNC);
                CChunkQueue chunks;
                CArrayWriter(file, true).write("a", H5::PredType::NATIVE_DOUBLE, shape, values.data(), shape.rows);
                CArrayWriter(file, true).write("b", H5::PredType::NATIVE_DOUBLE, shape, values.data(), shape.rows);
                chunks.finish();
            }
            files.insert(chunksOf(path));
            std::vector<double> back(values.size());
            CChunkInflating chunks;
            std::map<std::string, std::vector<double>> inflated;
            for (const std::string name : {"a", "b"}) {
                const H5::DataSet dataset = H5::H5File(path.toStdString(), H5F_ACC_RDONLY).openDataSet(name);
                dataset.read(back.data(), H5::PredType::NATIVE_DOUBLE);
                EXPECT_TRUE(back == values) << threads;
                inflated[name].resize(values.size());
                EXPECT_TRUE(chunks.add(dataset, H5::PredType::NATIVE_DOUBLE, inflated[name].data(),
                                       [] { ADD_FAILURE() << "HDF5 is asked"; }));
            }
            chunks.finish();
            EXPECT_TRUE(inflated["a"] == values && inflated["b"] == values) << threads;
        }
        EXPECT_EQ(files.size(), 1u);
    }
}

TEST(ChunkInflating, leavesTheArrayOfADamagedChunkToHdf5AndFillsTheOthers)
{
    const CTempFolder folder;
    const QString path = folder.path("a.h5");
    const std::vector<double> values(300000, 0.1); // a full chunk and another one
    H5::H5File file(path.toStdString(), H5F_ACC_TRUNC);
    CChunkInflating chunks;
    std::map<std::string, std::vector<double>> arrays;
    std::vector<std::string> left;
    for (const std::string name : {"a", "b", "c"}) {
        CArrayWriter(file, true)
            .write(name, H5::PredType::NATIVE_DOUBLE, {values.size(), 0}, values.data(), values.size());
        const H5::DataSet dataset = file.openDataSet(name);
        const hsize_t second[1] = {250000};
        if (name == "b")
            H5Dwrite_chunk(dataset.getId(), H5P_DEFAULT, 0, second, 7, "no zlib");
        arrays[name].resize(values.size());
        chunks.add(dataset, H5::PredType::NATIVE_DOUBLE, arrays[name].data(), [&left, name] { left.push_back(name); });
    }
    chunks.finish();
    EXPECT_THAT(left, testing::ElementsAre("b"));
    EXPECT_TRUE(arrays["a"] == values && arrays["c"] == values);
}

// ---------------------------------------------------------------- reading

class ArrayReading : public testing::Test
{
protected:
    /// Reads dataset "a" of the built file; -1 for memory that was asked for.
    std::vector<double> read(hsize_t columns)
    {
        H5::H5File file(path().toStdString(), H5F_ACC_RDONLY);
        std::vector<double> values;
        CArrayReader(file).read("a", H5::PredType::NATIVE_DOUBLE, columns, [&](const SArrayShape& shape) {
            isAllocated = true;
            values.resize(shape.elements());
            return static_cast<void*>(values.data());
        });
        return values;
    }
    std::string failureOf(hsize_t columns)
    {
        catchHdf5Errors();
        try {
            read(columns);
        }
        catch (const hdf5_error& error) {
            return error.what();
        }
        return "none";
    }
    QString path() const { return folder.path("a.h5"); }

    bool isAllocated = false;

private:
    CTempFolder folder;
};

TEST_F(ArrayReading, convertsFromTheNumbersThatTheFileHas)
{
    const unsigned char bytes[] = {7, 0, 255};
    CH5Builder(path()).dataset("/", "a", H5T_NATIVE_UCHAR, {3}, bytes);
    EXPECT_THAT(read(0), testing::ElementsAre(7.0, 0.0, 255.0));
}

TEST_F(ArrayReading, takesRowsOfAnyWidthWhereThatIsAsked)
{
    const double values[] = {1, 2, 3, 4, 5, 6};
    CH5Builder(path()).dataset("/", "a", H5T_NATIVE_DOUBLE, {3, 2}, values);
    EXPECT_THAT(read(CArrayReader::anyColumns), testing::ElementsAreArray(values));
}

TEST_F(ArrayReading, reportsWhatDoesNotFit)
{
    const double values[12] = {};
    CH5Builder(path()).dataset("/", "a", H5T_NATIVE_DOUBLE, {4, 3}, values);
    EXPECT_EQ(failureOf(0), "/, dataset \"a\": 2 dimensions where 1 are needed");
    EXPECT_EQ(failureOf(4), "/, dataset \"a\": rows of 3 where rows of 4 are needed");
    EXPECT_FALSE(isAllocated);
    CH5Builder(path()).group("/b");
    EXPECT_THAT(failureOf(3), testing::StartsWith("/, dataset \"a\": "));
}

// 2^40 rows of doubles would be 8 TB. In none of these files are there bytes for them.
TEST_F(ArrayReading, takesNoMemoryForWhatTheFileCannotHold)
{
    constexpr hsize_t many = hsize_t(1) << 40;
    const hid_t chunked = H5Pcreate(H5P_DATASET_CREATE);
    const hsize_t chunk = 1024;
    H5Pset_chunk(chunked, 1, &chunk);
    const hid_t deflated = H5Pcopy(chunked);
    H5Pset_deflate(deflated, 6);
    for (const hid_t properties : {hid_t(H5P_DEFAULT), chunked, deflated}) {
        CH5Builder(path()).dataset("/", "a", H5T_NATIVE_DOUBLE, {many}, nullptr, properties);
        EXPECT_EQ(failureOf(0), "/, dataset \"a\": 8796093022208 bytes announced, 0 bytes are stored");
    }
    H5Pclose(deflated);
    H5Pclose(chunked);
    EXPECT_FALSE(isAllocated);
}

TEST_F(ArrayReading, readsWhatCompressesBest)
{
    // A chunk of 2000000 zero bytes deflates to less than 2000: as dense as deflate gets.
    const std::vector<double> values(1000000, 0.0);
    {
        H5::H5File file(path().toStdString(), H5F_ACC_TRUNC);
        CArrayWriter(file, true)
            .write("a", H5::PredType::NATIVE_DOUBLE, {values.size(), 0}, values.data(), values.size());
    }
    EXPECT_LT(QFile(path()).size(), 20000);
    EXPECT_EQ(read(0).size(), values.size());
}

} // namespace NBrenmark
