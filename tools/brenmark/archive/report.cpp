// brenmark report: what the runs in a folder came to, from their journals.

#include "brenmark/archive/archive.h"
#include "brenmark/archive/archive_table.h"
#include "brenmark/failure.h"
#include "brenmark/page/report_page.h"
#include "brenmark/terminal.h"
#include "brenmark/units_text.h"

#include <algorithm>

namespace NBrenmark {

EExitCode runReport(const SReportOptions& options)
{
    const std::vector<std::string> journals = runJournals(options.folder);
    if (journals.empty())
        throw CFailure(eExitSource, options.folder + ": holds no journal of a run",
                       "Name the folder into which brenmark convert -o converted.");
    SRunState state;
    quint64 ended = 0;
    for (const std::string& path : journals) {
        SRunState own;
        addJournal(path, own);
        ended += own.isEnded ? 1 : 0;
        addJournal(path, state);
    }
    state.isEnded = ended == journals.size();
    state.decks = std::max<quint64>(state.decks, state.outcomes.size());
    CArchiveTable table;
    table.add(state);
    const EExitCode code = table.done() < state.decks ? eExitInterrupted : table.exitCode();
    if (!options.page.empty())
        writeRunPage(options.page, table, state);
    unlessReaderIsGone([&] {
        if (options.json) {
            printArchiveJson(options.folder, table, state, code);
            return;
        }
        if (journals.size() > 1)
            printResult(countText(journals.size(), "journal") + ", " + std::to_string(ended) + " of them finished\n");
        table.print(state.seconds, state.decks);
    });
    return code;
}

} // namespace NBrenmark
