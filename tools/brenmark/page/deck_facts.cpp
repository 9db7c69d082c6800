#include "brenmark/page/deck_facts.h"

#include "brenmark/deck_family.h"
#include "brenmark/deck_reader.h"

#include <QFileInfo>

#include <algorithm>

namespace NBrenmark {

constexpr size_t mostFacts = 500; // of a kind: a page is read by people

static Json filesOf(const QStringList& paths)
{
    constexpr int most = 20;
    Json files = Json::array();
    for (const QString& path : paths.mid(0, most))
        files.push_back({{"name", utf8(QFileInfo(path).fileName())}, {"bytes", QFileInfo(path).size()}});
    if (paths.size() > most)
        files.push_back(
            {{"name", "and " + std::to_string(paths.size() - most) + " more"}, {"bytes", bytesOf(paths.mid(most))}});
    return files;
}

static Json ledgerOf(const Ledger& messages)
{
    Json lines = Json::array();
    for (int effect = eRemark; effect <= eCarriedUnread; ++effect)
        for (const std::string& line : linesOf(messages, [effect](const SLogRecord& message) {
                 return message.effect == effect && message.level >= eWarning;
             })) {
            if (lines.size() == mostFacts)
                return lines;
            lines.push_back({{"effect", effectName(static_cast<EEffect>(effect))}, {"text", line}});
        }
    return lines;
}

static Json upgradesOf(const std::vector<SModelChange>& meant)
{
    Json lines = Json::array();
    for (size_t i = 0; i < std::min(meant.size(), mostFacts); ++i)
        lines.push_back({{"upgrade", meant[i].upgrade},
                         {"place", meant[i].path},
                         {"stored", meant[i].stored},
                         {"upgraded", meant[i].upgraded}});
    return lines;
}

static Json figuresOf(const std::vector<STimestepFigures>& timesteps)
{
    Json rows = Json::array();
    const size_t step = timesteps.size() / mostFacts + 1;
    for (size_t i = 0; i < timesteps.size(); i += step) {
        const STimestepFigures& of = timesteps[i];
        rows.push_back({of.time, of.particles, of.smallest, of.mean, of.largest, of.bytes, of.kinetic, of.potential});
    }
    return rows;
}

std::string factsText(const Json& facts) { return facts.dump(-1, ' ', false, Json::error_handler_t::replace); }

std::string withoutFolderOf(std::string text, const std::string& path)
{
    const std::string folder = path.substr(0, path.rfind('/') + 1);
    if (folder.size() > 1)
        for (size_t at = text.find(folder); at != std::string::npos; at = text.find(folder, at))
            text.erase(at, folder.size());
    return text;
}

Json deckFacts(const SConvertOptions& options, const QString& target, const SConversionResult& result,
               const CFailure* failure)
{
    const QString deck = result.partial.isEmpty() ? target : result.partial + '/' + QFileInfo(target).fileName();
    const SDeckHead source = headOf(options.source);
    Json facts{{"program", BRENMARK_VERSION},
               {"result", result.result},
               {"source", utf8(QFileInfo(options.source).fileName())},
               {"target", utf8(QFileInfo(target).fileName())},
               {"family", source.familyName()},
               {"version", source.lastVersion == 0 ? std::string() : utf8(versionText(source.lastVersion))},
               {"timesteps", result.timesteps},
               {"seconds", result.run.seconds},
               {"read", filesOf(sourceFiles(options.source))},
               {"written", filesOf(familyFiles(deck))},
               {"ledger", ledgerOf(result.run.messages)}};
    facts["options"] = wordsOf(options);
    if (options.facts || !options.page.empty())
        facts["options"].push_back("--report");
    if (result.verification) {
        const SVerification& verification = *result.verification;
        facts["verdict"] = verdictName(verification.verdict());
        facts["upgrades"] = upgradesOf(verification.meant);
        facts["upgradeCount"] = verification.meant.size();
        facts["notCarried"] = verification.notCarried;
        facts["digest"] = verification.sourceDigest.whole;
        facts["newDigest"] = verification.convertedDigest.whole;
        facts["figures"] = figuresOf(verification.sourceFigures);
        facts["newFigures"] = figuresOf(verification.convertedFigures);
    }
    if (failure != nullptr) {
        const std::string text = withoutEnd(failure->what()) + ". " + failure->advice;
        facts["error"] = withoutFolderOf(withoutFolderOf(text, utf8(QFileInfo(options.source).absoluteFilePath())),
                                         utf8(QFileInfo(target).absoluteFilePath()));
    }
    return facts;
}

} // namespace NBrenmark
