// brenmark dump: the whole model of a deck as text.

#include "brenmark/commands.h"
#include "brenmark/deck_text.h"
#include "brenmark/stored_records.h"
#include "brenmark/terminal.h"
#include "brenmark/xml_deck.h"

#include "io/text/text_writer.h"

namespace NBrenmark {

namespace {

class CPrintingSink : public ITextSink
{
public:
    void line(const std::string& path, const std::string& value) override
    {
        text.assign(path).append(1, ' ').append(value).append(1, '\n');
        printResult(text);
    }

private:
    std::string text; ///< whose memory serves all lines
};

/// Of one timestep or of all, with the models that they belong to.
void dumpRecords(CDeckReader& reader, ITextSink& sink, quint32 first, quint32 end)
{
    CStoredRecords records(sink, reader.deck().currentFrame->creator);
    reader.deck().readOptions.oldRecords = &records;
    for (quint32 number = first; number < end; ++number) {
        records.enter(number);
        reader.timestep(number);
        records.rethrow();
    }
    if (records.count() == 0)
        printError(
            "brenmark: there are no records of versions below 20.0.0 here; without --stored dump shows what is\n");
}

void dumpModel(CDeckReader& reader, ITextSink& sink, const SDumpOptions& options, quint32 count)
{
    if (options.oneTimestep) {
        reader.timestep(options.timestep);
        timestepText(reader.deck(), sink, timestepRoot(options.timestep), options.full);
        return;
    }
    deckText(reader.deck(), sink, options.full);
    for (quint32 number = 0; number < count; ++number) {
        reader.timestep(number);
        if (reader.modelChanged())
            modelText(reader.deck(), sink, modelRoot(number), options.full);
        timestepText(reader.deck(), sink, timestepRoot(number), options.full);
    }
}

/// The definition that a document holds, or the timestep of one, as it came in.
EExitCode dumpDocument(const SDumpOptions& options)
{
    if (options.stored)
        throw CFailure(eExitUsage, utf8(options.deck) + ": is a document, which has no records", "Leave --stored out.");
    if (kindOfDocument(options.deck) == eXmlTimestep)
        throw CFailure(eExitUsage, utf8(options.deck) + ": is the document of a timestep, which takes its definition",
                       "Name the definition's document, and this one with --timestep.");
    const CXmlDeck deck(options.deck, options.timestepDocument);
    CPrintingSink sink;
    CTextWriter writer(sink, options.oneTimestep ? timestepRoot(0) : modelRoot(0), options.full);
    if (options.oneTimestep)
        deck.frame().timestep.write(writer);
    else
        deck.frame().creator.write(writer);
    flushResult();
    printLedger(deck.messages());
    return eExitDone;
}

} // namespace

EExitCode runDump(const SDumpOptions& options)
{
    if (isDocument(options.deck))
        return dumpDocument(options);
    CDeckReader reader(options.deck, options.stored ? eStoredModel : eUpgradedModel);
    const quint32 count = reader.timestepCount();
    if (options.oneTimestep && options.timestep >= count)
        throw CFailure(eExitUsage, utf8(options.deck) + ": has no timestep " + std::to_string(options.timestep),
                       "It has " + std::to_string(count) + ", counted from 0.");

    CPrintingSink sink;
    if (options.stored)
        dumpRecords(reader, sink, options.oneTimestep ? options.timestep : 0,
                    options.oneTimestep ? options.timestep + 1 : count);
    else
        dumpModel(reader, sink, options, count);
    flushResult();
    printLedger(reader.messages(), eWithoutUpgrades);
    return eExitDone;
}

} // namespace NBrenmark
