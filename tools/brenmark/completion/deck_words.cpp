#include "brenmark/completion/deck_words.h"

#include "brenmark/deck_reader.h"
#include "brenmark/failure.h"
#include "brenmark/terminal.h"
#include "brenmark/values/value_sources.h"

#include "analysis/attributes/attribute_table.h"
#include "core/deck/simulation_settings.h"

#include <algorithm>
#include <set>

namespace NBrenmark {

const std::vector<std::string>& deckWordKinds()
{
    static const std::vector<std::string> kinds{"timesteps", "attributes", "types", "selections"};
    return kinds;
}

std::string deckWordKindOf(const std::string& option)
{
    return option == "timestep"                   ? "timesteps"
           : option == "attribute"                ? "attributes"
           : option == "type" || option == "pair" ? "types"
           : option == "selection"                ? "selections"
                                                  : std::string();
}

static std::set<std::string> namesIn(CDeckReader& reader, const std::string& kind)
{
    std::set<std::string> names;
    if (kind == "selections") {
        for (const auto& [name, selection] : reader.deck().settings->selectionMap().selections())
            names.insert(name);
        return names;
    }
    if (reader.timestepCount() == 0)
        return names;
    const SSimulationFrame& frame = reader.timestep(reader.timestepCount() - 1);
    if (kind == "attributes") {
        for (const auto& attribute : NAttributes::buildAttributeTable(frame.timestep).all)
            names.insert(utf8(attribute->name));
        return names;
    }
    for (const auto owner : {NAttributes::eParticleAttribute, NAttributes::eGeometryAttribute})
        for (const SValueSource& source : valueSources(frame, owner))
            names.insert(source.name);
    return names;
}

EExitCode printDeckWords(const std::string& kind, const QString& deck)
{
    const std::vector<std::string>& kinds = deckWordKinds();
    if (std::find(kinds.begin(), kinds.end(), kind) == kinds.end())
        throw CFailure(eExitUsage, oneLine(kind) + ": a deck has no such words for a completion",
                       "There are timesteps, attributes, types and selections.");
    CDeckReader reader(deck);
    std::string lines;
    if (kind == "timesteps") {
        for (quint32 number = 0; number < reader.timestepCount(); ++number)
            lines += std::to_string(number) + '\n';
    }
    else {
        for (const std::string& name : namesIn(reader, kind))
            if (oneLine(name) == name) // no shell shows another
                lines += name + '\n';
    }
    unlessReaderIsGone([&] {
        printResult(lines);
        flushResult();
    });
    return eExitDone;
}

} // namespace NBrenmark
