#include "brenmark/failure.h"
#include "brenmark/terminal.h"

#include <algorithm>

namespace NBrenmark {

namespace {

const char* const sourceAdvice = "The source is damaged or incomplete. Copy it again from the archive and repeat this "
                                 "command; the source is untouched.";
const char* const targetAdvice = "Make room at the target, or check that it can be written, and repeat this command.";
const char* const namesAdvice =
    "The source is untouched. Change or shorten that in the program that made the deck, and convert it again.";
const char* const memoryAdvice =
    "The source is untouched and need not be damaged. Repeat this command where more memory "
    "is free, or with a greater --max-memory; the deck's largest timestep has to fit in it.";
const char* const internalAdvice =
    "This shouldn't happen; the source is untouched. Please report it with the text above.";
const char* const unsupportedAdvice = "Keep the source: it is untouched, and a later version of brenmark may carry it.";

/// The cause that a layer below told in a sentence of its own joins the sentence before it.
std::string joined(std::string text)
{
    for (size_t at = text.find(".\n"); at != std::string::npos; at = text.find(".\n", at + 1))
        if (at + 2 < text.size() && text[at + 2] != ' ')
            text.replace(at, 2, ": ");
    return text;
}

/// A message of the log behind the path that was worked on. Messages begin with the name of a file;
/// that of the deck's first file needn't be told twice.
std::string located(const std::string& path, const std::string& text)
{
    const std::string file = path.substr(0, path.find(", timestep "));
    const std::string base = file.substr(0, file.rfind(".dem"));
    if (text.compare(0, base.size(), base) == 0) // a file beside it, by its whole path
        return text;
    const std::string name = file.substr(file.rfind('/') + 1);
    const std::string timestep = path.substr(file.size());
    if (!timestep.empty() && text.compare(0, name.size() + timestep.size(), name + timestep) == 0)
        return path + text.substr(name.size() + timestep.size());
    for (const char* const separator : {", ", ": "})
        if (text.compare(0, name.size() + 2, name + separator) == 0)
            return path + separator + text.substr(name.size() + 2);
    return path + ": " + text;
}

} // namespace

std::string indented(std::string text)
{
    std::replace_if(
        text.begin(), text.end(),
        [](char c) { return (static_cast<unsigned char>(c) < 0x20 && c != '\n') || c == 0x7F; }, '?');
    for (size_t at = text.find('\n'); at != std::string::npos; at = text.find('\n', at + 1))
        text.insert(at + 1, "  ");
    return text;
}

std::string withoutEnd(std::string text)
{
    while (!text.empty() && (text.back() == '\n' || text.back() == '.'))
        text.pop_back();
    return text;
}

std::string utf8(const QString& text) { return text.toStdString(); }

void printFailure(const CFailure& failure)
{
    const char* const name = errorHasColour() ? "\x1b[31mbrenmark:\x1b[0m " : "brenmark: ";
    std::string text = name + indented(joined(withoutEnd(failure.what()))) + '\n';
    if (!failure.advice.empty())
        text += "  " + indented(failure.advice) + '\n';
    printError(text);
}

CFailure failureFromLog(const Ledger& messages, const std::string& path, const CFailure& fallback)
{
    const auto error = std::find_if(messages.begin(), messages.end(),
                                    [](const SLogRecord& message) { return message.level == eError; });
    if (error == messages.end())
        return fallback;
    const std::string text = error->placedText();
    switch (error->cause) {
    case eCauseSource: return CFailure(eExitSource, located(path, text), sourceAdvice);
    case eCauseTarget: return CFailure(eExitTarget, text, targetAdvice);
    case eCauseNames: return CFailure(eExitUnsupported, text, namesAdvice);
    case eCauseUnsupported: return CFailure(eExitUnsupported, located(path, text), unsupportedAdvice);
    case eCauseMemory: return CFailure(eExitTarget, located(path, text), memoryAdvice);
    case eCauseInternal: return CFailure(eExitDifferent, located(path, text), internalAdvice);
    case eCauseNone: break;
    }
    return CFailure(fallback.code, fallback.code == eExitTarget ? text : located(path, text), fallback.advice);
}

} // namespace NBrenmark
