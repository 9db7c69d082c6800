// brenmark, the command line: sets up the process, and reports whatever ends it.

#include "brenmark/command_line.h"
#include "brenmark/failure.h"
#include "brenmark/interrupt.h"
#include "brenmark/json_text.h"
#include "brenmark/terminal.h"

#include "core/deck/application_state.h"
#include "platform/free_memory.h"

#include <QTextCodec>

#include <clocale>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <langinfo.h>
#include <new>
#include <unistd.h>

namespace NBrenmark {

/// Paths come in the encoding of the locale. The C locale has none beyond ASCII: there they are
/// taken as UTF-8, or a deck with an umlaut in its name could not be opened from a bare script.
static void chooseEncoding()
{
    std::setlocale(LC_CTYPE, "");
    if (std::strcmp(nl_langinfo(CODESET), "ANSI_X3.4-1968") == 0)
        QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
}

/// Some functions of the libraries below let nothing through, too little memory included: the program ends there, but
/// with the status and text that say so. Nothing here takes memory.
static void endWithStatus()
{
    bool isMemory = false;
    try {
        if (const std::exception_ptr failure = std::current_exception())
            std::rethrow_exception(failure);
    }
    catch (const std::bad_alloc&) {
        isMemory = true;
    }
    catch (...) { // no other is expected
    }
    const char* const text = isMemory ? "brenmark: too little memory\n  Free some memory, and try again.\n"
                                      : "brenmark: unexpected failure\n  Please report this.\n";
    [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, text, std::strlen(text));
    std::_Exit(isMemory ? eExitTarget : eExitDifferent);
}

/// Runs the command and reports what stopped it.
static EExitCode runAndReport(int argumentCount, char** arguments)
{
    const auto end = [&](const CFailure& failure) {
        printFailure(failure);
        if (isJsonAsked(argumentCount, arguments))
            try {
                printJson({{"error", jsonFailure(failure)}});
            }
            catch (const COutputFailure&) { // the first failure is the one that counts
            }
        return failure.code;
    };
    try {
        chooseEncoding();
        openLibraries();
        return runCommandLine(argumentCount, arguments);
    }
    catch (const CFailure& failure) {
        return end(failure);
    }
    catch (const COutputFailure& failure) {
        if (failure.readerGone())
            return eExitDone;
        printFailure(CFailure(eExitTarget, failure.text(), "Check where standard output goes."));
        return eExitTarget;
    }
    catch (const std::bad_alloc&) {
        return end(CFailure(eExitTarget, "too little memory", "Free some memory, and try again.", eCauseMemory));
    }
    catch (const std::exception& error) {
        return end(
            CFailure(eExitDifferent, error.what(), "This shouldn't happen; the source is untouched.", eCauseInternal));
    }
}

} // namespace NBrenmark

int main(int argumentCount, char** arguments)
{
    using namespace NBrenmark;
    catchInterrupts(); // the first thing: none that comes early may end the program by the signal
    std::set_terminate(endWithStatus);
    keepFreedMemory();
    occupyStandardStreams();
    std::signal(SIGPIPE, SIG_IGN); // a reader that has gone must not end a conversion between two bytes
    std::signal(SIGXFSZ, SIG_IGN); // a write beyond the limit of a file's size fails like any other
    const EExitCode code = runAndReport(argumentCount, arguments);
    if (code == eExitTarget) { // the libraries below may crash over what they had no memory or disk to finish
        std::fflush(nullptr);
        std::_Exit(code);
    }
    return code;
}
