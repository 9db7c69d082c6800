#include "brenmark/journal.h"

#include "brenmark/disk.h"
#include "brenmark/failure.h"
#include "brenmark/json_text.h"

#include <QFile>
#include <QFileInfo>

#include <stdexcept>

namespace NBrenmark {

const char* const journalName = "conversion.json";
const char* const newJournalName = "conversion.json.new";

static constexpr int journalForm = 1;
static constexpr qint64 longestJournal = 1 << 28; // bytes

static const char* const stateNames[] = {"converting", "complete", "replacing", "placing"};

static Json recordObject(const SLogRecord& record)
{
    const SDataPlace& place = record.place;
    return {{"level", static_cast<quint32>(record.level)},
            {"title", record.title},
            {"text", record.text},
            {"effect", static_cast<int>(record.effect)},
            {"cause", static_cast<int>(record.cause)},
            {"file", place.file},
            {"timestep", place.timestep ? Json(*place.timestep) : Json()},
            {"block", place.block},
            {"object", place.object},
            {"count", record.count}};
}

/// A number of an enumeration. \throws std::out_of_range  none of its own
template <class TEnum>
static TEnum enumOf(const Json& value, TEnum last)
{
    const int number = value.get<int>();
    if (number < 0 || number > static_cast<int>(last))
        throw std::out_of_range("a number that has no meaning there");
    return static_cast<TEnum>(number);
}

static SLogRecord recordOf(const Json& object)
{
    SLogRecord record;
    record.level = enumOf(object.at("level"), eError);
    record.title = object.at("title").get<std::string>();
    record.text = object.at("text").get<std::string>();
    record.effect = enumOf(object.at("effect"), eCarriedUnread);
    record.cause = enumOf(object.at("cause"), eCauseInternal);
    record.place.file = object.at("file").get<std::string>();
    if (!object.at("timestep").is_null())
        record.place.timestep = object.at("timestep").get<quint32>();
    record.place.block = object.at("block").get<std::string>();
    record.place.object = object.at("object").get<std::string>();
    record.count = object.at("count").get<quint64>();
    return record;
}

/// Paths are kept as the bytes that the file system has, which need not be UTF-8.
static std::string hexOf(const QString& path) { return QFile::encodeName(path).toHex().toStdString(); }

static QString pathOf(const Json& value)
{
    return QFile::decodeName(QByteArray::fromHex(QByteArray::fromStdString(value.get<std::string>())));
}

static Json objectOf(const SJournal& journal)
{
    Json files = Json::array();
    for (const SFileState& file : journal.sourceFiles)
        files.push_back({{"path", utf8(file.path)},
                         {"pathBytes", hexOf(file.path)},
                         {"size", file.size},
                         {"modifiedNanoseconds", file.modified},
                         {"inode", file.inode}});
    Json ledger = Json::array();
    for (const SLogRecord& record : journal.ledger)
        ledger.push_back(recordObject(record));
    return {{"form", journalForm},
            {"state", stateNames[journal.state]},
            {"program", journal.program},
            {"source", utf8(journal.source)},
            {"sourceBytes", hexOf(journal.source)},
            {"sourceFiles", files},
            {"ignoresCompanions", journal.ignoresCompanions},
            {"replaces", journal.replaces},
            {"timesteps", journal.timesteps},
            {"finished", journal.finished},
            {"ledger", ledger}};
}

static SJournal journalOf(const Json& object)
{
    if (object.at("form").get<int>() != journalForm)
        throw std::runtime_error("it was written by another version of brenmark");
    SJournal journal;
    const auto state = object.at("state").get<std::string>();
    int number = eConverting;
    while (stateNames[number] != state)
        if (++number > ePlacing)
            throw std::out_of_range("its state is unknown");
    journal.state = static_cast<EJournalState>(number);
    journal.program = object.at("program").get<std::string>();
    journal.source = pathOf(object.at("sourceBytes"));
    for (const Json& file : object.at("sourceFiles"))
        journal.sourceFiles.push_back({pathOf(file.at("pathBytes")), file.at("size").get<qint64>(),
                                       file.at("modifiedNanoseconds").get<qint64>(), file.at("inode").get<quint64>()});
    journal.ignoresCompanions = object.at("ignoresCompanions").get<bool>();
    journal.replaces = object.at("replaces").get<bool>();
    journal.timesteps = object.at("timesteps").get<quint32>();
    journal.finished = object.at("finished").get<quint32>();
    for (const Json& record : object.at("ledger"))
        journal.ledger.push_back(recordOf(record));
    return journal;
}

void writeJournal(IDisk& disk, const std::string& folder, const SJournal& journal)
{
    const std::string unfinished = folder + '/' + newJournalName;
    disk.writeFile(unfinished, objectOf(journal).dump(1, ' ', false, Json::error_handler_t::replace) + '\n');
    disk.sync(unfinished);
    disk.rename(unfinished, folder + '/' + journalName);
    disk.sync(folder);
}

bool hasJournal(const std::string& folder) { return realDisk().exists(folder + '/' + journalName); }

SJournal readJournal(const std::string& folder)
{
    QFile file(QFile::decodeName(QByteArray::fromStdString(folder + '/' + journalName)));
    std::string cause;
    if (!QFileInfo(file).isFile() || file.size() > longestJournal || !file.open(QIODevice::ReadOnly))
        cause = "it can't be opened";
    else
        try {
            return journalOf(Json::parse(file.readAll().toStdString()));
        }
        catch (const std::exception& error) {
            cause = error.what();
        }
    throw CFailure(eExitTarget, folder + '/' + journalName + ": isn't a journal that can be read: " + cause,
                   "Remove the folder " + folder + " to start over; the source is untouched.");
}

} // namespace NBrenmark
