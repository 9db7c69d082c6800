// Reads and writes the configuration line by line, each in one pass: a damaged line may be as long as the file.
#include "config/config_file.h"

#include "config/config_manager.h"
#include "config/config_number.h"
#include "config/file_replacer.h"
#include "core/data_place.h"
#include "core/log.h"
#include "core/plain_file.h"
#include "core/shortened.h"

#include <QByteArray>
#include <QFile>

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

namespace NBrenmark::NConfig {

static const std::string formatLine = "!format=KEYPATHVALUE";
static const std::string formatVersionTag = "!format-version=";
static const std::string fileVersionTag = "!file-version=";
/// What a file without a line for its version counts as.
static constexpr const char* versionBeforeVersions = "24.0.0";

// ---------------------------------------------------------------- lines

/// The lines of a file, one after the other, whatever their length.
class CLineReader
{
public:
    explicit CLineReader(QFile& file) : file(file) {}

    /// The next line, without its end; nothing at the end of the file or when it fails.
    std::optional<std::string> next()
    {
        if (kept)
            return std::exchange(kept, std::nullopt);
        QByteArray line = file.readLine();
        if (line.isEmpty())
            return std::nullopt;
        ++lineNumber;
        if (line.endsWith('\n'))
            line.chop(1);
        if (line.startsWith('\0'))
            line.clear();
        if (line.endsWith('\r'))
            line.chop(1);
        return line.toStdString();
    }

    /// Has next give this line again.
    void putBack(std::string line) { kept = std::move(line); }
    /// Of the line given last, from 1 on.
    int number() const { return lineNumber; }

private:
    QFile& file;
    std::optional<std::string> kept;
    int lineNumber = 0;
};

static size_t skipWhiteSpace(const std::string& line, size_t from)
{
    while (from < line.size() && isWhiteSpace(line[from]))
        ++from;
    return from;
}

/// The version after a tag at the front of a line: so many numbers with dots between them, whatever follows.
static std::optional<std::string> versionBehind(const std::string& tag, const std::string& line, int numbers)
{
    const size_t tagAt = skipWhiteSpace(line, 0);
    if (line.compare(tagAt, tag.size(), tag) != 0)
        return std::nullopt;
    const size_t start = tagAt + tag.size();
    size_t end = start;
    for (int i = 0; i < numbers; ++i) {
        if (i > 0 && (end >= line.size() || line[end++] != '.'))
            return std::nullopt;
        const size_t digits = end;
        while (end < line.size() && isDigit(line[end]))
            ++end;
        if (end == digits)
            return std::nullopt;
    }
    return line.substr(start, end - start);
}

/// Whether version a is later than b, number by number from the left. The numbers may have any length.
static bool isLater(const std::string& a, const std::string& b)
{
    const auto sections = [](const std::string& version) {
        std::vector<std::string> numbers(1);
        for (const char c : version) {
            if (c == '.')
                numbers.emplace_back();
            else if (c != '0' || !numbers.back().empty())
                numbers.back() += c;
        }
        return numbers;
    };
    const std::vector<std::string> left = sections(a), right = sections(b);
    for (size_t i = 0; i < std::min(left.size(), right.size()); ++i) {
        if (left[i].size() != right[i].size())
            return left[i].size() > right[i].size();
        if (left[i] != right[i])
            return left[i] > right[i];
    }
    return false;
}

/// An entry line, taken apart.
struct SEntry
{
    std::string key;
    std::string kind;
    std::string value;
    bool valueIsCut = false; ///< a carriage return ends the value before the line does
};

/// The entry whose key begins at start and ends at an equals sign, if a colon ends its kind.
static std::optional<SEntry> entryAt(const std::string& line, size_t start, size_t equals)
{
    const size_t kindAt = equals + 1;
    const size_t end = std::min(line.find('\r', kindAt), line.size());
    const size_t colon = size_t(std::find(line.begin() + kindAt, line.begin() + end, ':') - line.begin());
    if (colon == end)
        return std::nullopt;
    SEntry entry;
    entry.key = line.substr(start, equals - start);
    entry.kind = line.substr(kindAt, colon - kindAt);
    entry.value = line.substr(colon + 1, end - colon - 1);
    entry.valueIsCut = end < line.size();
    return entry;
}

/// The first equals sign that has a character before it, other than a backslash, ends the key; the first colon
/// after it ends the kind. A carriage return inside a line ends the stretch that an entry is sought in, but for
/// one right before the equals sign. One pass, for a damaged line may be as long as the file.
static std::optional<SEntry> splitEntry(const std::string& line)
{
    for (size_t start = 0; start < line.size();) {
        const size_t end = std::min(line.find('\r', start), line.size());
        size_t equals = start + 1;
        while (equals < end && (line[equals] != '=' || line[equals - 1] == '\\'))
            ++equals;
        // If no colon is after the first one, none is after a later one of the stretch.
        std::optional<SEntry> entry = equals < end ? entryAt(line, start, equals) : std::nullopt;
        if (!entry && end + 1 < line.size() && line[end + 1] == '=')
            entry = entryAt(line, start, end + 1);
        if (entry)
            return entry;
        start = end + 1;
    }
    return std::nullopt;
}

static std::string withoutEscapes(const std::string& key)
{
    std::string text;
    text.reserve(key.size());
    for (size_t i = 0; i < key.size(); ++i) {
        if (key[i] == '\\' && i + 1 < key.size() && key[i + 1] == '=')
            continue;
        text += key[i];
    }
    return text;
}

// ---------------------------------------------------------------- reading

/// One read of a file: the lines, and where it is when something has to be reported.
class CConfigFileReader
{
public:
    CConfigFileReader(const std::string& fileName, const CConfigHandle& handle,
                      const std::set<std::string>& excludedElements, const ConfigLineObserver& observer)
        : file(QString::fromStdString(fileName)),
          lines(file),
          handle(handle),
          manager(handle.manager()),
          excludedElements(excludedElements),
          observer(observer)
    {}

    int read()
    {
        const CPlaceScope scope(placeIn(file.fileName()));
        if (file.fileName().isEmpty())
            return failed(eConfigNotOpened, "Unable to open file (no file name).");
        if (const std::string cause = openPlainFile(file); !cause.empty())
            return failed(eConfigNotOpened, "Could not open file for input. " + cause);
        const int headerResult = readHeader();
        return headerResult == eConfigDone ? readEntries() : headerResult;
    }

private:
    int failed(int result, const std::string& text)
    {
        reportFailure(NLogTitle::configuration, text, result == eConfigLaterFormat ? eCauseUnsupported : eCauseSource);
        return result;
    }

    int readHeader()
    {
        const std::string first = lines.next().value_or(std::string());
        const size_t formatAt = skipWhiteSpace(first, 0);
        if (first.compare(formatAt, formatLine.size(), formatLine) != 0 ||
            skipWhiteSpace(first, formatAt + formatLine.size()) != first.size())
            return failed(eConfigNoFormatLine, "The configuration file is corrupt (format line missing or invalid).");

        const std::string second = lines.next().value_or(std::string());
        const std::optional<std::string> formatVersion = versionBehind(formatVersionTag, second, 4);
        if (!formatVersion)
            return failed(eConfigInvalidLine, "The configuration file is corrupt (version line missing or invalid).");
        if (isLater(*formatVersion, currentFormatVersion))
            return failed(eConfigLaterFormat, "The configuration file was created by a later version\n"
                                              "of the software and cannot be loaded.");
        manager.setFormatVersion(*formatVersion);

        countedLines = 3;
        std::optional<std::string> third = lines.next();
        const std::optional<std::string> fileVersion = third ? versionBehind(fileVersionTag, *third, 3) : std::nullopt;
        manager.setFileVersion(fileVersion.value_or(versionBeforeVersions));
        if (fileVersion)
            countedLines = 4;
        else if (third)
            lines.putBack(std::move(*third));
        if (versionNumber(manager.fileVersion()) > programVersion)
            report(eRemark, NLogTitle::configuration,
                   "This file was generated by a later version and may not load correctly. .");
        return eConfigDone;
    }

    int readEntries()
    {
        while (const std::optional<std::string> line = lines.next()) {
            if (skipWhiteSpace(*line, 0) == line->size())
                continue;
            const int result = readEntry(*line);
            if (result != eConfigDone)
                return result;
        }
        if (file.error() != QFileDevice::NoError)
            return failed(eConfigInvalidLine, "An unexpected error occured while processing the configuration data. " +
                                                  file.errorString().toStdString());
        return eConfigDone;
    }

    int readEntry(const std::string& line)
    {
        const std::optional<SEntry> entry = splitEntry(line);
        if (!entry)
            return failed(eConfigInvalidLine,
                          "The configuration file is corrupt (invalid data found in file on line: " +
                              std::to_string(lines.number()) + ").");
        const CKeyPath key = CKeyPath::fromString(withoutEscapes(entry->key));
        for (const std::string& element : key.elements())
            if (excludedElements.count(element))
                return eConfigDone;
        const SValueKind* const kind = valueKindOfName(entry->kind);
        if (!kind)
            return failed(eConfigInvalidLine,
                          "The configuration file is corrupt (file contains data of unsupported format on line: " +
                              std::to_string(lines.number()) + ").");
        try {
            take(CKeyPath(handle.basePath(), key), *kind, entry->value);
        }
        catch (const CConfigException& error) {
            return failed(eConfigInvalidValue,
                          shortened(std::string(error.what())) + " (line: " + std::to_string(lines.number()) + ")");
        }
        if (entry->valueIsCut)
            report(eLost, NLogTitle::configuration,
                   "What follows a carriage return was dropped (line: " + std::to_string(lines.number()) + ")");
        ++countedLines;
        if (observer && countedLines % 100 == 0)
            observer(countedLines);
        return eConfigDone;
    }

    /// The file's kind replaces whatever kind the key has had.
    void take(const CKeyPath& key, const SValueKind& kind, const std::string& text)
    {
        SConfigNode* const node = key.isEmpty() ? nullptr : manager.findNode(key, true);
        if (!node)
            throw CConfigException(eKeyPathNotValid, key);
        node->value.reset();
        if (!kind.decode(text, node->value))
            throw CConfigException(eValueInInvalidFormat, key);
    }

    QFile file;
    CLineReader lines;
    const CConfigHandle& handle;
    CConfigManager& manager;
    const std::set<std::string>& excludedElements;
    const ConfigLineObserver& observer;
    int countedLines = 0;
};

int readConfigurationFile(const std::string& fileName, const CConfigHandle& handle,
                          const std::set<std::string>& excludedElements, const ConfigLineObserver& observer)
{
    return CConfigFileReader(fileName, handle, excludedElements, observer).read();
}

// ---------------------------------------------------------------- writing

static std::string withEscapes(const std::string& key)
{
    std::string text;
    for (const char c : key) {
        if (c == '=')
            text += '\\';
        text += c;
    }
    return text;
}

/// One write of a tree.
class CConfigFileWriter
{
public:
    CConfigFileWriter(QIODevice& device, CConfigManager& manager) : device(device), manager(manager) {}

    int write(const CKeyPath& base)
    {
        put(formatLine + "\n" + formatVersionTag + currentFormatVersion + "\n" + fileVersionTag + programVersionText +
            "\n");
        return writeSubtree(base);
    }

private:
    void put(const std::string& text) { device.write(text.data(), qint64(text.size())); }

    void warn(const CKeyPath& path, const std::string& text) const
    {
        report(eNotCarried, NLogTitle::configuration, "The value of key " + shortened(path.toString()) + text);
    }

    /// Writes an entry for the node of the path, if it has a value, and then all below it.
    int writeSubtree(const CKeyPath& path)
    {
        const SConfigNode* const node = manager.findNode(path, false);
        if (!node)
            return eConfigInvalidValue;
        if (node->value.has_value()) {
            const SValueKind* const kind = valueKindOf(node->value);
            if (!kind) {
                reportFailure(NLogTitle::configuration,
                              "An unexpected error occured while writing the configuration data "
                              "(unsupported data type in tree for key: " +
                                  shortened(path.toString()) + ").",
                              eCauseInternal);
                return eConfigInvalidValue;
            }
            writeEntry(path, *kind, node->value);
        }
        for (const auto& child : node->children) {
            const int result = writeSubtree(path.child(child.first));
            if (result != eConfigDone)
                return result;
        }
        return eConfigDone;
    }

    /// Writes an entry that a reader takes, and takes for the same as is written here: one that it refuses would have
    /// the whole file refused.
    void writeEntry(const CKeyPath& path, const SValueKind& kind, const std::any& value)
    {
        const std::string front = withEscapes(path.toString()) + "=" + kind.name + ":";
        const std::optional<SEntry> entry = splitEntry(front);
        if (!entry || entry->kind != kind.name || front.front() == '\0' || front.find('\n') != std::string::npos ||
            !(CKeyPath::fromString(withoutEscapes(entry->key)) == path)) {
            warn(path, " was left out: the key has no form that a reader of this file takes.");
            return;
        }
        std::string text = kind.encode(value);
        std::any readBack;
        if (!kind.decode(text, readBack)) {
            warn(path, ", " + shortened(text) + ", was left out: it has no form that a reader of this file takes.");
            return;
        }
        if (!kind.isSame(value, readBack)) {
            text = kind.encode(readBack);
            warn(path, " was written as " + shortened(text) + ", which is as much of it as this file can hold.");
        }
        put(front + text + "\n");
    }

    QIODevice& device;
    CConfigManager& manager;
};

int writeConfiguration(QIODevice& device, const CConfigHandle& handle)
{
    return CConfigFileWriter(device, handle.manager()).write(handle.basePath());
}

int writeConfigurationFile(const std::string& fileName, const CConfigHandle& handle)
{
    if (fileName.empty()) {
        reportFailure(NLogTitle::configuration, "Unable to open file (no file name).", eCauseTarget);
        return eConfigNotOpened;
    }
    const CPlaceScope scope(placeIn(QString::fromStdString(fileName)));
    CFileReplacement replacement;
    if (!replacement.isOpen()) {
        reportFailure(NLogTitle::configuration, "Could not open file for output. " + replacement.cause(), eCauseTarget);
        return eConfigNotOpened;
    }
    const int result = writeConfiguration(replacement.device(), handle);
    if (!replacement.replace(QString::fromStdString(fileName))) {
        reportFailure(NLogTitle::configuration,
                      "An unexpected error occured while writing the configuration data. " + replacement.cause(),
                      eCauseTarget);
        return eConfigInvalidLine;
    }
    return result;
}

} // namespace NBrenmark::NConfig
