// What each kind of value looks like in a file, and what a reader takes for such a value.
#include "io/hdf5/error_text.h"
#include "io/hdf5/shapes.h"

#include "support/h5_builder.h"
#include "support/h5_tree.h"
#include "support/temp_folder.h"
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace NBrenmark {

class Shapes : public testing::Test
{
protected:
    QString path() const { return folder.path("a.h5"); }
    /// What is written into the root of a new file, as text.
    template <class TBody>
    std::string written(TBody&& body)
    {
        {
            H5::H5File file(path().toStdString(), H5F_ACC_TRUNC);
            H5::Group root = file.openGroup("/");
            body(root);
        }
        return treeOf(path());
    }
    /// Reads attribute "a" of the root.
    template <class T>
    T readBack()
    {
        const H5::H5File file(path().toStdString(), H5F_ACC_RDONLY);
        T value;
        readAttribute("a", value, file.openGroup("/"));
        return value;
    }
    template <class T>
    std::string failure()
    {
        catchHdf5Errors();
        try {
            readBack<T>();
        }
        catch (const hdf5_error& error) {
            return error.what();
        }
        return "none";
    }

private:
    CTempFolder folder;
};

TEST_F(Shapes, ofAttributesAreExact)
{
    C3DMatrix matrix;
    C3DTransform transform;
    for (int i = 0; i < 9; ++i)
        matrix.data()[i] = i;
    for (int i = 0; i < 16; ++i)
        transform.data()[i] = i;
    EXPECT_EQ(written([&](H5::Group& root) {
                  writeAttribute("int", -5, root);
                  writeAttribute("uint", 4000000000u, root);
                  writeAttribute("double", 0.1, root);
                  writeAttribute("bool", true, root);
                  writeAttribute("flags", std::vector<bool>{true, false, true}, root);
                  writeAttribute("text", QString("Gef\u00e4\u00df"), root);
                  writeAttribute("empty", QString(), root);
                  writeAttribute("point", C3DPoint(1, 2, 3), root);
                  writeAttribute("matrix3", matrix, root);
                  writeAttribute("matrix4", transform, root);
              }),
              "/\n"
              "/@int i32 = -5\n"
              "/@uint u32 = 4e+09\n"
              "/@double f64 = 0.1\n"
              "/@bool u8 = 1\n"
              "/@flags u8 {3} = 1 0 1\n"
              "/@text string[8] = \"Gef\xc3\xa4\xc3\x9f\"\n" // seven bytes of UTF-8 and the terminator
              "/@empty string[1] = \"\"\n"
              "/@point f64[3] = 1 2 3\n"
              "/@matrix3 f64[3][3] = 0 1 2 3 4 5 6 7 8\n"
              "/@matrix4 f64[4][4] = 0 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15\n");
}

TEST_F(Shapes, ofDatasetsAreExact)
{
    EXPECT_EQ(written([&](H5::Group& root) {
                  writeDataset("matrix", C3DTransform(), root);
                  writeDataset("none", QStringList(), root);
                  writeDataset("point", C3DPoint(1, 2, 3), root);
                  writeDataset("quaternion", CQuaternion(), root);
                  writeDataset("text", QString("Kugel"), root);
                  writeDataset("texts", QStringList{"a", "", "Hertz-Mindlin (no slip)"}, root);
                  writeTable<HDF5DATATYPES::SNameCountType>("table", {}, root);
              }),
              "/\n"
              "/matrix f64 {4,4}\n"
              "/none string[] {0}\n"
              "/point {xyz@0 f64[3]} 24\n"
              "/quaternion {wxyz@0 f64[4]} 32\n"
              "/table {name@0 string[256], count@256 u32} 260 {0}\n"
              "/text string[] = \"Kugel\"\n"
              "/texts string[] {3} = \"a\" \"\" \"Hertz-Mindlin (no slip)\"\n");
}

TEST_F(Shapes, ofDatasetsComeBack)
{
    C3DTransform transform;
    transform(1, 3) = 0.25;
    written([&](H5::Group& root) {
        writeDataset("matrix", transform, root);
        writeDataset("quaternion", CQuaternion(0.5, -1, 2, 7), root);
        writeDataset("text", QString("Gr\u00f6\u00dfe"), root);
        writeDataset("texts", QStringList{"b", "a"}, root);
        writeDataset("point", C3DPoint(3, 2, 1), root);
    });
    const H5::H5File file(path().toStdString(), H5F_ACC_RDONLY);
    C3DTransform matrix;
    CQuaternion quaternion;
    QString text;
    QStringList texts{"old"};
    C3DVector vector;
    readDataset("matrix", matrix, file);
    readDataset("quaternion", quaternion, file);
    readDataset("text", text, file);
    readDataset("texts", texts, file);
    readDataset("point", vector, file);
    EXPECT_EQ(matrix(1, 3), 0.25);
    EXPECT_EQ(quaternion.z, 7.0);
    EXPECT_EQ(text, QString("Gr\u00f6\u00dfe"));
    EXPECT_EQ(texts, (QStringList{"b", "a"}));
    EXPECT_EQ(vector.z, 1.0);
}

TEST_F(Shapes, areRewrittenInPlace)
{
    EXPECT_EQ(written([&](H5::Group& root) {
                  writeAttribute("a", 1u, root);
                  writeAttribute("b", 2, root);
                  rewriteAttribute("a", 7u, root);
              }),
              "/\n/@a u32 = 7\n/@b i32 = 2\n");
}

// ---------------------------------------------------------------- foreign texts

struct STextCase
{
    const char* name;
    H5T_str_t padding;
    std::string bytes;
    const char* text;
};

class ForeignTexts : public Shapes, public testing::WithParamInterface<STextCase>
{
};

TEST_P(ForeignTexts, areReadToTheirEnd)
{
    const hid_t type = H5Tcopy(H5T_C_S1);
    H5Tset_size(type, GetParam().bytes.size());
    H5Tset_strpad(type, GetParam().padding);
    CH5Builder(path()).attribute("/", "a", type, GetParam().bytes.data());
    H5Tclose(type);
    EXPECT_EQ(readBack<QString>(), QString(GetParam().text));
}

static const STextCase textCases[] = {
    {"terminated", H5T_STR_NULLTERM, std::string("abc\0", 4), "abc"},
    {"paddedBehindTheTerminator", H5T_STR_NULLTERM, std::string("abc\0\0\0\0\0", 8), "abc"},
    {"withoutATerminatorLosesTheLastByte", H5T_STR_NULLTERM, "abcd", "abc"},
    {"fullWithoutATerminator", H5T_STR_NULLPAD, "abcd", "abcd"},
    {"onlyATerminator", H5T_STR_NULLTERM, std::string("\0", 1), ""},
    {"notUtf8", H5T_STR_NULLTERM, std::string("Gef\xe4\xdf\0", 6), "Gef\u00e4\u00df"},
};

INSTANTIATE_TEST_SUITE_P(All, ForeignTexts, testing::ValuesIn(textCases),
                         [](const testing::TestParamInfo<STextCase>& tested) { return tested.param.name; });

// ---------------------------------------------------------------- what is refused

TEST_F(Shapes, reportWhatIsWrongAndWhere)
{
    const double numbers[1000] = {};
    CH5Builder(path()).attribute("/", "a", H5T_NATIVE_DOUBLE, numbers, {1000});
    EXPECT_EQ(failure<double>(), "/, attribute \"a\": 1000 values where one is needed");
    EXPECT_EQ(failure<QString>(), "/, attribute \"a\": isn't a text of fixed length");
    CH5Builder(path()).text("/", "a", "12");
    EXPECT_THAT(failure<double>(), testing::StartsWith("/, attribute \"a\": "));
    EXPECT_THAT(failure<C3DPoint>(), testing::StartsWith("/, attribute \"a\": "));
    CH5Builder(path()).text("/", "b", "");
    EXPECT_THAT(failure<qint32>(), testing::StartsWith("/, attribute \"a\": "));
}

TEST_F(Shapes, ofTablesNeedEveryMember)
{
    const hid_t type = H5Tcreate(H5T_COMPOUND, 8);
    H5Tinsert(type, "count", 0, H5T_NATIVE_UINT);
    const char record[8] = {};
    CH5Builder(path()).dataset("/", "a", type, {1}, record).dataset("/", "b", H5T_NATIVE_UINT, {2}, record);
    H5Tclose(type);
    const H5::H5File file(path().toStdString(), H5F_ACC_RDONLY);
    const auto failureOf = [&](const char* name) {
        try {
            readTable<HDF5DATATYPES::SNameCountType>(name, currentFileVersion(), file);
        }
        catch (const hdf5_error& error) {
            return std::string(error.what());
        }
        return std::string("none");
    };
    EXPECT_EQ(failureOf("a"), "/, dataset \"a\": has no member \"name\"");
    EXPECT_EQ(failureOf("b"), "/, dataset \"b\": isn't a table of records");
}

TEST(FixedTexts, takeWhatFitsAndNoByteMore)
{
    char field[8];
    putText(field, sizeof field, "1234567");
    EXPECT_EQ(takenText(field, sizeof field), "1234567");
    EXPECT_EQ(field[7], '\0');
    EXPECT_THROW(putText(field, sizeof field, "12345678"), unstorable_error);
    const QString fourLettersEightBytes("\u00e4\u00e4\u00e4\u00e4");
    EXPECT_THROW(putText(field, sizeof field, fourLettersEightBytes), unstorable_error);
    const char full[3] = {'a', 'b', 'c'}; // as only a damaged file has it
    EXPECT_EQ(takenText(full, sizeof full), "abc");
}

} // namespace NBrenmark
