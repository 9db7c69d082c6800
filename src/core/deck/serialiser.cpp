// The thread around one read or write of a root, which turns whatever is thrown inside into a text and a cause.
#include "core/deck/serialiser.h"

#include "core/deck/file_families.h"
#include "core/log.h"
#include "core/progress.h"
#include "core/stop_flag.h"
#include "core/thread_pool.h"
#include "core/timer.h"

#include <QElapsedTimer>

#include <omp.h>

#include <exception>
#include <stdexcept>

namespace NBrenmark {

static constexpr qint64 longestReadMs = 1200000; // 20 minutes
static constexpr std::chrono::milliseconds readPoll(1000);

static CSimDataSerialiser* serialiserAtWork = nullptr;

CSimDataSerialiser* currentSerialiser() { return serialiserAtWork; }

CSimDataSerialiser::CSimDataSerialiser(SSaveOptions& options) : options(options) { serialiserAtWork = this; }

CSimDataSerialiser::~CSimDataSerialiser()
{
    if (serialiserAtWork == this)
        serialiserAtWork = nullptr;
}

void CSimDataSerialiser::run()
{
    errorFlag = false;
    errorText.clear();
    errorCause = eCauseNone;
    const CPlaceScope scope(place);
    // The teams of OpenMP, of which each thread makes its own, would spin between their loops beside those who compute.
    if (CThreadPool::isSet())
        omp_set_num_threads(1);
    CTimer timer;
    timer.start();
    try {
        enterThread();
        move();
        timer.stop();
        logMessage(ePerf, NLogTitle::serialiser.text, std::to_string(timer.elapsedSeconds()) + " s");
    }
    catch (const CReadStopped&) {
        fail(eCauseNone, "The read was stopped.");
    }
    catch (const std::exception& error) {
        fail(causeOf(error, eCauseNone), textOf(error));
    }
    // No other exception is meant to come here, but a worker must not take the host down with it.
    catch (...) {
        fail(eCauseNone, "An unknown error occurred.");
    }
}

void CSimDataSerialiser::fail(ECause cause, const char* text) noexcept
{
    errorFlag = true;
    errorCause = cause;
    try {
        errorText = QString::fromUtf8(text);
    }
    catch (const std::bad_alloc&) { // the text may lack, the failure doesn't
        errorCause = eCauseMemory;
    }
}

bool CSimDataReader::runAndWait(IProgressController* progress)
{
    QElapsedTimer clock;
    clock.start();
    bool givenUp = false;
    startOrRun();
    const CWaiting waiting(*this);
    while (isRunning()) {
        if (progress)
            progress->tick(1);
        if (wantsCancel(progress) || clock.elapsed() > longestReadMs) {
            stopAndWait();
            givenUp = true;
            break;
        }
        wait(readPoll);
    }
    wait();
    flushLogModules();
    return !givenUp && !errorFlag;
}

bool CSimDataWriter::runAndWait()
{
    startOrRun();
    wait();
    flushLogModules();
    return !errorFlag;
}

void CSimDataReader::move()
{
    switch (format) {
    case eLegacyStream: NLegacyFamily::readObject(*stream, *object); return;
    case eHdf5File: NHdf5Family::readObject(*hdf5File, options, *object); return;
    case eNoFormat: break;
    }
    throw std::logic_error("Io format for read not set.");
}

void CSimDataWriter::move()
{
    switch (format) {
    case eLegacyStream: NLegacyFamily::writeObject(*stream, *object); return;
    case eHdf5File: NHdf5Family::writeObject(*hdf5File, options, *object); return;
    case eNoFormat: break;
    }
    throw std::logic_error("Io format for write not set.");
}

} // namespace NBrenmark
