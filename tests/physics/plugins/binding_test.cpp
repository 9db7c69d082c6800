// Plug-ins of every kind and interface version, good and broken ones, from their files to bound models.
#include "model/factories/plugin_factory.h"
#include "model/factories/plugin_factory_list.h"
#include "model/factories/plugins/particle_factories.h"
#include "model/particle_types.h"
#include "physics/physics_models.h"
#include "physics/plugins/contact_models.h"
#include "physics/plugins/external_forces.h"
#include "results/physics_linked_property_manager.h"

#include "support/log_capture.h"
#include "support/plugin_folders.h"
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <dlfcn.h>
#include <future>
#include <sys/stat.h>

namespace NBrenmark {

using testing::HasSubstr;

/// "p:Wear (particle):1:0.5" for each property: owner, name, elements, first initial value.
template <class TPlugin>
static std::string neededBy(const TPlugin& plugin)
{
    std::string text;
    for (const int owner : {0, 1, 2, 3})
        for (const auto& property : plugin.requiredProperties(owner))
            text += "pcgs"[owner] + (':' + property->name) + ':' + std::to_string(property->numberOfElements) + ':' +
                    QString::number(property->initialValue(0)).toStdString() + ' ';
    return text;
}

/// Binds a plug-in, whose kind is in its name. \return what it needs, or "not bound"
static std::string boundAs(const std::string& plugin, SPluginFoldersOfTest& folders)
{
    const QString file = folders.put(plugin, "user/Mine.so");
    std::string needed = "not bound";
    CPluginParticleFactoryList list;
    if (const auto model = plugin[2] == 'd' ? createContactModel("Mine", eSphereGeometryModel, ePluginModel) : nullptr)
        needed = neededBy(*model);
    if (const auto force = plugin[2] == 'r' ? createExternalForce("Mine", ePluginModel, nullptr) : nullptr)
        needed = neededBy(*force);
    if (const auto* const factory = plugin[2] == 'c' ? list.addFactory("Mine", "Feed") : nullptr)
        needed = neededBy(*factory);
    list.clear();
    EXPECT_EQ(*reinterpret_cast<const int*>(QLibrary(file).resolve("LIVE_INSTANCES")), 0) << plugin;
    return needed;
}

static const char* const particles = "p:Wear (particle):1:0 p:Is Worn:1:0 ";
static const char* const owners =
    "p:Wear (particle):1:0 p:Is Worn:1:0 c:Wear (contact):2:0 g:Wear (geometry):3:0 s:Wear (simulation):4:0 ";
static const char* const valued =
    "p:Wear (particle):1:0.5 p:Is Worn:1:1 c:Wear (contact):2:0.5 g:Wear (geometry):3:0.5 s:Wear (simulation):4:0.5 ";

struct SBindCase
{
    const char* plugin;
    const char* needed;
    const char* reported = ""; ///< all of it; FILE stands for the library's path
};

// The texts are those that users of the libraries' makers know.
// clang-format off
#define MODEL        "ERROR Sphere To Geometry Contact Model Plugin (Mine): "
#define MODEL_SAYS   MODEL "Sphere To Geometry - Mine Contact Model\n"
#define FORCE        "ERROR External Force Plugin (Mine): "
#define FORCE_SAYS   FORCE "Mine - Particle Body Force\n"
#define FACTORY      "ERROR Factory Plugin (Feed): "
#define PREFERENCES  "ERROR Preference File Error: "
#define UNRESOLVED   "Cannot resolve function: "
#define NO_METHOD    "Could not resolve method in plugin file "
#define NO_INSTANCE  "GETINSTANCE() method did not return a valid plugin instance.\n"
#define NO_SETUP     "Plugin's setup method return failure.\n"
#define NO_VERSION(export) "ERROR Plugins: Could not locate method:\n    " export "\nIn plugin file:\n    FILE\n"
#define UNSUPPORTED(name, version) \
    "ERROR Plugins (" name "): The library interface version (" version ") is not supported by this release.\n"
#define MODEL_NEEDS \
    "ERROR Plugins (Mine): The contact model interface version is not supported,\nthe contact model must use interface version 2.5.0\n"
#define FACTORY_NEEDS \
    "ERROR Plugins (Feed): The plugin factory interface version is not supported,\nthe external factory must use interface version 2.1.0\n"
static const char* const none = "not bound";
static const SBindCase bindCases[] = {
    {"model_100", ""}, {"model_110", particles}, {"model_200", particles}, {"model_210", owners}, {"model_220", owners},
    {"model_230", valued}, {"model_240", valued}, {"model_250", valued},
    {"force_100", ""}, {"force_110", particles}, {"force_200", particles}, {"force_210", owners}, {"force_220", valued},
    {"force_230", valued}, {"force_240", valued},
    {"factory_100", ""}, {"factory_200", ""}, {"factory_210", owners},

    {"model_without_GETCMINTERFACEVERSION", none, NO_VERSION("GETCMINTERFACEVERSION")},
    {"model_without_GETCMPREFERENCEFILE", ""},
    {"model_without_CALCULATEFORCE", none, MODEL UNRESOLVED "CALCULATEFORCE\n"},
    {"model_without_REGISTERNEWPARTICLEPROPERTY", none, MODEL UNRESOLVED "REGISTERNEWPARTICLEPROPERTY\n"},
    {"model_without_GETNUMBEROFREQUIREDPROPERTIES", none, MODEL UNRESOLVED "GETNUMBEROFREQUIREDPROPERTIES\n"},
    {"model_without_GETCMINSTANCE", none, MODEL_SAYS NO_METHOD "(GETCMINSTANCE).\n"},
    {"model_without_RELEASECMINSTANCE", none, MODEL_SAYS NO_METHOD "(RELEASECMINSTANCE).\n"},
    {"model_200_fault_1", none, MODEL_SAYS NO_INSTANCE},
    {"model_210_fault_2", none, MODEL "The plug-in threw an exception: no licence\n" MODEL_SAYS NO_INSTANCE},
    {"model_200_fault_3", none, MODEL_SAYS NO_SETUP},
    {"model_210_fault_3", none, MODEL_SAYS NO_SETUP PREFERENCES "line 3 isn't a number\n"},
    {"model_reports_2_6_0", none, UNSUPPORTED("Mine", "2.6.0") MODEL_NEEDS},
    {"model_reports_1_0_1", none, UNSUPPORTED("Mine", "1.0.1") MODEL_NEEDS},

    {"force_without_GETEFINTERFACEVERSION", none, NO_VERSION("GETEFINTERFACEVERSION")},
    {"force_without_GETEFPREFERENCEFILE", ""},
    {"force_without_EXTERNALFORCE", none, FORCE UNRESOLVED "EXTERNALFORCE\n"},
    {"force_without_GETDETAILSFORPROPERTY", none, FORCE UNRESOLVED "GETDETAILSFORPROPERTY\n"},
    {"force_without_GETPBFINSTANCE", none, FORCE_SAYS NO_METHOD "(GETPBFINSTANCE).\n"},
    {"force_without_RELEASEPBFINSTANCE", none, FORCE_SAYS NO_METHOD "(RELEASEPBFINSTANCE).\n"},
    {"force_200_fault_1", none, FORCE_SAYS NO_INSTANCE},
    {"force_200_fault_3", none, FORCE_SAYS NO_SETUP PREFERENCES "Could not initialise the configuration for this Particle Body Force model.\n"},
    {"force_210_fault_3", none, FORCE_SAYS NO_SETUP PREFERENCES "line 3 isn't a number\n"},
    {"force_reports_2_5_0", none, UNSUPPORTED("Mine", "2.5.0")},
    {"force_reports_1_0_1", none, UNSUPPORTED("Mine", "1.0.1")},

    {"factory_without_GETFACTINTERFACEVERSION", none, NO_VERSION("GETFACTINTERFACEVERSION")},
    {"factory_without_GETFACTPREFERENCEFILE", ""},
    {"factory_without_CREATEPARTICLE", none, FACTORY UNRESOLVED "CREATEPARTICLE\n"},
    {"factory_without_GETFACTORYINSTANCE", none, FACTORY UNRESOLVED "GETFACTORYINSTANCE\n"},
    {"factory_without_RELEASEFACTORYINSTANCE", none, FACTORY UNRESOLVED "RELEASEFACTORYINSTANCE\n"},
    {"factory_200_fault_1", none, FACTORY "Plugin factories GETFACTORYINSTANCE() method did not return a valid plugin instance.\n"},
    {"factory_210_fault_3", none, FACTORY "Plugin factories setup() method return failure.\n" PREFERENCES "line 3 isn't a number\n"},
    {"factory_reports_1_1_0", none, UNSUPPORTED("Feed", "1.1.0") FACTORY_NEEDS},
    {"factory_reports_2_6_0", none, UNSUPPORTED("Feed", "2.6.0") FACTORY_NEEDS},
};
// clang-format on

TEST(PlugIns, areBoundByTheExactVersionOrSayWhyNot)
{
    for (const SBindCase& c : bindCases) {
        SPluginFoldersOfTest folders;
        EXPECT_EQ(boundAs(c.plugin, folders), c.needed) << c.plugin;
        QString reported = c.reported;
        reported.replace("FILE", QFileInfo(folders.folder.path("user/Mine.so")).canonicalFilePath());
        EXPECT_EQ(folders.log.text(), reported.toStdString()) << c.plugin;
    }
}

// ---------------------------------------------------------------- where they are

TEST(PlugIns, areSoughtInTwoFoldersAndNowhereElse)
{
    SPluginFoldersOfTest folders;
    const auto needs = [](const char* name) {
        const auto model = createContactModel(name, eSphereSphereModel, 2);
        return model != nullptr ? neededBy(*model) : "not bound";
    };
    EXPECT_EQ(needs("Mine"), "not bound");
    EXPECT_EQ(folders.log.text(), "WARNING Plugins: Plugin file does not exist:\n    " +
                                      folders.folder.path("documents/ContactModels/Mine.so").toStdString() + "\n");
    EXPECT_TRUE(folders.folder.has("documents/ContactModels"));
    folders.put("model_110", "documents/ContactModels/Mine.so");
    EXPECT_EQ(needs("Mine"), particles);
    folders.put("model_210", "user/Mine.so");
    EXPECT_EQ(needs("Mine"), owners) << "the user's own comes first";
    folders.put("model_210", "user/Linear Spring.so");
    EXPECT_EQ(needs("Linear Spring"), "") << "what is built in comes before";
    EXPECT_EQ(createContactModel("Mine", eSphereSphereModel, eBuiltInModel), nullptr);

    // What is there and is no library, and names that lead elsewhere.
    folders.folder.write("user/Text.so", "not a library");
    QFile whole(QString::fromStdString(testPlugin("model_210")));
    ASSERT_TRUE(whole.open(QIODevice::ReadOnly));
    folders.folder.write("user/Cut.so", whole.read(3000));
    ASSERT_EQ(mkfifo(QFile::encodeName(folders.folder.path("user/Pipe.so")).constData(), 0600), 0);
    folders.put("model_210", "elsewhere/Mine.so");
    QFile::link(folders.folder.path("elsewhere/Mine.so"), folders.folder.path("user/Outside.so"));
    QFile::link(folders.folder.path("documents/ContactModels/Mine.so"), folders.folder.path("user/Inside.so"));
    EXPECT_EQ(needs("Inside"), particles) << "a link from one folder to the other";
    for (const char* name : {"Text", "Cut", "Pipe", "Outside", "../elsewhere/Mine", "..", "sub\\Mine", "", "a\nb",
                             "a\x7f", "Missing/Mine"})
        EXPECT_EQ(needs(name), "not bound") << name;
    EXPECT_EQ(createContactModel(QString("Mine") + QChar(0) + "x", eSphereSphereModel, 1), nullptr);
    for (const char* part :
         {"Text.so\n", "Text.so: file too short", "Cut.so: the file is cut short", "Pipe.so\n",
          "\"Outside\": it leads to ", "\"../elsewhere/Mine\": it holds a sep", "\"sub\\Mine\": it holds a sep",
          "\"..\": it holds two dots", "\"\": it is empty", "\"a\nb\": it holds a control"})
        EXPECT_THAT(folders.log.text(), HasSubstr(part));
}

TEST(PlugIns, areLoadedOnlyWhileTheyAreAskedFor)
{
    const auto isBound = [] { return createContactModel("Mine", eSphereSphereModel, ePluginModel) != nullptr; };
    {
        const SPluginFoldersOfTest folders;
        const QString file = folders.put("model_250", "user/Mine.so");
        {
            NApiCore::CPluginHost host([] { return nullptr; });
            const CPluginBinding nowhere({"", "relative"}, host);
            EXPECT_FALSE(isBound());
        }
        EXPECT_FALSE(dlopen(QFile::encodeName(file).constData(), RTLD_NOW | RTLD_NOLOAD));
        EXPECT_TRUE(isBound());
    }
    const CLogCapture log;
    EXPECT_FALSE(isBound());
    EXPECT_EQ(createExternalForce("Mine", 2, nullptr), nullptr);
    EXPECT_EQ(log.text(), "") << "nothing was sought";
}

/// As any model that a listener refuses, and the loss is reported.
TEST(PlugIns, thatClashWithTheDeckAreLeftOut)
{
    const SPluginFoldersOfTest folders;
    folders.put("model_210", "user/Mine.so");
    folders.put("force_210", "user/Mine too.so");
    CPhysicsLinkedCustomPropertyManager properties("Particle Properties", eParticleOwner);
    auto other = std::make_unique<CCustomPropertyMetaData>("Is Worn", eDoubleProperty, 3u, 1u);
    ASSERT_TRUE(properties.addProperty(other));
    CPhysicsModels physics;
    physics.addListener(&properties);
    const CPhysicsModels::CLoading loading(physics);
    EXPECT_FALSE(physics.addContactModel(physics.makeContactModel("Mine", 0, 1, true), -1));
    EXPECT_FALSE(physics.addExternalForce(physics.makeExternalForce("Mine too", 1, true), -1));
    physics.removeListener(&properties);
    EXPECT_EQ(physics.sphereSphereModels.size() + physics.externalForceCount(), 1u) << "the default model";
    ASSERT_EQ(folders.log.records().size(), 2u);
    EXPECT_EQ(folders.log.records()[1].effect, eLost);
    EXPECT_THAT(folders.log.text(), HasSubstr("Error loading external force (Mine too)\n"));
}

// ---------------------------------------------------------------- what a solver asks of them

TEST(ContactModelPlugIns, calculateAndSayOnceWhatWentWrong)
{
    for (const int version : {100, 110, 200, 210, 220, 230, 240, 250}) {
        const SPluginFoldersOfTest folders;
        const QString name = QString("V%1").arg(version);
        QLibrary library(folders.put("model_" + std::to_string(version), "user/" + name + ".so"));
        const auto model = NApiCm::bindContactModel(name, eSphereSphereModel);
        ASSERT_NE(model, nullptr);
        EXPECT_EQ(std::pair(model->chainRole(), model->chainPosition()), std::pair(3u, 2u));
        EXPECT_EQ(model->pluginQuery(), version >= 240);
        EXPECT_TRUE(model->starting(2));
        model->beginStep({});
        EXPECT_EQ(*reinterpret_cast<int*>(library.resolve("STEPS_BEGUN")), version >= 230 ? 1 : 0);
        if (version >= 200) { // the file that it asked for is beside the library
            EXPECT_EQ(reinterpret_cast<const char*>(library.resolve("SETUP_FILE")),
                      QFileInfo(library.fileName()).canonicalPath().toStdString() + "/table of values.txt");
        }
        SContact contact;
        contact.normalOverlap = 0.5;
        contact.multiThreaded = true;
        contact.results.normalForce.x = 1.0;
        const auto calculated = [&](double timeStep) {
            contact.timeStep = timeStep;
            return model->calculateForce(contact);
        };
        EXPECT_TRUE(calculated(0.0));
        EXPECT_EQ(contact.results.normalForce.x, 6.0); // 1 + 10 * 0.5
        EXPECT_EQ(calculated(1.0), version >= 200);
        EXPECT_FALSE(calculated(2.0));
        EXPECT_EQ(contact.results.normalForce.x, 6.0) << "of a failure nothing is taken";
        const QString title = "ERROR Sphere To Sphere Contact Model Plugin (" + name + "): ";
        const QString begin =
            title + "Sphere To Sphere - " + name + " Contact Model\ncalculateForce() method returned a ";
        const QString exported = title +
                                 "Couldn't find preferences file for external contact model, please place in:\n" +
                                 folders.folder.path("documents/ContactModels/table of values.txt\n");
        const QString made = begin + "recoverable error.\n" + begin + "fatal error.\nProcessing will halt.\n";
        EXPECT_EQ(folders.log.text(), (version < 200 ? exported : made).toStdString());
        model->stopping();
        EXPECT_NE(model->unloadPlugin(), nullptr);
        EXPECT_EQ(model->unloadPlugin(), nullptr) << "the second time there is nothing to do";
        EXPECT_EQ(model->library(), nullptr);
    }
}

/// 2.2.0 says that it is thread-safe, 2.3.0 that it isn't. The plug-in waits for another caller to come while it works.
TEST(ContactModelPlugIns, areCalledByOneThreadAtATimeUnlessTheySayThatTheyAreThreadSafe)
{
    SPluginFoldersOfTest folders;
    for (const int version : {220, 230}) {
        const QString name = QString("T%1").arg(version);
        folders.put("model_" + std::to_string(version), "user/" + name + ".so");
        const auto model = createContactModel(name, eSphereSphereModel, ePluginModel);
        ASSERT_NE(model, nullptr);
        for (const bool multiThreaded : {false, true}) {
            const auto meetsAnother = [&] {
                SContact contact;
                contact.timeStep = 3.0;
                contact.multiThreaded = multiThreaded;
                model->calculateForce(contact);
                return contact.results.normalForce.z == 1.0;
            };
            std::future<bool> other = std::async(std::launch::async, meetsAnother);
            const bool isLocked = version == 230 && multiThreaded;
            EXPECT_EQ(meetsAnother(), !isLocked) << version;
            EXPECT_EQ(other.get(), !isLocked) << version;
        }
    }
}

TEST(ForceAndFactoryPlugIns, workAndSayWhatWentWrong)
{
    SPluginFoldersOfTest folders;
    for (const int version : {110, 200, 240}) {
        const QString name = QString("F%1").arg(version);
        folders.put("force_" + std::to_string(version), "user/" + name + ".so");
        const auto force = createExternalForce(name, ePluginModel, nullptr);
        ASSERT_NE(force, nullptr);
        EXPECT_TRUE(force->starting());
        force->beginStep();
        EXPECT_EQ(force->pluginQuery(), version == 240);
        SParticleForce particle;
        particle.mass = 2.0;
        particle.force.z = 3.0;
        EXPECT_TRUE(force->calculateForce(particle));
        EXPECT_EQ(particle.force.z, 1.0); // 3 - 2
        particle.timeStep = 2.0;
        EXPECT_FALSE(force->calculateForce(particle));
    }

    CParticleTypes types(nullptr);
    types.append().setName("Ball");
    CPluginParticleFactoryList list;
    for (const int version : {100, 200, 210}) {
        const QString name = QString("P%1").arg(version);
        folders.put("factory_" + std::to_string(version), "user/" + name + ".so");
        IPluginParticleFactoryWrapper* const factory = list.addFactory(name, name);
        ASSERT_NE(factory, nullptr);
        EXPECT_EQ(factory->largestScale(), version == 210 ? 2.5 : 1.0);
        EXPECT_TRUE(factory->starting());
        NApiFactory::SNewParticle particle;
        bool created = false;
        EXPECT_TRUE(factory->createParticle(0.0, types, particle, created) && created);
        EXPECT_STREQ(particle.typeName, "Ball");
        EXPECT_FALSE(factory->createParticle(3.0, types, particle, created)) << "a type that isn't there";
        EXPECT_FALSE(factory->createParticle(2.0, types, particle, created) || created);
        EXPECT_NE(factory->clone(), nullptr);
    }
    CCustomPropertyManager properties("Particle Properties", eParticleOwner);
    auto heat = std::make_unique<CCustomPropertyMetaData>("Heat", eDoubleProperty, 1u, 1u);
    properties.addProperty(heat);
    NApiFactory::connectCustomProperties(list, &properties);
    EXPECT_EQ(list.factory(2)->customParams.size(), 1u);
    list.clear();
    for (const char* text : {"(F110): External force library returned error number 2\n",
                             "F240 - Particle Body Force\nexternalForce() method returned a fatal error.",
                             "Plugin factory tried to create particle of type that did not exist (Nobody)",
                             "Plugin factories createParticle() method returned a fatal error."})
        EXPECT_THAT(folders.log.text(), HasSubstr(text));
}

// ---------------------------------------------------------------- the tables of functions

/// The symbol at a position of an instance's table of functions. The destructor is at 0, and takes two entries here.
static QString operationAt(const void* instance, std::size_t position)
{
    void* const* const table = *static_cast<void* const* const*>(instance);
    Dl_info symbol{};
    return dladdr(table[position + 1], &symbol) != 0 ? symbol.dli_sname : "";
}

// Positions as libraries are compiled to have them, whatever the headers say: from 1 on a word out of the name of each
// operation, a dash for one that isn't called.
TEST(PlugIns, haveTheirOperationsAtTheirPositions)
{
    const std::pair<const char*, const char*> cases[] = {
        {"model_200 force_200", "file safe uses setup starting stopping force - number details"},
        {"model_210 model_220 force_210", "file safe uses setup starting stopping force number details"},
        {"model_230 force_220", "file safe uses - setup starting stopping force data number details"},
        {"model_240 model_250 force_230 force_240",
         "file safe uses query - setup starting stopping force data number details"},
        {"factory_200", "file safe - setup starting stopping createParticle"},
        {"factory_210", "file safe uses setup starting stopping createParticle number details largestScale"},
    };
    const std::map<QString, QString> kinds{{"model", "CM"}, {"force", "PBF"}, {"factory", "FACTORY"}};
    for (const auto& [plugins, operations] : cases)
        for (const QString& plugin : QString(plugins).split(' ')) {
            QLibrary library(QString::fromStdString(testPlugin(plugin.toStdString())));
            const QString instanceOf = kinds.at(plugin.section('_', 0, 0)) + "INSTANCE";
            const auto exported = [&](const char* verb) { return library.resolve((verb + instanceOf).toLatin1()); };
            const auto getInstance = reinterpret_cast<void* (*)()>(exported("GET"));
            ASSERT_NE(getInstance, nullptr) << plugins;
            void* const instance = getInstance();
            std::size_t position = 0;
            for (const QString& word : QString(operations).split(' ')) {
                const QString operation = operationAt(instance, ++position);
                EXPECT_TRUE(word == "-" || operation.contains(word, Qt::CaseInsensitive)) << plugins << ' ' << position;
            }
            reinterpret_cast<void (*)(void*)>(exported("RELEASE"))(instance);
        }
}

} // namespace NBrenmark
