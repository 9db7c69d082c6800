// The user's store: what it holds comes in, what it doesn't hold or holds wrongly is the default.

#include "config/user_preferences.h"

#include "platform/documents_folder.h"
#include "support/temp_folder.h"

#include <QColor>
#include <gtest/gtest.h>

namespace NBrenmark {
namespace {

/// A store of its own for each test: the user's isn't touched.
class UserPreferences : public testing::Test
{
protected:
    UserPreferences() { redirect(folder.path()); }
    ~UserPreferences() override { releaseUserPreferences(); }

    static void redirect(const QString& path)
    {
        releaseUserPreferences();
        openUserStores(path);
    }

    void store(const QByteArray& lines) const { folder.write("Velthane/Zorv 30.0.2.conf", lines); }

    CTempFolder folder;
};

TEST_F(UserPreferences, areTheDefaultsWithoutAStore)
{
    const CUserPreferences& preferences = userPreferences();
    EXPECT_TRUE(preferences.compress());
    EXPECT_EQ(preferences.preference("Precision"), QVariant(17));
    EXPECT_EQ(preferences.preference("Units Config/workFunction"), QVariant(1));
    EXPECT_EQ(preferences.preference("Units Config/force"), QVariant(0));
    EXPECT_EQ(preferences.preference("Display/Theme"), QVariant(QString("Legacy Theme")));
    EXPECT_EQ(preferences.preference("Mouse Mappings/ZoomBoxMod"), QVariant(2));
    EXPECT_TRUE(preferences.preference("Background/Static Colour").value<QColor>().isValid());
    EXPECT_FALSE(preferences.preference("No such key").isValid());
    EXPECT_EQ(preferences.pluginFolder(), documentsFolder());
    EXPECT_TRUE(folder.names().isEmpty()) << "asking writes nothing";
}

TEST_F(UserPreferences, comeFromTheStoreKeyByKey)
{
    store("[General]\nPrecision=5\nNotation=many\nPath=/plugins/\n"
          "[Data%20File]\nCompress=false\n"
          "[Units%20Config]\nmass%20flow=13\nforce=\n");
    const CUserPreferences& preferences = userPreferences();
    EXPECT_FALSE(preferences.compress());
    EXPECT_EQ(preferences.preference("Precision"), QVariant(5));
    EXPECT_EQ(preferences.preference("Notation"), QVariant(0)) << "no number";
    EXPECT_EQ(preferences.preference("Units Config/mass flow"), QVariant(13));
    EXPECT_EQ(preferences.preference("Units Config/force"), QVariant(0)) << "empty";
    EXPECT_EQ(preferences.pluginFolder(), "/plugins/");
    EXPECT_EQ(preferences.value("Path", "x", CUserPreferences::eSystemScope), QVariant("x"));
}

TEST_F(UserPreferences, areReadAnewAfterARelease)
{
    EXPECT_TRUE(userPreferences().compress());
    store("[Data%20File]\nCompress=false\n");
    EXPECT_TRUE(userPreferences().compress());
    releaseUserPreferences();
    EXPECT_FALSE(userPreferences().compress());
    releaseUserPreferences();
    releaseUserPreferences();
}

TEST_F(UserPreferences, surviveAStoreThatIsNoStore)
{
    store(QByteArray("\xFF\x00[[[\n=\n%%%", 12));
    EXPECT_TRUE(userPreferences().compress());
}

TEST_F(UserPreferences, findAFolderForTheMaterialsDatabase)
{
    const QTemporaryDir plain; // a path of ASCII alone: the file has its own way to write others
    store("[General]\nMaterialsDataBase=" + plain.filePath("made/here/my.h5").toUtf8() + "\n");
    CUserPreferences preferences;
    const QString stored = preferences.value("MaterialsDataBase", "").toString();
    EXPECT_EQ(stored, plain.filePath("made/here/my.h5"));
    EXPECT_EQ(preferences.materialsDatabase(), stored);
    EXPECT_TRUE(QFileInfo(QFileInfo(stored).path()).isDir());
}

} // namespace
} // namespace NBrenmark
