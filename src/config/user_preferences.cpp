// The user's preferences, read once from the store that the applications share.
#include "config/user_preferences.h"

#include "platform/documents_folder.h"

#include <QColor>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStringList>
#include <memory>
#include <mutex>

namespace NBrenmark {

static const QString organisation = QStringLiteral("Velthane");
static const QString application = QStringLiteral("Zorv 30.0.2");

// ---------------------------------------------------------------- the table

struct SPreference
{
    const char* key;
    QVariant defaultValue;
};

/// Every key of the store that is read at the start, with its default, whose type is the key's. The colours are
/// this library's own choice; no deck depends on them.
static const std::vector<SPreference>& preferenceTable()
{
    static const QString none = QStringLiteral("");
    static const std::vector<SPreference> table = {
        {"Port User Configuration", true},
        {"Options Tab Index", 0},
        {"Persistent Log", false},
        {"File History", QStringList()},
        {"Notation", 0},
        {"Precision", 17},
        {"Solve Report/Display Simulation", true},
        {"Solve Report/Display Grid Cells", true},
        {"Solve Report/Display Custom Properties", true},
        {"Solve Report/Display Particles", true},
        {"Solve Report/Display Energy", true},
        {"Solve Report/Display Factories", true},
        {"Solve Report/Display Geometry", true},
        {"Solve Report/Auto Update", true},
        {"Solve Report/Update Interval", 50},
        {"Mouse Mappings/Translation", 1},
        {"Mouse Mappings/Track", 1},
        {"Mouse Mappings/Zoom", 2},
        {"Mouse Mappings/ZoomBox", 2},
        {"Mouse Mappings/Rotation", 3},
        {"Mouse Mappings/RotationY", 3},
        {"Mouse Mappings/TranslationMod", 0},
        {"Mouse Mappings/TrackMod", 1},
        {"Mouse Mappings/ZoomMod", 0},
        {"Mouse Mappings/ZoomBoxMod", 2},
        {"Mouse Mappings/RotationMod", 0},
        {"Mouse Mappings/RotationYMod", 1},
        {"Mouse Mappings/RotationYHorizontalRotAxis", 0},
        {"Mouse Mappings/RotationYVerticalRotAxis", 1},
        {"Mouse Mappings/ObjectControlMod", 2},
        {"Mouse Sensitivity/Track", 50.0},
        {"Mouse Sensitivity/ZoomButton", 50.0},
        {"Mouse Sensitivity/ZoomWheel", 10.0},
        {"Mouse Sensitivity/TrackMod", 0},
        {"Mouse Sensitivity/ZoomButtonMod", 0},
        {"Mouse Sensitivity/ZoomWheelMod", 0},
        {"Mouse Sensitivity/ZoomInvert", false},
        {"Units Config/accel", 0},
        {"Units Config/angle", 0},
        {"Units Config/angAccel", 0},
        {"Units Config/angVel", 0},
        {"Units Config/density", 0},
        {"Units Config/energy", 0},
        {"Units Config/workFunction", 1}, // electron volts
        {"Units Config/force", 0},
        {"Units Config/charge", 0},
        {"Units Config/length", 0},
        {"Units Config/mass", 0},
        {"Units Config/MoI", 0},
        {"Units Config/shearMod", 0},
        {"Units Config/time", 0},
        {"Units Config/torque", 0},
        {"Units Config/velocity", 0},
        {"Units Config/volume", 0},
        {"Units Config/frequency", 0},
        {"Units Config/temperature", 0},
        {"Units Config/heatFlux", 0},
        {"Units Config/stiffness", 0},
        {"Units Config/stress", 0},
        {"Units Config/mass flow", 0},
        {"Units Config/stiffnessPerUnitArea", 0},
        {"Units Config/pressure", 0},
        {"Misc Creator/Load Last Timestep", true},
        {"Misc Simulator/Load Last Timestep", true},
        {"Misc Analyst/Load Last Timestep", false},
        {"Misc Analyst/Display Axis Key", true},
        {"Misc Analyst/Display Timestamp", true},
        {"Misc Analyst/Display Bounding Box", false},
        {"Data File/Compress", true},
        {"User Logo/Enable", false},
        {"User Logo/File Path", none},
        {"User Logo/Scaling Width", 1.0},
        {"User Logo/Scaling Height", 1.0},
        {"User Logo/Image Opacity", 1.0},
        {"User Logo/Right Margin", 10},
        {"User Logo/Top Margin", 10},
        {"User Logo/Foreground", true},
        {"Html Colouring/Background Colour", QColor(255, 255, 255)},
        {"Html Colouring/Link Colour", QColor(0, 0, 238)},
        {"Html Colouring/Text Colour", QColor(0, 0, 0)},
        {"Background/Use Static Colour", true},
        {"Background/Static Colour", QColor(255, 255, 255)},
        {"Background/Colour - Top Left", QColor(255, 255, 255)},
        {"Background/Colour - Bottom Left", QColor(255, 255, 255)},
        {"Background/Colour - Top Right", QColor(255, 255, 255)},
        {"Background/Colour - Bottom Right", QColor(255, 255, 255)},
        {"Display/Legacy Particle display", false},
        {"Display/Default Projection", 0},
        {"Display/Theme", QStringLiteral("Legacy Theme")},
        {"Window Configuration/Position", QByteArray()},
        {"Window Configuration/Visibility/MainDock (Creator)", true},
        {"Window Configuration/Visibility/Data Browser (Creator)", true},
        {"Window Configuration/Visibility/Viewer Controls (Creator)", true},
        {"Window Configuration/Visibility/MainDock (Simulator)", true},
        {"Window Configuration/Visibility/Solve Report", true},
        {"Window Configuration/Visibility/Viewer Controls (Simulator)", true},
        {"Window Configuration/Visibility/MainDock (Analyst)", true},
        {"Window Configuration/Visibility/Data Browser (Analyst)", true},
        {"Window Configuration/Visibility/Viewer Controls (Analyst)", true},
        {"Window Toolbar/Visibility/Creator Geometry Toolbar", true},
        {"Window Toolbar/Visibility/Creator Physics Toolbar", true},
        {"Window Toolbar/Visibility/Analyst Toolbar", true},
        {"Window Toolbar/Visibility/Text Label Toolbar", true},
        {"Window Toolbar/Visibility/Utility Toolbar", true},
        {"Window Toolbar/Visibility/Geometry Mode Toolbar", true},
        {"Window Toolbar/Visibility/Field Toolbar", true},
        {"Window Toolbar/Visibility/Particle View Toolbar", true},
        {"Unit Test/Command Line", false},
        {"Window Position/Window State", 8},
        {"Window Position/Window X Position", 100},
        {"Window Position/Window Y Position", 100},
        {"Window Position/Window Width", 1000},
        {"Window Position/Window Height", 700},
        {"Simulator Engine/Engine Index", 0},
        {"Simulator Engine/Accelerator Devices List", none},
        {"Simulator Engine/Accelerator Device Name", none},
        {"Simulator Engine/Accelerator Drivers List", none},
        {"Simulator Engine/Accelerator Driver Version", none},
        {"Simulator Engine/Accelerator Device Number of Computer Units", 0},
        {"Simulator Engine/Accelerator Device Memory Size", 0},
    };
    return table;
}

// ---------------------------------------------------------------- the store

namespace {

struct SStores
{
    SStores() { user.setFallbacksEnabled(false); }

    QSettings system{QSettings::SystemScope, organisation, application};
    QSettings user{QSettings::UserScope, organisation, application};
};

std::unique_ptr<SStores>& storesOfProcess()
{
    static std::unique_ptr<SStores> stores;
    return stores;
}

SStores& openedStores()
{
    openUserStores();
    return *storesOfProcess();
}

} // namespace

void openUserStores(const QString& folder)
{
    static std::mutex making;
    const std::lock_guard<std::mutex> lock(making);
    if (storesOfProcess() && folder.isEmpty())
        return;
    if (!folder.isEmpty())
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder);
    storesOfProcess() = std::make_unique<SStores>();
}

CUserPreferences::CUserPreferences()
    : systemStore(openedStores().system), userStore(openedStores().user), compressFiles(true)
{
    systemStore.sync(); // what other programs have written since
    userStore.sync();
    for (const SPreference& row : preferenceTable()) {
        QVariant stored = value(QString::fromLatin1(row.key), row.defaultValue);
        // A store keeps most values as text; one that doesn't read as its key's type counts as absent.
        if (!stored.convert(int(row.defaultValue.type())))
            stored = row.defaultValue;
        preferences.emplace(row.key, stored);
    }
    compressFiles = preference("Data File/Compress").toBool();
}

QVariant CUserPreferences::value(const QString& key, const QVariant& defaultValue, EScope scope) const
{
    const QVariant stored = (scope == eUserScope ? userStore : systemStore).value(key);
    return stored.isValid() && !stored.isNull() ? stored : defaultValue;
}

QVariant CUserPreferences::preference(const std::string& key) const
{
    const auto found = preferences.find(key);
    return found == preferences.end() ? QVariant() : found->second;
}

QString CUserPreferences::pluginFolder() const { return value(QStringLiteral("Path"), documentsFolder()).toString(); }

QString CUserPreferences::materialsDatabase()
{
    const QString key = QStringLiteral("MaterialsDataBase");
    const QString fileName = QStringLiteral("materialsDB.h5");
    const QString applicationFolder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + "/" +
                                      organisation + "/" + application + "/";
    QString path = value(key, applicationFolder + fileName).toString();
    if (path.endsWith(QLatin1String(".ddb"))) {
        path = applicationFolder + fileName;
        userStore.setValue(key, path);
        userStore.sync();
    }
    const QFileInfo file(path);
    if (!QDir().mkpath(file.path()))
        path = documentsFolder() + file.fileName();
    return path;
}

static std::unique_ptr<CUserPreferences>& processPreferences()
{
    static std::unique_ptr<CUserPreferences> preferences;
    return preferences;
}

CUserPreferences& userPreferences()
{
    std::unique_ptr<CUserPreferences>& preferences = processPreferences();
    if (!preferences)
        preferences = std::make_unique<CUserPreferences>();
    return *preferences;
}

void releaseUserPreferences() { processPreferences().reset(); }

} // namespace NBrenmark
