#include "brenmark/deck_digest.h"

#include "brenmark/deck_text.h"
#include "brenmark/progress_display.h"
#include "brenmark/timestep_sizes.h"
#include "brenmark/uncarried.h"

#include "io/text/quick_digest.h"

#include <QCryptographicHash>

#include <algorithm>
#include <functional>

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

/// Runs the text of each part that holds one of the wanted arrays.
void visitArrays(const QString& path, const std::vector<SPart>& parts, quint32 SPart::*number,
                 const std::vector<bool>& isWanted, CArraySink& sink)
{
    CDeckReader reader(path, eUpgradedModel, eExamined);
    for (size_t i = 0; i < parts.size(); ++i) {
        if (!isWanted[i])
            continue;
        reader.timestep(parts[i].*number);
        (parts[i].isModel ? modelText : timestepText)(reader, sink, parts[i].root, false);
    }
}

STimestepFigures figuresOf(const SSimulationFrame& frame, double bytes)
{
    STimestepFigures figures;
    figures.time = frame.timestep.time;
    figures.bytes = bytes;
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

TextLines modelLines(CDeckReader& reader, const std::string& root)
{
    CLineSink sink;
    modelText(reader, sink, root, false);
    return std::move(sink.lines);
}

SDeckDigest digestOf(const QString& path, const std::string& work, EUnreadable unreadable, CProgressDisplay& progress)
{
    CDeckReader reader(path, eUpgradedModel, eExamined);
    SDeckDigest digest;
    digest.format = reader.format();
    const quint32 count = reader.timestepCount();
    const std::vector<double> sizes = timestepSizes(reader, path);
    progress.start(sizes, work, 1.0);
    for (quint32 number = 0; number < count; ++number) {
        try {
            const SSimulationFrame& frame = reader.timestep(number);
            digest.storing.look(frame, number, reader.modelChanged());
            if (reader.modelChanged()) {
                CDigestSink model;
                modelText(reader, model, std::string(), false);
                digest.models.push_back({model.digest(), number, model.values(), TextLines()});
                if (reader.format() == eFormatLegacy)
                    digest.models.back().lines = modelLines(reader, modelRoot(number));
            }
            CDigestSink timestep;
            timestepText(reader, timestep, std::string(), false);
            digest.timesteps.push_back({frame.timestep.time, timestep.digest(), digest.models.size() - 1,
                                        timestep.values(), figuresOf(frame, sizes[number]), std::string()});
        }
        catch (const CFailure& failure) {
            if (unreadable == eEndsTheReading || failure.code != eExitSource)
                throw;
            digest.timesteps.push_back(
                {reader.index()[number].time, QByteArray(), 0, std::string(), STimestepFigures(), failure.what()});
        }
        progress.update(number + 1);
    }
    digest.storing.lookAtHeader(reader.manager());
    // Behind the models: one that asks for a custom property defines it in the settings.
    CLineSink beside;
    deckText(reader, beside, false);
    digest.beside = std::move(beside.lines);
    digest.messages = reader.messages();
    return digest;
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
        (part.isModel ? modelText : timestepText)(reader, sink, part.root, false);
        lines.push_back(std::move(sink.lines));
    }
    return lines;
}

void describeArrays(std::vector<SDifference>& differences, const std::vector<SPart>& parts, const QString& source,
                    const QString& converted, const STolerance& tolerance)
{
    CKeptArrays arrays(tolerance);
    std::map<std::string, SDifference*> byPlace;
    std::vector<bool> isWanted(parts.size(), false);
    for (SDifference& difference : differences) {
        const auto part = std::find_if(parts.begin(), parts.end(), [&](const SPart& one) {
            return difference.place.compare(0, one.root.size() + 1, one.root + '/') == 0;
        });
        if (difference.kind != eOtherArray || part == parts.end())
            continue;
        isWanted[static_cast<size_t>(part - parts.begin())] = true;
        arrays.want(difference.place);
        byPlace[difference.place] = &difference;
    }
    if (byPlace.empty())
        return;
    CArraySink keeping(arrays, [&](const std::string& path, const SArrayView& values) { arrays.keep(path, values); });
    visitArrays(source, parts, &SPart::source, isWanted, keeping);
    CArraySink comparing(
        arrays, [&](const std::string& path, const SArrayView& values) { arrays.describe(*byPlace.at(path), values); });
    visitArrays(converted, parts, &SPart::converted, isWanted, comparing);
}

} // namespace NBrenmark
