// brenmark verify: compares two decks by their texts. One deck is open in a process at a time, so
// each is read by itself; of a timestep's text only the digest is kept, and where two digests
// differ both timesteps are read once more, for their lines.

#include "brenmark/verify.h"
#include "brenmark/commands.h"
#include "brenmark/deck_text.h"
#include "brenmark/progress_display.h"
#include "brenmark/terminal.h"
#include "brenmark/units_text.h"

#include <QCryptographicHash>

#include <algorithm>
#include <chrono>
#include <cstring>
#include <set>
#include <unordered_map>

namespace NBrenmark {

namespace {

/// What belongs to the storing is what a conversion means to change.
bool belongsToStoring(const std::string& path) { return path.compare(0, 7, "stored/") == 0; }

class CDigestSink : public ITextSink
{
public:
    void line(const std::string& path, const std::string& value) override
    {
        if (belongsToStoring(path))
            return;
        for (const std::string& part : {path, value})
            hash.addData(part.data(), static_cast<int>(part.size()) + 1); // with the zero that ends it
    }
    QByteArray digest() const { return hash.result(); }

private:
    QCryptographicHash hash{QCryptographicHash::Sha256};
};

class CLineSink : public ITextSink
{
public:
    void line(const std::string& path, const std::string& value) override
    {
        if (!belongsToStoring(path))
            lines.emplace_back(path, value);
    }
    TextLines lines;
};

/// What is kept of a deck.
struct SDeckDigest
{
    struct STimestep
    {
        double time;
        QByteArray text;
        size_t model; ///< in models
    };
    struct SModel
    {
        QByteArray text;
        quint32 firstTimestep;
        TextLines lines; ///< of a legacy deck alone, whose models aren't as they are stored
    };
    TextLines beside; ///< the timesteps
    std::vector<STimestep> timesteps;
    std::vector<SModel> models;
};

TextLines modelLines(CDeckReader& reader, const std::string& root)
{
    CLineSink sink;
    modelText(reader, sink, root, false);
    return std::move(sink.lines);
}

SDeckDigest digestOf(const QString& path, const std::string& work, CProgressDisplay& progress, Ledger& messages)
{
    CDeckReader reader(path);
    SDeckDigest digest;
    const quint32 count = reader.timestepCount();
    progress.start(static_cast<int>(count), work, 0.0);
    for (quint32 number = 0; number < count; ++number) {
        const SSimulationFrame& frame = reader.timestep(number);
        if (reader.modelChanged()) {
            CDigestSink model;
            modelText(reader, model, std::string(), false);
            digest.models.push_back({model.digest(), number, TextLines()});
            if (reader.format() == eFormatLegacy)
                digest.models.back().lines = modelLines(reader, modelRoot(number));
        }
        CDigestSink timestep;
        timestepText(reader, timestep, std::string(), false);
        digest.timesteps.push_back({frame.timestep.time, timestep.digest(), digest.models.size() - 1});
        progress.update(static_cast<int>(number) + 1);
    }
    // Behind the models: one that asks for a custom property defines it in the settings.
    CLineSink beside;
    deckText(reader, beside, false);
    digest.beside = std::move(beside.lines);
    const Ledger& said = reader.messages();
    messages.insert(messages.end(), said.begin(), said.end());
    return digest;
}

/// A part of both texts that is to be compared line by line.
struct SPart
{
    bool isModel;
    quint32 source; ///< the timestep to load
    quint32 converted;
    std::string root;
};

std::vector<TextLines> linesOf(const QString& path, const std::vector<SPart>& parts, quint32 SPart::*number)
{
    std::vector<TextLines> lines;
    if (parts.empty())
        return lines;
    CDeckReader reader(path);
    for (const SPart& part : parts) {
        CLineSink sink;
        reader.timestep(part.*number);
        (part.isModel ? modelText : timestepText)(reader, sink, part.root, false);
        lines.push_back(std::move(sink.lines));
    }
    return lines;
}

/// Takes differences up to a limit.
class CDifferences
{
public:
    CDifferences(SVerification& result, unsigned int limit) : result(result), limit(limit) {}

    bool full() const { return limit > 0 && result.differences.size() >= limit; }

    void add(const std::string& path, const std::string& source, const std::string& converted)
    {
        if (full())
            result.more = true;
        else
            result.differences.push_back({path, source, converted});
    }

    void compare(const TextLines& source, const TextLines& converted)
    {
        std::unordered_map<std::string, const std::string*> rest;
        for (const auto& [path, value] : converted)
            rest.emplace(path, &value);
        for (const auto& [path, value] : source) {
            const auto found = rest.find(path);
            if (found == rest.end()) {
                add(path, value, std::string());
                continue;
            }
            if (*found->second != value)
                add(path, value, *found->second);
            rest.erase(found);
        }
        for (const auto& [path, value] : converted)
            if (rest.count(path))
                add(path, std::string(), value);
    }

private:
    SVerification& result;
    unsigned int limit;
};

/// The bits on purpose: 0.0 and -0.0 differ here, and a NaN is itself.
bool sameBits(double a, double b)
{
    quint64 bitsOfA = 0, bitsOfB = 0;
    std::memcpy(&bitsOfA, &a, sizeof a);
    std::memcpy(&bitsOfB, &b, sizeof b);
    return bitsOfA == bitsOfB;
}

/// Pairs of timestep numbers that belong together; noTimestep on the side where one is missing.
/// Decks of one length go by number. Otherwise one lost a timestep, and the times tell which.
std::vector<std::pair<quint32, quint32>> pairs(const SDeckDigest& source, const SDeckDigest& converted)
{
    constexpr quint32 none = CTimestepData::noTimestep;
    std::vector<std::pair<quint32, quint32>> result;
    const auto sourceCount = static_cast<quint32>(source.timesteps.size());
    const auto convertedCount = static_cast<quint32>(converted.timesteps.size());
    quint32 next = 0;
    for (quint32 i = 0; i < sourceCount; ++i) {
        if (sourceCount == convertedCount) {
            result.emplace_back(i, i);
            continue;
        }
        quint32 j = next;
        while (j < convertedCount && !sameBits(source.timesteps[i].time, converted.timesteps[j].time))
            ++j;
        if (j == convertedCount) {
            result.emplace_back(i, none);
            continue;
        }
        for (; next < j; ++next)
            result.emplace_back(none, next);
        result.emplace_back(i, j);
        next = j + 1;
    }
    for (; sourceCount != convertedCount && next < convertedCount; ++next)
        result.emplace_back(none, next);
    return result;
}

/// Holds the models of a legacy deck against what is stored of them, so that an upgrade can't lose what it isn't meant
/// to touch and both decks agree on the loss.
void compareWithStored(const QString& path, const SDeckDigest& digest, SVerification& result, CDifferences& differences)
{
    const bool isLegacy = !digest.models.empty() && !digest.models.front().lines.empty();
    if (!isLegacy)
        return;
    CDeckReader reader(path, eStoredModel);
    for (const SDeckDigest::SModel& model : digest.models) {
        const std::string root = modelRoot(model.firstTimestep);
        reader.timestep(model.firstTimestep);
        for (SModelChange& change : modelChanges(modelLines(reader, root), model.lines, root)) {
            if (change.upgrade.empty())
                differences.add(change.path, change.stored, change.upgraded);
            else
                result.meant.push_back(std::move(change));
        }
    }
}

std::string timeLine(const SDeckDigest::STimestep& timestep) { return "time " + NText::text(timestep.time); }

/// The converted deck is no source: that it can't be read says something about what was written.
template <class TBody>
auto readingConverted(TBody&& body)
{
    try {
        return body();
    }
    catch (CFailure& failure) {
        if (failure.code == eExitSource)
            failure.code = eExitTarget;
        throw;
    }
}

} // namespace

SVerification verify(const QString& source, const QString& converted, unsigned int limit, CProgressDisplay& progress)
{
    const auto begin = std::chrono::steady_clock::now();
    SVerification result;
    const SDeckDigest first = digestOf(source, "reading source,", progress, result.messages);
    result.lost = damageText(result.messages);
    const SDeckDigest second =
        readingConverted([&] { return digestOf(converted, "reading converted,", progress, result.messages); });
    progress.clear();
    result.timesteps = static_cast<quint32>(first.timesteps.size());

    CDifferences differences(result, limit);
    differences.compare(first.beside, second.beside);
    compareWithStored(source, first, result, differences);

    std::vector<SPart> parts;
    std::set<std::pair<size_t, size_t>> modelsSeen;
    for (const auto& [i, j] : pairs(first, second)) {
        if (j == CTimestepData::noTimestep) {
            differences.add(timestepRoot(i), timeLine(first.timesteps[i]), std::string());
            continue;
        }
        if (i == CTimestepData::noTimestep) {
            differences.add(timestepRoot(j), std::string(), timeLine(second.timesteps[j]));
            continue;
        }
        const SDeckDigest::STimestep& a = first.timesteps[i];
        const SDeckDigest::STimestep& b = second.timesteps[j];
        const bool modelDiffers = first.models[a.model].text != second.models[b.model].text;
        if (modelDiffers && modelsSeen.emplace(a.model, b.model).second)
            parts.push_back({true, i, j, modelRoot(first.models[a.model].firstTimestep)});
        if (a.text != b.text)
            parts.push_back({false, i, j, timestepRoot(i)});
    }
    // Each part has a difference at least, so that more parts than the limit needn't be read.
    if (limit > 0 && parts.size() > limit) {
        parts.resize(limit);
        result.more = true;
    }
    const std::vector<TextLines> a = linesOf(source, parts, &SPart::source);
    const std::vector<TextLines> b = readingConverted([&] { return linesOf(converted, parts, &SPart::converted); });
    for (size_t k = 0; k < parts.size(); ++k)
        differences.compare(a[k], b[k]);

    result.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
    return result;
}

/// How many lines each upgrade changed, in the order of the text.
static std::vector<std::pair<std::string, quint64>> countsByUpgrade(const std::vector<SModelChange>& meant)
{
    std::vector<std::pair<std::string, quint64>> counts;
    for (const SModelChange& change : meant) {
        auto count = std::find_if(counts.begin(), counts.end(),
                                  [&](const auto& entry) { return entry.first == change.upgrade; });
        if (count == counts.end())
            count = counts.insert(counts.end(), {change.upgrade, 0});
        ++count->second;
    }
    return counts;
}

static void printMeant(const std::vector<SModelChange>& meant)
{
    if (meant.empty())
        return;
    printResult("  brought to today's form: " + countText(meant.size(), "line") + " of the model\n");
    for (const auto& [upgrade, count] : countsByUpgrade(meant))
        printResult("    " + upgrade + ": " + std::to_string(count) + '\n');
}

void printVerification(const SVerification& verification, const QString& source, const QString& converted)
{
    const std::string timesteps = countText(verification.timesteps, "timestep");
    if (verification.equal()) {
        const std::string held = verification.lost.empty() ? ": holds all of " : ": holds all that could be read of ";
        printResult(utf8(converted) + held + utf8(source) + ": " + timesteps + " compared in " +
                    durationText(verification.seconds) + ", no difference" +
                    (verification.lost.empty() ? "" : "; lost: " + verification.lost) + '\n');
        printMeant(verification.meant);
        return;
    }
    const auto side = [](const std::string& value) { return value.empty() ? std::string("absent") : value; };
    for (const SDifference& difference : verification.differences)
        printResult(difference.path + "\n  source     " + side(difference.source) + "\n  converted  " +
                    side(difference.converted) + '\n');
    printResult(utf8(converted) + ": differs from " + utf8(source) + ": " + timesteps + " compared in " +
                durationText(verification.seconds) + ", " + countText(verification.differences.size(), "difference") +
                (verification.more ? " shown, more not shown\n" : "\n"));
}

Json jsonVerification(const SVerification& verification)
{
    const auto side = [](const std::string& value) { return value.empty() ? Json() : Json(value); };
    Json differences = Json::array();
    for (const SDifference& difference : verification.differences)
        differences.push_back({{"path", difference.path},
                               {"source", side(difference.source)},
                               {"converted", side(difference.converted)}});
    Json meant = Json::array();
    for (const SModelChange& change : verification.meant)
        meant.push_back({{"upgrade", change.upgrade},
                         {"path", change.path},
                         {"stored", side(change.stored)},
                         {"upgraded", side(change.upgraded)}});
    return {{"equal", verification.equal()},
            {"lost", side(verification.lost)},
            {"timesteps", verification.timesteps},
            {"seconds", verification.seconds},
            {"differences", differences},
            {"more", verification.more},
            {"meant", meant},
            {"messages", jsonMessages(verification.messages)}};
}

EExitCode runVerify(const SVerifyOptions& options)
{
    SVerification verification;
    {
        CProgressDisplay progress(!errorIsTerminal());
        verification = verify(options.source, options.converted, options.limit, progress);
    }
    printLedger(verification.messages, eWithoutUpgrades);
    const EExitCode code = verification.exitCode();
    if (options.json) {
        Json object{{"result", !verification.equal()       ? "different"
                               : verification.lost.empty() ? "equal"
                                                           : "partial"},
                    {"code", code},
                    {"source", utf8(options.source)},
                    {"converted", utf8(options.converted)}};
        object.update(jsonVerification(verification));
        unlessReaderIsGone([&] { printJson(object); });
        return code;
    }
    unlessReaderIsGone([&] {
        printVerification(verification, options.source, options.converted);
        flushResult();
    });
    return code;
}

} // namespace NBrenmark
