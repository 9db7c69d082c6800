// Any bytes in place of the files of a deck, under the commands that read it: they end with a status or a failure that
// they can report. The input is the sizes of index, settings and configuration, then these, and the data file.

#include "brenmark/commands.h"
#include "brenmark/failure.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>
#include <cstring>

using namespace NBrenmark;

static void hold(const QString& path, const char* bytes, std::size_t size)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes, qint64(size)) != qint64(size))
        std::abort();
}

template <class TRun>
static void endsKnown(TRun&& run)
{
    try {
        run();
    }
    catch (const CFailure& failure) {
        if (failure.code != eExitSource && failure.code != eExitTarget && failure.code != eExitUnsupported)
            std::abort();
    }
}

extern "C" int LLVMFuzzerInitialize(int*, char***) { return std::freopen("/dev/null", "w", stdout) ? 0 : 1; }

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t size)
{
    static const QTemporaryDir folder("/dev/shm/fuzz-XXXXXX");
    std::uint16_t sizes[3] = {};
    if (!folder.isValid() || size < sizeof sizes)
        return 0;
    std::memcpy(sizes, bytes, sizeof sizes);
    const char* next = reinterpret_cast<const char*>(bytes) + sizeof sizes;
    std::size_t left = size - sizeof sizes;
    const char* const suffixes[] = {".idx", ".ess", ".dfg"};
    for (int i = 0; i < 3; ++i) {
        const std::size_t taken = std::min<std::size_t>(sizes[i], left);
        hold(folder.filePath(QString("deck") + suffixes[i]), next, taken);
        next += taken;
        left -= taken;
    }
    const QString deck = folder.filePath("deck.dem");
    hold(deck, next, left);
    endsKnown([&] { runInfo({deck, false, false, true}); });
    endsKnown([&] { runDump({deck, false, 0, false}); });
    endsKnown([&] { runConfig({deck, QString(), true}); });
    SValuesOptions values;
    values.deck = deck;
    values.attribute = "Total Energy";
    values.summary = true;
    endsKnown([&] { runValues(values); });
    return 0;
}
