#pragma once
// What a conversion came to, and how it is reported: a line, or an object.

#include "brenmark/commands.h"
#include "brenmark/conversion_run.h"
#include "brenmark/failure.h"
#include "brenmark/terminal.h"
#include "brenmark/value_digest.h"
#include "brenmark/verify.h"
#include "brenmark/view/view.h"

#include <optional>
#include <string>

namespace NBrenmark {

/// What a conversion comes to, whichever way it ends.
struct SConversionResult
{
    const char* result = "failed";
    EExitCode code = eExitDone;
    SConversionRun run;
    quint32 timesteps = 0; ///< finished, in the new deck or in its folder
    qint64 bytesRead = 0;
    qint64 bytesWritten = 0;
    QString partial; ///< the folder that holds them, if they aren't at the target
    std::optional<SVerification> verification;
    SValueDigest digest; ///< of the source, if it was asked for
    std::optional<SViewResult> view;
};

/// \param failure  what ended it; null for none
void printResultObject(const SConvertOptions& options, const QString& target, const SConversionResult& result,
                       const CFailure* failure = nullptr);
/// The line of a conversion that succeeded.
std::string convertedText(const SConvertOptions& options, const QString& target, const SConversionResult& result);
/// The line, and below it the comparison and the view if there are any.
void printConverted(const SConvertOptions& options, const QString& target, const SConversionResult& result,
                    const std::string& line);

/// Prints what a conversion comes to. What became of the deck is what counts: a result that can't be printed is a warning.
template <class TBody>
void reportWhereThatWorks(TBody&& print)
{
    try {
        print();
    }
    catch (const COutputFailure& failure) {
        if (!failure.readerGone())
            printError("brenmark: the result can't be reported: " + failure.text() + '\n');
    }
}

} // namespace NBrenmark
