#include "brenmark/values/query_search.h"

#include "brenmark/nearest_word.h"
#include "brenmark/terminal.h"
#include "brenmark/units_text.h"

#include "analysis/data_miner.h"
#include "analysis/query_map.h"
#include "analysis/selection.h"
#include "config/config_manager.h"
#include "core/deck/simulation_settings.h"

namespace NBrenmark {

namespace {

/// Looks a query up by what it may be called, and knows what others there are.
class CQuerySearch
{
public:
    explicit CQuerySearch(const std::string& wanted) : wanted(wanted) {}

    /// \param section  in which it is
    void look(const QString& section, const CQuery& query)
    {
        const std::string title = utf8(query.id.isEmpty() ? query.header() : query.id);
        const std::string path = utf8(section) + '/' + title;
        if (title == wanted || path == wanted)
            found.push_back(&query);
        names.push_back(title);
        all += (all.empty() ? "" : ", ") + oneLine(path);
    }
    void look(const QueryMap& map)
    {
        for (auto section = map.sections().begin(); section != map.sections().end(); ++section)
            for (const CQuery* const query : section.value())
                look(section.key(), *query);
    }
    /// A copy; null if there is none of the name. \throws CFailure  there are several
    std::unique_ptr<CQuery> result() const
    {
        if (found.size() > 1)
            throw CFailure(eExitUsage,
                           "--query: " + std::to_string(found.size()) + " queries are named \"" + oneLine(wanted) +
                               "\"",
                           "Put the section in front, with a slash: there are " + all + ".");
        return found.empty() ? nullptr : found.front()->clone();
    }
    [[noreturn]] void fail() const
    {
        const std::string nearest = nearestOf(wanted, names);
        throw CFailure(eExitUsage, "--query: the deck has no \"" + oneLine(wanted) + "\"",
                       !nearest.empty() ? "Did you mean " + oneLine(nearest) + "?"
                       : all.empty()    ? "It has no queries."
                                        : "It has " + all + ".");
    }

private:
    const std::string& wanted;
    std::vector<const CQuery*> found; ///< not owned
    std::vector<std::string> names;
    std::string all;
};

} // namespace

std::unique_ptr<CQuery> requiredQuery(CDeckReader& reader, const std::string& name,
                                      const std::optional<CSelectedRows>& selected)
{
    CQuerySearch search(name);
    if (selected) {
        search.look(selected->selection().queries);
        if (std::unique_ptr<CQuery> query = search.result()) {
            query->group.clear();
            return query;
        }
    }
    NConfig::CConfigManager& configuration = *reader.deck().configuration;
    CDataMiners miners(configuration);
    try {
        miners.loadConfiguration(configuration);
    }
    catch (const NConfig::CConfigException& error) { // a key holds a value of another kind
        throw CFailure(eExitSource,
                       utf8(reader.deck().filePath) + ": its queries can't be read: " + withoutEnd(error.what()),
                       "Copy its configuration again from the archive.");
    }
    for (const auto& miner : miners.miners())
        search.look(miner->queries());
    std::unique_ptr<CQuery> query = search.result();
    if (query == nullptr)
        search.fail();
    return query;
}

} // namespace NBrenmark
