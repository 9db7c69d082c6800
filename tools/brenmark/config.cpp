// brenmark config: the configuration beside a deck, whole or from a key on.

#include "brenmark/commands.h"
#include "brenmark/deck_reader.h"
#include "brenmark/json_text.h"
#include "brenmark/terminal.h"

#include "config/config_file.h"
#include "config/config_manager.h"
#include "config/config_number.h"

#include <QBuffer>
#include <QFileInfo>

#include <algorithm>
#include <cmath>

namespace NBrenmark {

using NConfig::CConfigManager;
using NConfig::CKeyPath;
using NConfig::SConfigNode;

// ---------------------------------------------------------------- values as JSON

/// There is no JSON number for an infinite one, nor for none.
static Json jsonOf(double value) { return std::isfinite(value) ? Json(value) : Json(NConfig::generalText(value)); }
/// The file has six digits of it; a double would show the noise after them.
static Json jsonOf(float value)
{
    double shortened = double(value);
    NConfig::parseDouble(NConfig::generalText(shortened), shortened);
    return jsonOf(shortened);
}
static Json jsonOf(bool value) { return value; }
static Json jsonOf(int value) { return value; }
static Json jsonOf(unsigned int value) { return value; }
static Json jsonOf(char value) { return std::string(1, value); }
static Json jsonOf(const std::string& value) { return value; }
static Json jsonOf(const QString& value) { return utf8(value); }
static Json jsonOf(const QColor& value) { return {value.red(), value.green(), value.blue()}; }
static Json jsonOf(const C3DPoint& value) { return {jsonOf(value.x), jsonOf(value.y), jsonOf(value.z)}; }
static Json jsonOf(const C3DVector& value) { return {jsonOf(value.x), jsonOf(value.y), jsonOf(value.z)}; }

template <class TList>
static Json jsonOf(const TList& values)
{
    Json list = Json::array();
    for (const auto& value : values)
        list.push_back(jsonOf(value));
    return list;
}

template <size_t... kinds>
static Json jsonOf(const std::any& value, std::index_sequence<kinds...>)
{
    Json result;
    const auto takeIf = [&](auto* stored) {
        if (stored)
            result = jsonOf(*stored);
    };
    (takeIf(std::any_cast<std::tuple_element_t<kinds, NConfig::ValueTypes>>(&value)), ...);
    return result;
}

static void addEntries(Json& list, const SConfigNode& node, const CKeyPath& path)
{
    if (const NConfig::SValueKind* const kind = NConfig::valueKindOf(node.value))
        list.push_back({{"key", path.toString()},
                        {"kind", kind->name},
                        {"value", jsonOf(node.value, std::make_index_sequence<NConfig::valueKindCount>())}});
    for (const auto& [name, child] : node.children)
        addEntries(list, child, path.child(name));
}

// ---------------------------------------------------------------- entries as text

/// What is at and below a key, a line each in the form of the file.
static QList<QByteArray> entryLines(CConfigManager& manager, const CKeyPath& key)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    NConfig::writeConfiguration(buffer, *manager.handle(key, false));
    QList<QByteArray> lines = buffer.data().split('\n');
    constexpr int headLines = 3;
    lines.erase(lines.begin(), lines.begin() + headLines);
    lines.removeLast(); // after the last line feed
    return lines;
}

// ---------------------------------------------------------------- keys

/// The names below a node, as many as one can look through.
static std::string namesBelow(const SConfigNode& node)
{
    constexpr size_t mostNames = 20;
    std::string names;
    size_t count = 0;
    for (const auto& [name, child] : node.children) {
        if (++count > mostNames)
            return names + " and " + std::to_string(node.children.size() - mostNames) + " more";
        names += (names.empty() ? "" : ", ") + name;
    }
    return names;
}

/// What to try instead of a key that isn't there: its default, or what is there.
static std::string adviceFor(CConfigManager& manager, const CKeyPath& key)
{
    CConfigManager defaults;
    defaults.setFileVersion(manager.fileVersion());
    const SApplicationRoles roles(defaults);
    defaults.loadAll();
    if (defaults.findNode(key, false))
        if (const QList<QByteArray> lines = entryLines(defaults, key); lines.size() == 1)
            return "It is known and has its default value: " + lines.first().toStdString() + ".";

    std::vector<std::string> elements = key.elements();
    while (!manager.findNode(CKeyPath(elements), false))
        elements.pop_back();
    const std::string names = namesBelow(*manager.findNode(CKeyPath(elements), false));
    const std::string above = elements.empty() ? "The configuration" : CKeyPath(elements).toString();
    return above + " has " + (names.empty() ? "no other keys" : names) + ".";
}

/// The path of a key as a user gives it: with its equals signs escaped, as the file has them, or bare.
static CKeyPath pathOf(CConfigManager& manager, const QString& key)
{
    CKeyPath path = CKeyPath::fromString(utf8(key));
    if (manager.findNode(path, false))
        return path;
    return CKeyPath::fromString(utf8(QString(key).replace(QStringLiteral("\\="), QStringLiteral("="))));
}

// ---------------------------------------------------------------- the command

namespace {

/// Hears what is said while it lives.
struct SListening
{
    SListening() { addLogModule(&logger); }
    ~SListening() { clearLogModules(); }

    CPersistentLogger logger{eWarning};
};

} // namespace

EExitCode runConfig(const SConfigOptions& options)
{
    requireDeck(options.deck);
    const QString file = stripDeckSuffix(options.deck) + NDeckFile::configurationSuffix;
    const bool isThere = QFileInfo::exists(file);
    const SListening listening;
    CConfigManager manager;
    if (isThere && NConfig::readConfigurationFile(utf8(file), *manager.rootHandle(), {}) != NConfig::eConfigDone)
        throw failureFromLog(
            listening.logger.records(), utf8(options.deck),
            CFailure(eExitSource, utf8(file) + ": can't be read", "Copy the file again from the archive."));

    const CKeyPath key = pathOf(manager, options.key);
    const SConfigNode* const node = manager.findNode(key, false);
    if (!node)
        throw CFailure(eExitUsage, utf8(options.deck) + ": has no key " + key.toString() + " in its configuration",
                       adviceFor(manager, key));
    if (options.json) {
        Json entries = Json::array();
        addEntries(entries, *node, key);
        printJson({{"path", utf8(options.deck)},
                   {"file", isThere ? Json(utf8(file)) : Json()},
                   {"formatVersion", isThere ? Json(manager.formatVersion()) : Json()},
                   {"fileVersion", isThere ? Json(manager.fileVersion()) : Json()},
                   {"entries", entries},
                   {"messages", jsonMessages(listening.logger.records())},
                   {"error", nullptr}});
    }
    else {
        for (const QByteArray& line : entryLines(manager, key))
            printResult(line.toStdString() + '\n');
        flushResult();
        if (!isThere)
            printError("brenmark: " + utf8(options.deck) + ": has no configuration; there is no " + utf8(file) + '\n');
    }
    printLedger(listening.logger.records());
    return eExitDone;
}

} // namespace NBrenmark
