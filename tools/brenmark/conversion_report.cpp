#include "brenmark/conversion_report.h"

#include "brenmark/json_text.h"
#include "brenmark/units_text.h"

namespace NBrenmark {

void printResultObject(const SConvertOptions& options, const QString& target, const SConversionResult& result,
                       const CFailure* failure)
{
    Json object{{"result", result.result},
                {"code", failure ? failure->code : result.code},
                {"source", utf8(options.source)},
                {"target", utf8(target)},
                {"seconds", result.run.seconds},
                {"bytesRead", result.bytesRead},
                {"bytesWritten", result.bytesWritten},
                {"timesteps", result.timesteps},
                {"messages", jsonMessages(result.run.messages)}};
    if (!result.partial.isEmpty())
        object["partial"] = utf8(result.partial);
    if (!result.digest.whole.empty())
        object["digest"] = result.digest.whole;
    object["error"] = failure ? jsonFailure(*failure) : Json();
    if (result.verification)
        object["verification"] = jsonVerification(*result.verification);
    if (result.view)
        object["view"] = {{"path", utf8(result.view->path)},
                          {"movedVertices", result.view->moved.isEmpty() ? Json() : Json(utf8(result.view->moved))},
                          {"timesteps", result.view->timesteps},
                          {"leftOut", result.view->leftOut.json()}};
    printJson(object);
}

std::string convertedText(const SConvertOptions& options, const QString& target, const SConversionResult& result)
{
    return utf8(options.source) + ": converted to " + utf8(target) + ": " + countText(result.timesteps, "timestep") +
           ", " + sizeText(static_cast<double>(result.bytesRead)) + " read, " +
           sizeText(static_cast<double>(result.bytesWritten)) + " written in " + durationText(result.run.seconds) +
           (holdsDamage(result.run.messages) ? "; lost: " + damageText(result.run.messages) : "") +
           (result.digest.whole.empty() ? "" : "; digest of the values: " + result.digest.whole) + '\n';
}

void printConverted(const SConvertOptions& options, const QString& target, const SConversionResult& result,
                    const std::string& line)
{
    if (!options.quiet)
        printResult(line);
    if (result.verification && (!options.quiet || result.code != eExitDone))
        printVerification(*result.verification, options.source, target);
    if (result.view && !options.quiet)
        printResult(utf8(result.view->path) + ": shows " + countText(result.view->timesteps, "timestep") + '\n');
    flushResult();
}

} // namespace NBrenmark
