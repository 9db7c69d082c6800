#include "brenmark/value_digest.h"

#include "brenmark/deck_text.h"
#include "brenmark/disk.h"
#include "brenmark/reading_faults.h"
#include "brenmark/units_text.h"

#include "core/plain_file.h"
#include "io/text/quick_digest.h"

#include <QFile>

#include <algorithm>
#include <optional>
#include <set>

namespace NBrenmark {

/// What the digest covers and how it is put together. A change of the text of a deck makes another form.
static constexpr int digestForm = 1;
static const char* const digestKind = "brenmark value digest";
static const char* const digestAlgorithm = "XXH3-128";

static bool isOfDigest(const std::string& path)
{
    const std::string configuration = "deck/configuration/";
    return path.compare(0, configuration.size(), configuration) != 0;
}

static std::string wholeOf(const SValueDigest& digest)
{
    CQuickDigest whole;
    whole.add(std::string(digestKind) + ' ' + std::to_string(digestForm));
    whole.add(digest.beside);
    for (const SValueDigest::STimestep& timestep : digest.timesteps) {
        whole.add(timestep.model);
        whole.add(timestep.values);
    }
    return whole.hex();
}

SValueDigest valueDigestOf(const SDeckDigest& deck)
{
    SValueDigest digest;
    CQuickDigest beside;
    for (const auto& [path, value] : deck.beside) {
        if (!isOfDigest(path))
            continue;
        beside.add(path);
        beside.add(value);
    }
    digest.beside = beside.hex();
    bool isWhole = true;
    for (const SDeckDigest::STimestep& timestep : deck.timesteps) {
        isWhole = isWhole && timestep.failure.empty();
        digest.timesteps.push_back(
            {timestep.failure.empty() ? deck.models[timestep.model].values : std::string(), timestep.values});
    }
    if (isWhole)
        digest.whole = wholeOf(digest);
    constexpr size_t mostFaults = 1000; // a damaged deck may have as many as it has bytes
    for (const SLogRecord& message : deck.messages)
        if (isReadingFault(message) && digest.faults.size() < mostFaults)
            digest.faults.push_back(message);
    return digest;
}

/// As much of a fault as says that another one is the same.
static Json jsonFault(const SLogRecord& fault)
{
    const std::optional<quint32>& timestep = fault.place.timestep;
    return {{"timestep", timestep ? Json(*timestep) : Json()}, {"block", fault.place.block}, {"text", fault.text}};
}

static SLogRecord faultFrom(const Json& object)
{
    SLogRecord fault;
    if (const Json& timestep = object.at("timestep"); !timestep.is_null())
        fault.place.timestep = timestep.get<quint32>();
    fault.place.block = object.at("block").get<std::string>();
    fault.text = object.at("text").get<std::string>();
    return fault;
}

QString digestFileOf(const QString& deck) { return stripDeckSuffix(deck) + QLatin1String(".digest.json"); }

void writeDigestFile(const QString& path, const SValueDigest& digest)
{
    Json timesteps = Json::array();
    for (const SValueDigest::STimestep& timestep : digest.timesteps)
        timesteps.push_back({{"model", timestep.model}, {"values", timestep.values}});
    Json faults = Json::array();
    for (const SLogRecord& fault : digest.faults)
        faults.push_back(jsonFault(fault));
    const Json object{{"kind", digestKind},          {"form", digestForm},     {"algorithm", digestAlgorithm},
                      {"program", BRENMARK_VERSION}, {"digest", digest.whole}, {"settings", digest.beside},
                      {"timesteps", timesteps},      {"faults", faults}};
    const std::string name = nativePath(path), unfinished = name + ".new";
    realDisk().writeFile(unfinished, object.dump(1, ' ', false, Json::error_handler_t::replace) + '\n');
    realDisk().sync(unfinished);
    realDisk().rename(unfinished, name);
}

SValueDigest readDigestFile(const QString& path)
{
    constexpr qint64 longest = 1 << 28; // bytes
    QFile file(path);
    std::string cause = openPlainFile(file);
    if (!cause.empty())
        throw CFailure(eExitSource, utf8(path) + ": can't be opened: " + cause, "Check the path.");
    if (file.size() > longest)
        cause = "it is too long";
    else
        try {
            const Json object = Json::parse(file.readAll().toStdString());
            if (object.at("kind") != digestKind || object.at("form").get<int>() != digestForm)
                throw CFailure(eExitUnsupported,
                               utf8(path) + ": holds a digest of another form than " + std::to_string(digestForm),
                               "It was made by another version of brenmark: check the deck with that one.");
            SValueDigest digest;
            digest.whole = object.at("digest").get<std::string>();
            digest.beside = object.at("settings").get<std::string>();
            for (const Json& timestep : object.at("timesteps"))
                digest.timesteps.push_back(
                    {timestep.at("model").get<std::string>(), timestep.at("values").get<std::string>()});
            for (const Json& fault : object.at("faults"))
                digest.faults.push_back(faultFrom(fault));
            if (digest.whole == wholeOf(digest))
                return digest;
            cause = "its parts don't fit the whole";
        }
        catch (const nlohmann::json::exception& error) {
            cause = error.what();
        }
    throw CFailure(eExitSource, utf8(path) + ": isn't a digest of a deck: " + cause, "Copy the file again.");
}

std::vector<std::string> digestDifferences(const SValueDigest& wanted, const SValueDigest& found)
{
    std::vector<std::string> places;
    if (wanted.beside != found.beside)
        places.emplace_back("deck/settings or deck/companion");
    if (wanted.timesteps.size() != found.timesteps.size())
        places.push_back("deck/timesteps: " + countText(found.timesteps.size(), "timestep") + ", there were " +
                         std::to_string(wanted.timesteps.size()));
    const SValueDigest::STimestep* before = nullptr;
    for (size_t i = 0; i < std::min(wanted.timesteps.size(), found.timesteps.size()); ++i) {
        const SValueDigest::STimestep &a = wanted.timesteps[i], &b = found.timesteps[i];
        if (b.values.empty())
            places.push_back(timestepRoot(static_cast<quint32>(i)) + ": can't be read");
        else if (a.values != b.values)
            places.push_back(timestepRoot(static_cast<quint32>(i)));
        if (!b.model.empty() && a.model != b.model && (before == nullptr || before->model != b.model)) {
            places.push_back(modelRoot(static_cast<quint32>(i)));
            before = &b;
        }
    }
    return places;
}

std::vector<std::string> newFaults(const SValueDigest& wanted, const SValueDigest& found)
{
    std::set<quint32> unreadable; // and said to be
    for (size_t i = 0; i < found.timesteps.size(); ++i)
        if (found.timesteps[i].values.empty())
            unreadable.insert(static_cast<quint32>(i));
    std::vector<SDifference> differences;
    joinReadingFaults(differences, found.faults, wanted.faults, SConsequences(), unreadable);
    std::vector<std::string> lines;
    lines.reserve(differences.size());
    for (const SDifference& difference : differences)
        lines.push_back(difference.place + ": " + difference.detail);
    return lines;
}

} // namespace NBrenmark
