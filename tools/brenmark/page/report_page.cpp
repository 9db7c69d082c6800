#include "brenmark/page/report_page.h"

#include "brenmark/page/figures_chart.h"
#include "brenmark/page/html_page.h"
#include "brenmark/units_text.h"

#include <algorithm>
#include <array>

namespace NBrenmark {

static std::string textOf(const Json& facts, const char* name) { return facts.value(name, std::string()); }

static std::string sizeOf(const Json& bytes) { return sizeText(bytes.get<double>()); }

static std::string wordsOf(const Json& list)
{
    std::string text;
    for (const Json& word : list)
        text += (text.empty() ? "" : " ") + word.get<std::string>();
    return text.empty() ? "none" : text;
}

// ---------------------------------------------------------------- one deck

static void addSummary(CHtmlPage& page, const Json& facts)
{
    page.beginTable({"", ""});
    page.row({"Result", textOf(facts, "result")});
    if (facts.contains("error"))
        page.row({"Error", textOf(facts, "error")});
    page.row({"Source", textOf(facts, "source") + ", " + textOf(facts, "family") + ' ' + textOf(facts, "version")});
    page.row({"New deck", textOf(facts, "target")});
    page.row({"Timesteps", std::to_string(facts.value("timesteps", 0U))});
    page.row({"Time", durationText(facts.value("seconds", 0.0))});
    if (facts.contains("verdict")) {
        page.row({"Comparison", textOf(facts, "verdict") == "different" ? "the new deck differs from its source"
                                : textOf(facts, "verdict") == "partial"
                                    ? "no difference in what could be read of the source"
                                    : "no difference"});
        page.row({"Digest of the source's values", textOf(facts, "digest")});
        page.row({"Digest of the new deck's values", textOf(facts, "newDigest")});
    }
    page.row({"Program", "brenmark " + textOf(facts, "program")});
    page.row({"Options", wordsOf(facts.value("options", Json::array()))});
    page.endTable();
}

static void addFiles(CHtmlPage& page, const char* heading, const Json& files)
{
    page.heading(3, heading).beginTable({"File", "Size"});
    for (const Json& file : files)
        page.row({file.at("name").get<std::string>(), sizeOf(file.at("bytes"))});
    page.endTable();
}

static void addLedger(CHtmlPage& page, const Json& facts)
{
    page.heading(3, "What happened to the data");
    if (facts.at("ledger").empty())
        page.paragraph("Nothing but its conversion.");
    else {
        page.beginTable({"Effect", "Where and what"});
        for (const Json& line : facts.at("ledger"))
            page.row({line.at("effect").get<std::string>(), line.at("text").get<std::string>()});
        page.endTable();
    }
    if (facts.contains("notCarried") && !facts.at("notCarried").empty()) {
        page.heading(3, "Not carried, for the new family has no place for it").beginTable({"What"});
        for (const Json& line : facts.at("notCarried"))
            page.row({line.get<std::string>()});
        page.endTable();
    }
}

static void addUpgrades(CHtmlPage& page, const Json& facts)
{
    if (!facts.contains("upgrades") || facts.at("upgrades").empty())
        return;
    page.heading(3, "Upgraded to the current model").beginTable({"Upgrade", "Place", "Stored", "Upgraded"});
    for (const Json& line : facts.at("upgrades"))
        page.row({textOf(line, "upgrade"), textOf(line, "place"), textOf(line, "stored"), textOf(line, "upgraded")});
    page.endTable();
    const size_t all = facts.value("upgradeCount", size_t(0));
    if (all > facts.at("upgrades").size())
        page.paragraph("And " + std::to_string(all - facts.at("upgrades").size()) + " more.");
}

static void addDeck(CHtmlPage& page, const Json& facts)
{
    addSummary(page, facts);
    if (facts.contains("figures") && !facts.at("figures").empty()) {
        page.heading(3, "Source and new deck over each other");
        page.raw(figureCharts(facts.at("figures"), facts.at("newFigures")));
    }
    addLedger(page, facts);
    addUpgrades(page, facts);
    addFiles(page, "Read", facts.at("read"));
    addFiles(page, "Written", facts.at("written"));
}

void writeDeckPage(const std::string& path, const Json& facts)
{
    CHtmlPage page("Conversion of " + textOf(facts, "source"));
    addDeck(page, facts);
    page.write(path);
}

// ---------------------------------------------------------------- a run

static void addDeckOfRun(CHtmlPage& page, const SDeckOutcome& outcome)
{
    page.raw("<section>\n").heading(2, outcome.deck).paragraph(outcomeLine(outcome));
    if (!outcome.losses.empty()) {
        page.beginTable({"Lost"});
        for (const std::string& loss : outcome.losses)
            page.row({loss});
        page.endTable();
    }
    if (!outcome.page.empty())
        try {
            addDeck(page, Json::parse(outcome.page));
        }
        catch (const nlohmann::json::exception&) { // of another version of the program
            page.paragraph("The journal has more of it in a form that is unknown here.");
        }
    page.raw("</section>\n");
}

void writeRunPage(const std::string& path, const CArchiveTable& table, const SRunState& state)
{
    CHtmlPage page("Conversion of " + countText(state.decks, "deck"));
    if (state.begin)
        page.paragraph("brenmark " + state.begin->program + ", last run begun at " + state.begin->time + ", options: " +
                       wordsOf(Json(state.begin->options)) + ", " + durationText(state.seconds) + " in all.");
    page.beginTable({"", "Decks", "Read", "Written"});
    for (const Json& row : table.json())
        page.row({row.at("state").get<std::string>() +
                      (row.at("reason").is_null() ? "" : ": " + row.at("reason").get<std::string>()),
                  std::to_string(row.at("decks").get<quint64>()), sizeOf(row.at("bytesRead")),
                  sizeOf(row.at("bytesWritten"))});
    const quint64 left = state.decks - std::min(state.decks, table.done());
    if (left > 0)
        page.row({"not done yet", std::to_string(left), "", ""});
    page.row({"in all", std::to_string(state.decks), "", ""}).endTable();

    std::vector<const SDeckOutcome*> sorted;
    for (const auto& [deck, outcome] : state.outcomes)
        sorted.push_back(&outcome);
    const auto urgency = [](const SDeckOutcome* outcome) {
        constexpr std::array order{eDeckFailed, eDeckWithLosses};
        return std::find(order.begin(), order.end(), outcome->state) - order.begin();
    };
    std::sort(sorted.begin(), sorted.end(), [&](const SDeckOutcome* a, const SDeckOutcome* b) {
        return urgency(a) != urgency(b) ? urgency(a) < urgency(b) : a->deck < b->deck;
    });
    page.heading(2, "Decks, with trouble first").beginTable({"Deck", "State", "Digest of the values"});
    for (const SDeckOutcome* const outcome : sorted)
        page.row({outcome->deck,
                  deckStateName(outcome->state) + (outcome->reason.empty() ? "" : ": " + outcome->reason),
                  outcome->digest});
    page.endTable();
    for (const SDeckOutcome* const outcome : sorted)
        if (!outcome->page.empty() || !outcome->text.empty() || !outcome->losses.empty())
            addDeckOfRun(page, *outcome);
    page.write(path);
}

} // namespace NBrenmark
