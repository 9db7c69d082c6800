#include "brenmark/failure.h"
#include "brenmark/terminal.h"

#include "core/first_failure.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

namespace NBrenmark {

namespace {

const char* const sourceAdvice = "The source is damaged or incomplete; it is untouched here. Copy it again from the "
                                 "archive.";
const char* const namesAdvice =
    "The source is untouched. Change or shorten that in the program that made the deck, and convert it again.";
const char* const memoryAdvice =
    "The source is untouched and need not be damaged. Free some memory, or give a greater --max-memory; two of the "
    "deck's largest timesteps have to fit in it.";
const char* const internalAdvice =
    "This shouldn't happen; the source is untouched. Please report it with the text above.";
const char* const unsupportedAdvice = "Keep the source: it is untouched, and a later version of brenmark may carry it.";

/// What failed for want of what, and what helps.
struct SSystemAdvice
{
    int error;
    const char* text;
};

constexpr std::array systemAdvices{
    SSystemAdvice{ENOSPC, "Free some space on the target's disk, or choose another one."},
    SSystemAdvice{EDQUOT, "Your quota on the target's disk is used up: remove files of yours there, or choose another "
                          "disk."},
    SSystemAdvice{EFBIG, "The file is greater than its file system or the limit of this shell (ulimit -f) allows: "
                         "choose another disk, or raise the limit."},
    SSystemAdvice{EACCES, "Check the permissions of the target's folder and of what is in it."},
    SSystemAdvice{EPERM, "Check the permissions of the target's folder and of what is in it."},
    SSystemAdvice{EROFS, "The target's file system can only be read: choose another folder."},
    SSystemAdvice{EIO, "The target's disk reports an error: check it, or choose another one."},
    SSystemAdvice{EMFILE, "Too many files are open: raise the limit of this shell (ulimit -n)."},
    SSystemAdvice{ENAMETOOLONG, "Choose a shorter name for the new deck."},
};

/// The cause that a layer below gave in a sentence of its own joins the sentence before it.
std::string joined(std::string text)
{
    for (size_t at = text.find(".\n"); at != std::string::npos; at = text.find(".\n", at + 1))
        if (at + 2 < text.size() && text[at + 2] != ' ')
            text.replace(at, 2, ": ");
    return text;
}

/// A message of the log after the path that was worked on. Messages begin with the name of a file;
/// that of the deck's first file needn't be given twice.
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

const char* CFailure::causeWord() const
{
    if (cause != eCauseNone)
        return causeName(cause);
    switch (code) {
    case eExitDone: return "none";
    case eExitDifferent: return "difference";
    case eExitUsage: return "usage";
    case eExitSource: return "source";
    case eExitTarget: return "target";
    case eExitUnsupported: return "unsupported";
    case eExitNothingMade: return "nothing to do";
    case eExitInterrupted: return "interrupted";
    }
    return "internal";
}

void printFailure(const CFailure& failure)
{
    std::string text = ' ' + indented(joined(withoutEnd(failure.what()))) + '\n';
    if (!failure.advice.empty())
        text += "  " + indented(failure.advice) + '\n';
    printSequences(coloured("brenmark:", "31") + safeText(text));
}

std::string adviceForWriting(int systemError)
{
    const auto found = std::find_if(systemAdvices.begin(), systemAdvices.end(),
                                    [&](const SSystemAdvice& advice) { return advice.error == systemError; });
    return found == systemAdvices.end() ? std::string() : found->text;
}

std::string adviceForWriting(const std::string& message)
{
    const auto found = std::find_if(systemAdvices.begin(), systemAdvices.end(), [&](const SSystemAdvice& advice) {
        return message.find(std::strerror(advice.error)) != std::string::npos;
    });
    return found == systemAdvices.end() ? "Check the target's disk, its free space and its permissions." : found->text;
}

CFailure failureFromLog(const Ledger& messages, const std::string& path, const CFailure& fallback)
{
    const SLogRecord* const error = firstFailure(messages);
    if (error == nullptr)
        return fallback;
    const std::string text = error->placedText();
    switch (error->cause) {
    case eCauseSource: return CFailure(eExitSource, located(path, text), sourceAdvice, error->cause);
    case eCauseTarget: return CFailure(eExitTarget, text, adviceForWriting(text), error->cause);
    case eCauseNames: return CFailure(eExitUnsupported, text, namesAdvice, error->cause);
    case eCauseUnsupported: return CFailure(eExitUnsupported, located(path, text), unsupportedAdvice, error->cause);
    case eCauseMemory: return CFailure(eExitTarget, located(path, text), memoryAdvice, error->cause);
    case eCauseInternal: return CFailure(eExitDifferent, located(path, text), internalAdvice, error->cause);
    case eCauseNone: break;
    }
    return CFailure(fallback.code, fallback.code == eExitTarget ? text : located(path, text), fallback.advice);
}

} // namespace NBrenmark
