// Every stored class comes back from each family as it went in, and has the form in an HDF5 file and in text that is
// kept in tests/golden: the same rows of stored_classes.def that make the visitors make the cases here. What came back
// is compared by its text, line by line.
#include "core/left_behind.h"
#include "io/dem/dem_reader.h"
#include "io/dem/dem_writer.h"
#include "io/hdf5/hdf5_reader.h"
#include "io/hdf5/hdf5_writer.h"
#include "maths/axis_angle.h"
#include "maths/transform.h"

#include "support/golden.h"
#include "support/h5_tree.h"
#include "support/log_capture.h"
#include "support/sample_values.h"
#include "support/samples.h"
#include "support/text_lines.h"
#include <QBuffer>
#include <H5Cpp.h>
#include <gtest/gtest.h>
#include <algorithm>
#include <functional>
#include <map>
#include <ostream>
#include <sstream>

namespace NBrenmark {

enum class ERoot
{
    eCreator,
    eTimestep
};

using FWrite = std::function<void(IFileVisitorWriter&)>;
using FRead = std::function<void(IFileVisitorReader&)>;

// ---------------------------------------------------------------- the two families

static void throughLegacy(ERoot root, const FWrite& write, const FRead& read)
{
    QBuffer buffer;
    buffer.open(QIODevice::ReadWrite);
    {
        CDemDataStream stream(&buffer);
        CDemCreatorDataWriter creatorWriter(stream);
        CDemTimestepDataWriter timestepWriter(stream);
        write(root == ERoot::eCreator ? static_cast<IFileVisitorWriter&>(creatorWriter) : timestepWriter);
    }
    const qint64 end = buffer.pos();
    buffer.write(QByteArray(64, '\xa5')); // none of which may be read
    buffer.seek(0);
    CDemDataStream stream(&buffer);
    stream.options.upgradeOldModels = false; // the forms alone
    CDemCreatorDataReader creatorReader(stream);
    CDemTimestepDataReader timestepReader(stream);
    read(root == ERoot::eCreator ? static_cast<IFileVisitorReader&>(creatorReader) : timestepReader);
    EXPECT_EQ(buffer.pos(), end) << "bytes read of those written";
}

template <class TVisitor>
static void enter(TVisitor& visitor, H5::Group& group)
{
    visitor.location = &group;
    visitor.pendingName = "value"; // of what has no name of its own
}

/// A file in memory with what a writer makes of an object.
class CHdf5File
{
public:
    CHdf5File(ERoot root, const FWrite& write)
        : file("round_trip", H5F_ACC_TRUNC, H5::FileCreatPropList::DEFAULT, inMemory())
    {
        file.createGroup("/CreatorData/");
        file.createGroup("/TimestepData/");
        group = file.createGroup("/Sample/");
        CHdf5CreatorDataWriter creatorWriter(file, options);
        CHdf5TimestepDataWriter timestepWriter(file, options);
        enter(creatorWriter, group);
        enter(timestepWriter, group);
        write(root == ERoot::eCreator ? static_cast<IFileVisitorWriter&>(creatorWriter) : timestepWriter);
    }
    void read(ERoot root, const FRead& read)
    {
        CHdf5CreatorDataReader creatorReader(file, options);
        CHdf5TimestepDataReader timestepReader(file, options);
        enter(creatorReader, group);
        enter(timestepReader, group);
        creatorReader.fileVersion = timestepReader.fileVersion = currentFileVersion();
        read(root == ERoot::eCreator ? static_cast<IFileVisitorReader&>(creatorReader) : timestepReader);
    }
    std::string tree() const { return treeOf(file.getId(), "/Sample/", eAllValues); }

private:
    static H5::FileAccPropList inMemory()
    {
        H5::FileAccPropList access;
        access.setCore(1 << 16, false);
        return access;
    }
    H5::H5File file;
    H5::Group group;
    SSaveOptions options;
};

static void throughHdf5(ERoot root, const FWrite& write, const FRead& read) { CHdf5File(root, write).read(root, read); }

struct SFamily
{
    const char* name;
    void (*through)(ERoot, const FWrite&, const FRead&);
    std::vector<std::string> notStored; ///< parts of paths, with the blank after a path's end
    std::vector<std::string> notStoredInCreators;
    std::vector<std::string> notStoredInTimesteps;
};

/// What a solver has got to: a definition starts it anew. A timestep computes the bounds and magnitudes of a mesh that
/// moves.
static const std::vector<std::string> accounts{"accounting/", "Accounting/", "createdSinceRateChange ",
                                               "conveyorTransform "};

static const SFamily& legacyFamily()
{
    static const SFamily family{"legacy",
                                throughLegacy,
                                {"surfaceBased ", "autoCenterParticle ", "templateName ", "autoProperties ",
                                 "creationTime", "enableRollingFriction ", "cylindricalPeriodicBoundaryConditions/",
                                 "sizeDistributions/", "materialBlocks/", "/pluginFactories/", "/pairs/",
                                 "torqueFeedback ", "/display ", "/motions ", "/loop ", "/loopInterval ",
                                 "/loopEndTime ", "blockName "},
                                accounts,
                                {"dataMask ", "/bounds/", "Magnitude ", "/displacement ", "/cursor0 ",
                                 "/Turn#2/pointOfAction "}}; // a swing stores nothing there
    return family;
}

static const SFamily& hdf5Family()
{
    // Material blocks are a matter of the creator model, though the plain visitor has most of their forms.
    static const SFamily family{
        "hdf5", throughHdf5, {"contactRecords/"}, accounts, {"dataMask ", "boundingBox/", "/bounds/", "Magnitude "}};
    return family;
}

// ---------------------------------------------------------------- objects as lines

static std::vector<std::string> linesOf(ERoot root, const FWrite& write)
{
    CLineList lines;
    CTextWriter writer(lines, "sample", true, root == ERoot::eCreator ? ETextPart::eAll : ETextPart::eState);
    write(writer);
    return lines.all;
}

static bool holdsAny(const std::string& line, const std::vector<std::string>& parts)
{
    return std::any_of(parts.begin(), parts.end(),
                       [&](const std::string& part) { return line.find(part) != std::string::npos; });
}

static std::vector<std::string> without(std::vector<std::string> lines, const std::vector<std::string>& parts)
{
    const auto end =
        std::remove_if(lines.begin(), lines.end(), [&](const std::string& line) { return holdsAny(line, parts); });
    lines.erase(end, lines.end());
    return lines;
}

/// What no sample can change: the emptiness of what can't hold anything yet (and so of the properties of its rows),
/// numbers that count along, the model types of the default chains, and what a writer takes from its options or from
/// the build.
static const std::vector<std::string> alikeInAllObjects = {
    "/count 0",
    "/rows 0",
    "/records 0",
    "/index ",
    "/modelType ",
    "/source ",
    "isFull true",
    "timestepMask ",
    "particleMask ",
    "geometryMask ",
    "stored/",
    " f64[0",
    " u32[0",
    // What only one family or none of them can hold, and what is the one word beside others.
    "densityFactor 0.4",
    "enclosedMagnitude 0",
    "/kind \"fixed\"",
    "radiusScaling true",
    "startPoint (0, 0, 0)",
};

/// Where an object lies in its file: a matter of the file and not of the object's form.
static const std::vector<std::string> places = {"stored/sample/storageIndex ", "stored/sample/storageOffset ",
                                                "stored/sample/creator ", "stored/sample/legacyStreamFlag "};

// ---------------------------------------------------------------- the table

/// One row that both reads and writes, in one family below one root.
struct SRoundTripCase
{
    std::string name;
    const SFamily* family;
    ERoot root;
    bool onDefinition = false;
    std::function<void(const SFamily&, ERoot, bool)> roundTrip;
    std::string operation;
    std::function<std::string(bool, ERoot)> form;
};

static std::ostream& operator<<(std::ostream& stream, const SRoundTripCase& c) { return stream << c.name; }

/// A sample that is like a new object in a line wouldn't show that the line is lost.
static void expectToDifferInEveryLine(const std::vector<std::string>& sampleLines,
                                      const std::vector<std::string>& blankLines)
{
    for (const std::string& line : without(sampleLines, alikeInAllObjects))
        EXPECT_EQ(std::count(blankLines.begin(), blankLines.end(), line), 0) << "as in a new object: " << line;
}

/// The lines that one has and the other doesn't; of the same ones the order.
static void expectTheSame(const std::vector<std::string>& source, const std::vector<std::string>& back)
{
    const auto only = [](const std::vector<std::string>& a, const std::vector<std::string>& b) {
        std::string lines;
        for (const std::string& line : a)
            if (std::find(b.begin(), b.end(), line) == b.end())
                lines += line + "\n";
        return lines;
    };
    EXPECT_EQ(only(source, back), only(back, source)) << "lost, and come instead";
    EXPECT_TRUE(source == back) << "or not in this order";
}

/// Sets what a definition and the sample of a timestep would have alike, so that a timestep that loses it shows.
template <class T>
static void unsettle(T&)
{}
static void unsettle(CStaticParticleFactory& factory) { factory.completed = false; }
static void unsettle(CParticleFactoryList& list)
{
    for (const auto& factory : list.factories)
        if (auto* const pile = dynamic_cast<CStaticParticleFactory*>(factory.get()))
            unsettle(*pile);
}
static void unsettle(CGeometryGroup& group)
{
    group.standStill();
    group.resetVelocities = true;
    group.customProperties.resetToInitialValues(static_cast<unsigned int>(group.triangleNodes.size()));
    unsettle(*group.factories);
}
static void unsettle(GeometryGroups& groups)
{
    for (CGeometryGroup* group : groups.groups())
        if (group != nullptr)
            unsettle(*group);
}

/// What must stand in the file before an object can be written.
template <class T>
static void writeBefore(IFileVisitorWriter&, SModel&)
{}
template <>
void writeBefore<CCylindricalPeriodicBoundaryConditions>(IFileVisitorWriter& visitor, SModel& model)
{
    model.creator.domain.write(visitor); // in whose group they stand
}

/// \param onDefinition  the timestep brings the state of an object that a creator model has defined
template <class T, class TWrite, class TRead>
static void roundTrip(const SFamily& family, ERoot root, bool onDefinition, const TWrite& write, const TRead& read)
{
    SModel source;
    SModel target;
    const std::shared_ptr<T> object = sample<T>(source);
    const std::shared_ptr<T> back = blank<T>(target);
    const auto lines = [&](T& which) {
        return linesOf(root, [&](IFileVisitorWriter& visitor) { write(visitor, which); });
    };
    if (onDefinition && root == ERoot::eTimestep) {
        SModel model;
        const std::shared_ptr<T> definition = sample<T>(model); // of the same names, and other numbers
        family.through(
            ERoot::eCreator, [&](IFileVisitorWriter& visitor) { write(visitor, *definition); },
            [&](IFileVisitorReader& visitor) { read(visitor, *back); });
        unsettle(*back);
    }
    expectToDifferInEveryLine(lines(*object), lines(*back));

    for (SModel* model : {&source, &target})
        model->creator.setStorageIndex(2);
    CLogCapture log;
    family.through(
        root,
        [&](IFileVisitorWriter& visitor) {
            writeBefore<T>(visitor, source);
            write(visitor, *object);
        },
        [&](IFileVisitorReader& visitor) { read(visitor, *back); });
    // That a plug-in's factory isn't known here is said once a deck, by whichever form has its library.
    const bool hasFactory = std::is_same_v<T, CPluginParticleFactoryList> || std::is_same_v<T, CCreatorData>;
    EXPECT_LE(log.count(), hasFactory ? 1u : 0u) << log.text();
    reportLeftBehind(NLogTitle::hdf5Write); // here, and not in the next test that closes a deck
    const auto linesThatCount = [&](T& which) {
        std::vector<std::string> kept = without(without(lines(which), family.notStored), places);
        return without(kept, root == ERoot::eTimestep ? family.notStoredInTimesteps : family.notStoredInCreators);
    };
    expectTheSame(linesThatCount(*object), linesThatCount(*back));
}

// ---------------------------------------------------------------- the stored forms

/// The lines of the upper levels: what lies deeper is in the form of its own class.
static std::string upperLevels(const std::string& text)
{
    std::string kept;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);)
        if (std::count(line.begin(),
                       std::find_if(line.begin(), line.end(), [](char c) { return c == ' ' || c == '@'; }), '/') <= 4)
            kept += line + "\n";
    return kept;
}

/// What an HDF5 file and the text hold of the sample of a class.
template <class T, class TWrite>
static std::string formOf(bool isHdf5, ERoot root, const TWrite& write)
{
    numberStep() = 0;
    SModel model;
    const std::shared_ptr<T> object = sample<T>(model);
    model.creator.setStorageIndex(2);
    const auto writeObject = [&](IFileVisitorWriter& visitor) {
        if (isHdf5)
            writeBefore<T>(visitor, model);
        write(visitor, *object);
    };
    if (isHdf5)
        return upperLevels(CHdf5File(root, writeObject).tree());
    std::string text;
    for (const std::string& line : linesOf(root, writeObject))
        text += line + "\n";
    return upperLevels(text);
}

static bool isStored(const std::string& column, ERoot root)
{
    return column == "all" || column == "both" || column == (root == ERoot::eCreator ? "creator" : "timestep");
}

static std::vector<SRoundTripCase> allCases()
{
    std::vector<SRoundTripCase> cases;
    const auto add = [&](const char* operation, const SFamily& family, const char* readBy, const char* writtenBy,
                         const SRoundTripCase& row) {
        for (const ERoot root : {ERoot::eCreator, ERoot::eTimestep}) {
            if (!isStored(readBy, root) || !isStored(writtenBy, root))
                continue;
            cases.push_back(row);
            cases.back().name =
                std::string(family.name) + (root == ERoot::eCreator ? "Creator" : "Timestep") + operation;
            cases.back().operation = operation;
            cases.back().family = &family;
            cases.back().root = root;
            cases.back().onDefinition = std::string(readBy) == "both";
        }
    };
#define STORED(operation, type, hdf5Read, hdf5Write, legacyRead, legacyWrite, ...)                                     \
    {                                                                                                                  \
        const auto write = [](IFileVisitorWriter& visitor, type& object) { visitor.write##operation(object); };        \
        const auto read = [](IFileVisitorReader& visitor, type& object) { visitor.read##operation(object); };          \
        SRoundTripCase row;                                                                                            \
        row.roundTrip = [=](const SFamily& family, ERoot root, bool onDefinition) {                                    \
            roundTrip<type>(family, root, onDefinition, write, read);                                                  \
        };                                                                                                             \
        row.form = [=](bool isHdf5, ERoot root) { return formOf<type>(isHdf5, root, write); };                         \
        add(#operation, hdf5Family(), #hdf5Read, #hdf5Write, row);                                                     \
        add(#operation, legacyFamily(), #legacyRead, #legacyWrite, row);                                               \
    }
#include "visitors/stored_classes.def"
    return cases;
}

class StoredClass : public testing::TestWithParam<SRoundTripCase>
{
};

TEST_P(StoredClass, comesBackAsItWentIn)
{
    GetParam().roundTrip(*GetParam().family, GetParam().root, GetParam().onDefinition);
}

INSTANTIATE_TEST_SUITE_P(Each, StoredClass, testing::ValuesIn(allCases()),
                         [](const testing::TestParamInfo<SRoundTripCase>& tested) { return tested.param.name; });

TEST(StoredForms, areThoseThatAreKept)
{
    std::map<std::string, std::string> forms;
    for (const SRoundTripCase& row : allCases()) {
        std::string& form = forms[row.operation];
        const std::string root = row.root == ERoot::eCreator ? " of a creator model\n" : " of a timestep\n";
        for (const bool isHdf5 : {true, false}) {
            const std::string heading = (isHdf5 ? "HDF5" : "text") + root;
            if ((!isHdf5 || row.family == &hdf5Family()) && form.find(heading) == std::string::npos)
                form += heading + row.form(isHdf5, row.root) + "\n";
        }
    }
    reportLeftBehind(NLogTitle::hdf5Write);
    for (const auto& [operation, form] : forms)
        expectKept("classes/" + operation + ".txt", form);
}

// ---------------------------------------------------------------- every built-in model

/// A built-in model or force by itself in a list of a deck's physics, as the registry has it.
struct SModelCase
{
    std::string name;
    std::function<void(CPhysicsModels&, bool filled)> add;
};

static std::vector<SModelCase> modelsOfTheRegistry()
{
    std::vector<SModelCase> cases;
    for (const SContactModelKind& kind : contactModelKinds())
        for (const quint32 modelType : {eSphereSphereModel, eSphereGeometryModel})
            cases.push_back({kind.name + std::string(modelType == eSphereSphereModel ? " of spheres" : " of walls"),
                             [&kind, modelType](CPhysicsModels& physics, bool filled) {
                                 std::unique_ptr<IContactModel> model = kind.make(modelType);
                                 if (filled)
                                     fill(*model);
                                 physics.addContactModel(std::move(model), CPhysicsModels::atEnd);
                             }});
    for (const SExternalForceKind& kind : externalForceKinds())
        cases.push_back({kind.name, [&kind](CPhysicsModels& physics, bool filled) {
                             std::unique_ptr<IExternalForce> force = kind.make(nullptr);
                             if (filled)
                                 fill(*force);
                             physics.addExternalForce(std::move(force), CPhysicsModels::atEnd);
                         }});
    return cases;
}

/// The shared test of samples sees whole lists, in which a model without a sample isn't noticed.
TEST(EveryBuiltInModel, comesBackFromBothFamiliesWithEachOfItsParameters)
{
    const auto linesOfModels = [](CPhysicsModels& physics) {
        return linesOf(ERoot::eCreator, [&](IFileVisitorWriter& visitor) { physics.write(visitor); });
    };
    for (const SModelCase& model : modelsOfTheRegistry()) {
        const testing::Message context = testing::Message() << model.name;
        SCOPED_TRACE(context);
        CPhysicsModels source;
        CPhysicsModels asNew;
        for (CPhysicsModels* physics : {&source, &asNew})
            physics->clear();
        model.add(source, true);
        model.add(asNew, false);
        expectToDifferInEveryLine(linesOfModels(source), linesOfModels(asNew));
        for (const SFamily* family : {&legacyFamily(), &hdf5Family()}) {
            CPhysicsModels back;
            CLogCapture log;
            family->through(
                ERoot::eCreator, [&](IFileVisitorWriter& visitor) { source.write(visitor); },
                [&](IFileVisitorReader& visitor) { back.read(visitor); });
            EXPECT_EQ(log.text(), "");
            expectTheSame(without(linesOfModels(source), family->notStored),
                          without(linesOfModels(back), family->notStored));
        }
    }
}

} // namespace NBrenmark
