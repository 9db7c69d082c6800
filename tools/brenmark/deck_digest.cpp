#include "brenmark/deck_digest.h"

#include "brenmark/deck_text.h"
#include "brenmark/plugins/plugin_changes.h"
#include "brenmark/progress_display.h"
#include "brenmark/timestep_sizes.h"
#include "brenmark/uncarried.h"

#include "io/text/quick_digest.h"
#include "io/text/text_writer.h"

#include <QCryptographicHash>

#include <algorithm>
#include <functional>
#include <numeric>

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
        if (isOfLegacyAlone(path))
            return;
        ofValues.add(path);
        ofValues.add(value);
    }
    bool wantsQuickDigests() const override { return true; }
    QByteArray digest() const { return hash.result(); }
    std::string values() const { return ofValues.hex(); }

private:
    QCryptographicHash hash{QCryptographicHash::Sha256};
    CQuickDigest ofValues;
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

/// Hands on the arrays of some paths.
class CArraySink : public ITextSink
{
public:
    using Take = std::function<void(const std::string& path, const SArrayView& values)>;

    CArraySink(const CKeptArrays& wanted, Take take) : wanted(wanted), take(std::move(take)) {}
    void line(const std::string&, const std::string&) override {}
    void array(const std::string& path, const std::string&, const SArrayView& values) override
    {
        if (wanted.isWanted(path))
            take(path, values);
    }

private:
    const CKeptArrays& wanted;
    Take take;
};

/// Notes which of some paths hold real numbers.
class CRealSink : public ITextSink
{
public:
    explicit CRealSink(std::map<std::string, bool>& isReal) : isReal(isReal) {}
    void line(const std::string&, const std::string&) override {}
    void real(const std::string& path, const std::string&) override
    {
        if (const auto found = isReal.find(path); found != isReal.end())
            found->second = true;
    }

private:
    std::map<std::string, bool>& isReal;
};

/// The part that a place is in; their number for none.
size_t partOf(const std::string& place, const std::vector<SPart>& parts)
{
    const auto part = std::find_if(parts.begin(), parts.end(), [&](const SPart& one) {
        return place.compare(0, one.root.size() + 1, one.root + '/') == 0;
    });
    return static_cast<size_t>(part - parts.begin());
}

/// Runs the text of each part that is wanted.
void visitParts(const QString& path, const std::vector<SPart>& parts, quint32 SPart::*number,
                const std::vector<bool>& isWanted, ITextSink& sink)
{
    CDeckReader reader(path, eUpgradedModel, eExamined);
    for (size_t i = 0; i < parts.size(); ++i) {
        if (!isWanted[i])
            continue;
        reader.timestep(parts[i].*number);
        (parts[i].isModel ? modelText : timestepText)(reader.deck(), sink, parts[i].root, false);
    }
}

STimestepFigures figuresOf(const SSimulationFrame& frame, double bytes)
{
    STimestepFigures figures;
    figures.time = frame.timestep.time;
    figures.bytes = bytes;
    figures.kinetic = frame.timestep.systemEnergy.kinetic;
    figures.potential = frame.timestep.systemEnergy.potential;
    double sum = 0.0;
    for (const auto& type : frame.timestep.particleTypes.types) {
        const double size = 2.0 * type->maxExtent(1.0);
        for (quint32 slot = 0; slot < type->slotCount(); ++slot) {
            if (!type->isLive(slot))
                continue;
            const double own = size * type->scale[slot];
            figures.smallest = figures.particles == 0 ? own : std::min(figures.smallest, own);
            figures.largest = std::max(figures.largest, own);
            sum += own;
            ++figures.particles;
        }
    }
    figures.mean = figures.particles == 0 ? 0.0 : sum / static_cast<double>(figures.particles);
    return figures;
}

} // namespace

/// A model's paths begin with it until it is known which timestep the model is of.
static std::string anyModel() { return modelRoot(0); }

static TextLines modelLines(CCreatorData& creator)
{
    const bool isModified = creator.modified;
    CLineSink sink;
    CTextWriter writer(sink, anyModel(), false);
    creator.write(writer);
    creator.modified = isModified; // a text is no storing
    return std::move(sink.lines);
}

void CDigestTaker::upgrading(CCreatorData& creator) { stored = modelLines(creator); }

void CDigestTaker::upgraded(CCreatorData& creator)
{
    changes = modelChanges(stored, modelLines(creator), anyModel());
    stored.clear();
}

void CDigestTaker::noteUpgrade(CCreatorData& creator, SDeckDigest::SModel& model) const
{
    model.changes = changes;
    for (SModelChange& change : model.changes)
        change.path.replace(0, anyModel().size(), modelRoot(model.firstTimestep));
    model.namesPlugins = namesPlugins(modelLines(creator));
}

quint64 timestepsOf(const DigestParts& parts)
{
    return std::accumulate(parts.begin(), parts.end(), quint64(0),
                           [](quint64 sum, const SDigestPart& part) { return sum + part.digest.timesteps.size(); });
}

void CDigestTaker::take(const CSimulation& deck, bool modelChanged, double bytes)
{
    const CTimestepData& timestep = deck.currentFrame->timestep;
    digest.storing.look(*deck.currentFrame, timestep.timestepIndex, modelChanged);
    if (modelChanged) {
        CDigestSink model;
        modelText(deck, model, std::string(), false);
        digest.models.push_back({model.digest(), timestep.timestepIndex, model.values(), {}});
        if (digest.format == eFormatLegacy)
            noteUpgrade(deck.currentFrame->creator, digest.models.back());
    }
    CDigestSink text;
    timestepText(deck, text, std::string(), false);
    digest.timesteps.push_back({timestep.time, text.digest(), digest.models.size() - 1, text.values(),
                                figuresOf(*deck.currentFrame, bytes), std::string()});
}

void CDigestTaker::take(const SDigestPart& part)
{
    const size_t modelsBefore = digest.models.size();
    digest.models.insert(digest.models.end(), part.digest.models.begin(), part.digest.models.end());
    for (SDeckDigest::STimestep timestep : part.digest.timesteps) {
        timestep.model += modelsBefore;
        digest.timesteps.push_back(std::move(timestep));
    }
    digest.storing.add(part.digest.storing.records());
}

void CDigestTaker::note(const STimestepIndexEntry& entry, const std::string& failure)
{
    digest.timesteps.push_back({entry.time, QByteArray(), 0, std::string(), STimestepFigures(), failure});
}

void CDigestTaker::takeBeside(const CSimulation& deck)
{
    digest.storing.lookAtHeader(deck.ioManager.active());
    CLineSink beside;
    deckText(deck, beside, false);
    digest.beside = std::move(beside.lines);
}

SDeckDigest CDigestTaker::taken(const Ledger& messages)
{
    digest.messages = messages;
    return std::move(digest);
}

SDeckDigest digestOf(const QString& path, const std::string& work, EUnreadable unreadable, CProgressDisplay& progress,
                     const DigestParts& read)
{
    CDeckReader reader(path, eUpgradedModel, eExamined);
    CDigestTaker taker(reader.format());
    reader.deck().readOptions.isInOrder = true;
    reader.deck().readOptions.upgrades = &taker;
    const std::vector<double> sizes = timestepSizes(reader, path);
    progress.start(sizes, work, 1.0);
    auto part = read.begin();
    for (quint32 number = 0; number < reader.timestepCount(); ++number) {
        if (part != read.end() && part->first == number) {
            taker.take(*part);
            number = part->end() - 1;
            ++part;
            progress.update(number + 1);
            continue;
        }
        try {
            reader.timestep(number);
            taker.take(reader.deck(), reader.modelChanged(), sizes[number]);
        }
        catch (const CFailure& failure) {
            if (unreadable == eEndsTheReading || failure.code != eExitSource)
                throw;
            taker.note(reader.index()[number], failure.what());
        }
        progress.update(number + 1);
    }
    taker.takeBeside(reader.deck());
    return taker.taken(reader.messages());
}

std::vector<TextLines> linesOf(const QString& path, const std::vector<SPart>& parts, quint32 SPart::*number)
{
    std::vector<TextLines> lines;
    if (parts.empty())
        return lines;
    CDeckReader reader(path, eUpgradedModel, eExamined);
    for (const SPart& part : parts) {
        CLineSink sink;
        reader.timestep(part.*number);
        (part.isModel ? modelText : timestepText)(reader.deck(), sink, part.root, false);
        lines.push_back(std::move(sink.lines));
    }
    return lines;
}

void describeArrays(std::vector<SDifference>& differences, const std::vector<SPart>& parts, const QString& source,
                    const QString& converted, const STolerances& tolerances)
{
    CKeptArrays arrays(tolerances);
    std::map<std::string, SDifference*> byPlace;
    std::vector<bool> isWanted(parts.size(), false);
    for (SDifference& difference : differences) {
        const size_t part = partOf(difference.place, parts);
        if (difference.kind != eOtherArray || part == parts.size())
            continue;
        isWanted[part] = true;
        arrays.want(difference.place);
        byPlace[difference.place] = &difference;
    }
    if (byPlace.empty())
        return;
    CArraySink keeping(arrays, [&](const std::string& path, const SArrayView& values) { arrays.keep(path, values); });
    visitParts(source, parts, &SPart::source, isWanted, keeping);
    CArraySink comparing(
        arrays, [&](const std::string& path, const SArrayView& values) { arrays.describe(*byPlace.at(path), values); });
    visitParts(converted, parts, &SPart::converted, isWanted, comparing);
}

void allowValues(std::vector<SDifference>& differences, const std::vector<SPart>& parts, const QString& source,
                 const STolerances& tolerances)
{
    const auto isAllowed = [&](const SDifference& difference) {
        return difference.kind == eOtherValue &&
               tolerances.of(difference.place).allows(difference.source, difference.converted);
    };
    std::map<std::string, bool> isReal; // by place, of those that would be allowed if they were
    std::vector<bool> isWanted(parts.size(), false);
    for (const SDifference& difference : differences) {
        const size_t part = partOf(difference.place, parts);
        if (!isAllowed(difference) || (part == parts.size() && !parts.empty()))
            continue;
        isReal[difference.place] = false;
        if (part < parts.size())
            isWanted[part] = true;
    }
    if (isReal.empty())
        return;
    CRealSink sink(isReal);
    if (parts.empty())
        deckText(CDeckReader(source).deck(), sink, false);
    else
        visitParts(source, parts, &SPart::source, isWanted, sink);
    for (SDifference& difference : differences)
        if (const auto found = isReal.find(difference.place); found != isReal.end() && found->second)
            difference.kind = eWithinTolerance;
}

} // namespace NBrenmark
