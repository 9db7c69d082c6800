// brenmark dump: the whole model of a deck as text.

#include "brenmark/commands.h"
#include "brenmark/deck_text.h"
#include "brenmark/terminal.h"

namespace NBrenmark {

namespace {

class CPrintingSink : public ITextSink
{
public:
    void line(const std::string& path, const std::string& value) override { printResult(path + ' ' + value + '\n'); }
};

} // namespace

EExitCode runDump(const SDumpOptions& options)
{
    CDeckReader reader(options.deck);
    const quint32 count = reader.timestepCount();
    if (options.oneTimestep && options.timestep >= count)
        throw CFailure(eExitUsage, utf8(options.deck) + ": has no timestep " + std::to_string(options.timestep),
                       "It has " + std::to_string(count) + ", counted from 0.");

    CPrintingSink sink;
    if (options.oneTimestep) {
        reader.timestep(options.timestep);
        timestepText(reader, sink, timestepRoot(options.timestep), options.full);
    }
    else {
        deckText(reader, sink, options.full);
        for (quint32 number = 0; number < count; ++number) {
            reader.timestep(number);
            if (reader.modelChanged())
                modelText(reader, sink, modelRoot(number), options.full);
            timestepText(reader, sink, timestepRoot(number), options.full);
        }
    }
    flushResult();
    printLedger(reader.messages(), eWithoutUpgrades);
    return eExitDone;
}

} // namespace NBrenmark
