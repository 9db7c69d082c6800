#include "brenmark/plugins/library_report.h"

#include "brenmark/failure.h"
#include "brenmark/plugins/output_aside.h"
#include "brenmark/terminal.h"
#include "core/log.h"
#include "core/version.h"
#include "model/factories/plugin_factory.h"
#include "model/factories/plugins/particle_factories.h"
#include "physics/plugins/contact_models.h"
#include "physics/plugins/external_forces.h"
#include "physics/plugins/host/user_plugins.h"
#include "physics/plugins/plugin_library.h"
#include "units/quantity.h"

#include <QFileInfo>
#include <QProcess>

#include <optional>

namespace NBrenmark {

namespace {

/// The properties of all owners, or none if the library can't be bound.
using Owned = std::optional<std::vector<std::pair<const char*, RequiredProperties>>>;

template <class TWrapper>
Owned propertiesOf(const std::unique_ptr<TWrapper>& wrapper)
{
    if (wrapper == nullptr)
        return std::nullopt;
    Owned all(std::in_place);
    for (const auto& [owner, noun] : {std::pair(eParticleOwner, "particles"), std::pair(eContactOwner, "contacts"),
                                      std::pair(eGeometryOwner, "geometry"), std::pair(eSimulationOwner, "simulation")})
        all->emplace_back(noun, wrapper->requiredProperties(owner));
    return all;
}

/// How a library of a kind is bound when it is loaded.
struct SBindableKind
{
    const SPluginKind& kind;
    Owned (*bind)(SLoadedLibrary library, const QString& name);
};

const SBindableKind bindableKinds[] = {
    {contactModelPlugins,
     [](SLoadedLibrary loaded, const QString& name) {
         return propertiesOf(NApiCm::bindContactModel(std::move(loaded), name, eSphereSphereModel));
     }},
    {externalForcePlugins,
     [](SLoadedLibrary loaded, const QString& name) {
         return propertiesOf(NApiPbf::bindExternalForce(std::move(loaded), name));
     }},
    {particleFactoryPlugins,
     [](SLoadedLibrary loaded, const QString& name) {
         return propertiesOf(NApiFactory::bindParticleFactory(std::move(loaded), name, nullptr));
     }},
};

/// The errors that are logged while it lives.
class CHeardErrors
{
public:
    CHeardErrors() { addLogModule(&logger); }
    ~CHeardErrors() { clearLogModules(); }
    CHeardErrors(const CHeardErrors&) = delete;
    CHeardErrors& operator=(const CHeardErrors&) = delete;

    /// All of them in one line; null for none.
    Json text() const
    {
        std::string all;
        for (const SLogRecord& record : logger.records())
            all += (all.empty() ? "" : " ") + record.text;
        for (std::size_t at = 0; (at = all.find('\n', at)) != std::string::npos;)
            all.replace(at, 1, " ");
        return all.empty() ? Json() : Json(all);
    }

private:
    CPersistentLogger logger{eWarning};
};

Json propertyRows(const Owned& owned)
{
    Json rows = Json::array();
    if (!owned)
        return rows;
    for (const auto& [owner, properties] : *owned)
        for (const std::unique_ptr<CCustomPropertyMetaData>& property : properties)
            rows.push_back({{"owner", owner},
                            {"name", property->name},
                            {"elements", property->numberOfElements},
                            {"boolean", property->dataType == eBooleanProperty}});
    return rows;
}

/// Why a deck refuses the properties; null if it doesn't.
Json faultOf(const Owned::value_type& owned)
{
    for (const auto& [owner, properties] : owned)
        for (const std::unique_ptr<CCustomPropertyMetaData>& property : properties)
            if (!CCustomPropertyManager::isValidName(property->name))
                return "its custom property \"" + property->name + "\" has no valid name";
    return Json();
}

Json reportOf(const QString& path)
{
    Json report{{"path", utf8(path)}, {"plugins", Json::array()}, {"reason", Json()}};
    QLibrary library(path);
    if (const QString fault = loadFault(library); !fault.isEmpty()) {
        report["reason"] = "can't be loaded: " + utf8(fault);
        return report;
    }
    const CUserPlugins binding;
    for (const SBindableKind& bindable : bindableKinds) {
        if (library.resolve(bindable.kind.versionExport) == nullptr)
            continue;
        clearLogOnceMemory();
        const CHeardErrors errors;
        SLoadedLibrary loaded = loadPluginFile(bindable.kind, path);
        const quint32 version = loaded.version;
        Owned properties;
        if (loaded.library != nullptr)
            properties = bindable.bind(std::move(loaded), QFileInfo(path).completeBaseName());
        const Json fault = properties ? faultOf(*properties) : errors.text();
        report["plugins"].push_back({{"kind", bindable.kind.noun},
                                     {"version", utf8(versionText(version))},
                                     {"supported", properties.has_value() && fault.is_null()},
                                     {"reason", fault},
                                     {"properties", propertyRows(properties)}});
    }
    if (report["plugins"].empty())
        report["reason"] = "isn't a plug-in: it exports no interface version";
    return report;
}

Json failedReport(const QString& path, const std::string& reason)
{
    return {{"path", utf8(path)}, {"plugins", Json::array()}, {"reason", reason}};
}

} // namespace

void printLibraryReport(const QString& path)
{
    Json report;
    {
        const COutputAside aside;
        report = reportOf(path);
    }
    printJson(report);
    flushResult();
}

Json libraryReport(const QString& path)
{
    constexpr int longestAnswer = 10000; // ms
    QProcess process;
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(QStringLiteral("/proc/self/exe"), {"plugins", "--one-library", path});
    if (!process.waitForFinished(longestAnswer)) {
        const bool isRunning = process.state() != QProcess::NotRunning;
        process.kill();
        process.waitForFinished(longestAnswer);
        return failedReport(path, isRunning ? "didn't answer within ten seconds" : "can't be asked: no process");
    }
    if (process.exitStatus() == QProcess::CrashExit)
        return failedReport(path, "crashed when it was asked");
    Json report = Json::parse(process.readAllStandardOutput().toStdString(), nullptr, false);
    if (report.is_object() && report.contains("plugins"))
        return report;
    return failedReport(path, "ended the process that asked it, with status " + std::to_string(process.exitCode()));
}

} // namespace NBrenmark
