// Contacts, bonds and collisions in the HDF5 family: what stands where in the file, asked of the HDF5 library
// itself; what masks leave out; and files whose arrays don't fit together.
#include "core/left_behind.h"
#include "results/timestep_data.h"

#include "hdf5_sample.h"
#include "support/log_capture.h"
#include "support/samples.h"
#include <gtest/gtest.h>

namespace NBrenmark {

/// A file with one group, to which parts of a timestep are written.
class CPairFile : public CHdf5Sample
{
public:
    void write(CTimestepData& t)
    {
        CHdf5Sample::write<CHdf5TimestepDataWriter>([&](CHdf5TimestepDataWriter& writer) {
            t.contacts.write(writer);
            t.collisions.write(writer);
            t.bonds.write(writer);
        });
    }
    template <class T>
    void read(T& object)
    {
        CHdf5Sample::read<CHdf5TimestepDataReader>(object);
    }
    H5::H5File file() { return H5::H5File(path().toStdString(), H5F_ACC_RDONLY); }
};

static quint32 attributeOf(const H5::Group& group, const char* name)
{
    quint32 value = 0;
    group.openAttribute(name).read(H5::PredType::NATIVE_UINT, &value);
    return value;
}

/// "first/, ids u3, ...": name, type, rows and columns of every dataset, groups with a slash, in alphabetical order.
/// c marks a chunked dataset.
static std::string contentOf(const H5::Group& group)
{
    std::string content;
    for (hsize_t i = 0; i < group.getNumObjs(); ++i) {
        const H5std_string name = group.getObjnameByIdx(i);
        std::string text = name;
        if (group.childObjType(name) == H5O_TYPE_DATASET) {
            const H5::DataSet dataset = group.openDataSet(name);
            hsize_t extent[2] = {0, 0};
            const int dimensions = dataset.getSpace().getSimpleExtentDims(extent);
            text += dataset.getTypeClass() == H5T_FLOAT ? " f" : " u";
            text += std::to_string(extent[0]) + (dimensions == 2 ? "x" + std::to_string(extent[1]) : "");
            text += dataset.getCreatePlist().getLayout() == H5D_CHUNKED ? "c" : "";
        }
        else
            text += "/";
        content += (content.empty() ? "" : ", ") + text;
    }
    return content;
}

TEST(Hdf5Contacts, nameWhatOfContactRecordsHasNoPlace)
{
    SModel model;
    fill(model.timestep.contacts);
    const CLogCapture log;
    CPairFile pairs;
    pairs.write(model.timestep);
    reportLeftBehind(NLogTitle::hdf5Write);
    // What the legacy family alone stores: both records of both families, three rows each.
    EXPECT_EQ(log.text(), "WARNING HDF5 write: Not carried over, for the format has no place for them: "
                          "6 values of the contact record \"Drag\".\n"
                          "WARNING HDF5 write: Not carried over, for the format has no place for them: "
                          "6 values of the contact record \"Heat \xce\x94\".\n");
}

TEST(Hdf5Collisions, endsAreNotChunkedHoweverManyThereAre)
{
    SModel model;
    model.timestep.collisions.surfaceSurface.resizeRecords(256);
    CPairFile pairs;
    pairs.write(model.timestep);
    const H5::H5File file = pairs.file();
    const H5::Group group = file.openGroup("Collisions/SurfaceSurface");
    EXPECT_EQ(contentOf(group).substr(0, 28), "end time f256c, first/, ids ");
    EXPECT_EQ(contentOf(group.openGroup("second")),
              "angular velocity f256x3, ids u256, orientation f256x4, position f256x3, radius f256, velocity f256x3");
    EXPECT_EQ(attributeOf(file.openGroup("Collisions/SurfaceGeometry"), "size"), 0u);
    EXPECT_EQ(contentOf(file.openGroup("Collisions/SurfaceGeometry")), "");
}

// ---------------------------------------------------------------- masks

TEST(Hdf5Contacts, everyMaskStoresWhatItNamesAndReadsWhatItWants)
{
    SModel source;
    CTimestepData& from = source.timestep;
    fill(from.contacts);
    fill(from.collisions);
    fill(from.bonds);
    for (quint32 bits = 0; bits < 128; ++bits) {
        const bool whenReading = (bits & 64) != 0;
        const quint32 mask = 3 | (bits & 63) << 2;
        const auto keeps = [mask](quint32 bit) { return (mask & bit) != 0; };
        CPairFile pairs;
        pairs.options.timestepMask = whenReading ? 255 : mask;
        pairs.write(from);
        SModel target;
        CTimestepData& to = target.timestep;
        const CLogCapture log;
        pairs.options.timestepMask = whenReading ? mask : 255;
        pairs.read(to.contacts);
        pairs.read(to.collisions);
        pairs.read(to.bonds);
        EXPECT_EQ(log.text(), "") << mask;
        const std::pair<CContactsBase*, quint32> families[] = {{&to.contacts.surfaceSurface, 4u},
                                                               {&to.contacts.surfaceGeometry, 8u}};
        for (const auto& [family, bit] : families) {
            ASSERT_EQ(family->rowCount(), keeps(bit) ? 3u : 0u) << mask;
            EXPECT_TRUE(family->collisionsActive);
            EXPECT_EQ(family->activeCollisions.recordCount(), family->rowCount()) << "one a row";
            EXPECT_EQ(family->activeCollisions.liveCount(), keeps(bit) && keeps(bit << 2) ? 3u : 0u) << mask;
            ASSERT_EQ(family->customProperties.itemCount(), family->rowCount());
            const std::vector<double>& values = family->customProperties.lists[0]->values;
            EXPECT_EQ(!values.empty() && values[0] != 0.0, keeps(bit) && keeps(128)) << mask;
        }
        EXPECT_EQ(to.collisions.surfaceSurface.recordCount(), keeps(16) ? 3u : 0u);
        EXPECT_EQ(to.collisions.surfaceGeometry.recordCount(), keeps(32) ? 3u : 0u);
        EXPECT_EQ(to.bonds.surfaceSurface.rowCount(), keeps(64) || whenReading ? 3u : 0u) << "no mask when read";
    }
    CLogCapture log;
    reportLeftBehind(NLogTitle::hdf5Write); // here, and not in the next test that closes a deck
}

// ---------------------------------------------------------------- files that aren't ours

class Hdf5HostileRows : public testing::Test
{
protected:
    Hdf5HostileRows()
    {
        fill(source.timestep.contacts);
        fill(source.timestep.collisions);
        fill(source.timestep.bonds);
        pairs.write(source.timestep);
    }
    ~Hdf5HostileRows() override
    {
        CLogCapture swallowed;
        reportLeftBehind(NLogTitle::hdf5Write);
    }
    template <class T>
    std::string failureOf(T& object)
    {
        return pairs.failure<CHdf5TimestepDataReader>(object);
    }

    SModel source;
    SModel target;
    CPairFile pairs;
};

TEST_F(Hdf5HostileRows, arraysOfDifferentLengthAreRefused)
{
    const double zeros[15] = {};
    pairs.change()
        .without("/Contacts/SurfaceSurface/normal overlap")
        .dataset("/Contacts/SurfaceSurface", "normal overlap", H5T_NATIVE_DOUBLE, {2}, zeros)
        .without("/Bonds/SurfaceSurface/break time")
        .dataset("/Bonds/SurfaceSurface", "break time", H5T_NATIVE_DOUBLE, {4}, zeros)
        .without("/Collisions/SurfaceGeometry/first/velocity")
        .dataset("/Collisions/SurfaceGeometry/first", "velocity", H5T_NATIVE_DOUBLE, {5, 3}, zeros);
    EXPECT_EQ(failureOf(target.timestep.contacts), "The contacts have 3 rows of contacts and 2 of normal overlap.");
    EXPECT_EQ(failureOf(target.timestep.bonds), "The bonds have 3 rows of bonds and 4 of break time.");
    EXPECT_EQ(failureOf(target.timestep.collisions), "The collisions have 3 rows of ids and 5 of velocity.");
    EXPECT_TRUE(target.timestep.contacts.surfaceSurface.rows.empty()) << "nor is half of it left";
    EXPECT_TRUE(target.timestep.bonds.surfaceSurface.breakTime.empty());
    EXPECT_EQ(target.timestep.collisions.surfaceGeometry.recordCount(), 0u);
}

TEST_F(Hdf5HostileRows, aSizeThatDiffersIsReportedAndTheArraysCount)
{
    pairs.change()
        .count("/Contacts/SurfaceSurface", "size", 4000000000u)
        .count("/Contacts/SurfaceSurface/CollisionsBase", "size", 2)
        .count("/Bonds/SurfaceGeometry", "size", 1);
    const CLogCapture log;
    EXPECT_EQ(failureOf(target.timestep.contacts), "");
    EXPECT_EQ(failureOf(target.timestep.bonds), "");
    EXPECT_EQ(log.text(), "WARNING HDF5 read: 4000000000 contacts are announced and 3 are there.\n"
                          "WARNING HDF5 read: 2 collisions are announced and 3 are there.\n"
                          "WARNING HDF5 read: 1 bonds are announced and 3 are there.\n");
    EXPECT_EQ(target.timestep.contacts.surfaceSurface.rowCount(), 3u);
    EXPECT_EQ(target.timestep.bonds.surfaceGeometry.parameters.size(), 3u);
}

TEST_F(Hdf5HostileRows, aMaskSaysWhichArraysAreRead)
{
    pairs.change()
        .count("/Contacts/SurfaceSurface", "mask", 0x21 | 0x1F00)
        .count("/Contacts/SurfaceGeometry", "mask", 0)
        .count("/Collisions/SurfaceGeometry", "mask", 0x1);
    const CLogCapture log;
    EXPECT_EQ(failureOf(target.timestep.contacts), "");
    EXPECT_EQ(failureOf(target.timestep.collisions), "");
    const CContacts& read = target.timestep.contacts;
    EXPECT_EQ(read.surfaceSurface.rows, source.timestep.contacts.surfaceSurface.rows);
    EXPECT_EQ(read.surfaceSurface.normalForce, std::vector<C3DVector>(3));
    EXPECT_EQ(read.surfaceGeometry.rowCount(), 0u);
    EXPECT_EQ(log.text(),
              "WARNING HDF5 read: 3 contacts without position, contact vector 1, contact vector 2, tangential "
              "overlap, normal force, tangential force: filled up with zeros.\n"
              "WARNING HDF5 read: 3 contacts are announced and 0 are there.\n");
    EXPECT_EQ(target.timestep.collisions.surfaceGeometry.endTime, std::vector<double>(3));
}

TEST_F(Hdf5HostileRows, whatATriangleDoesntHaveIsDroppedAndReported)
{
    const double radii[3] = {};
    pairs.change()
        .dataset("/Collisions/SurfaceGeometry/second", "radius", H5T_NATIVE_DOUBLE, {3}, radii)
        .count("/Collisions/SurfaceGeometry", "mask", 0x7FFFFF);
    const CLogCapture log;
    EXPECT_EQ(failureOf(target.timestep.collisions), "");
    EXPECT_TRUE(target.timestep.collisions.surfaceGeometry.second.radius.empty());
    EXPECT_EQ(log.count(), 1u) << log.text();
    clearLogOnceMemory();
}

} // namespace NBrenmark
