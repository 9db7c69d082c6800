#include "brenmark/failure.h"
#include "brenmark/terminal.h"

#include <algorithm>
#include <cstring>
#include <map>

namespace NBrenmark {

namespace {

constexpr size_t mostWarnings = 20; // different ones; more would bury the result

/// What a text that not_carried_error composes ends with.
constexpr const char* notCarried = "can't carry over yet";

/// What the library's own exception says.
constexpr const char* noMemory = "std::bad_alloc";

bool contains(const std::string& text, const char* part) { return text.find(part) != std::string::npos; }

const char* const sourceAdvice = "The source is damaged or incomplete. Copy it again from the archive and repeat this "
                                 "command; the source is untouched.";
const char* const targetAdvice =
    "Make room at the target, or check that it can be written, and repeat this command with --force.";
const char* const namesAdvice =
    "The source is untouched. Change or shorten that in the program that made the deck, and convert it again.";
const char* const memoryAdvice =
    "The source is untouched and need not be damaged. Repeat this command where more memory "
    "is free; the deck's largest timestep has to fit in it.";
const char* const unsupportedAdvice = "Keep the source: it is untouched, and a later version will convert it.";

/// A text of several lines with all but the first indented, as they stand below a first line, and
/// without control characters: names out of a deck must not steer the terminal.
std::string indented(std::string text)
{
    std::replace_if(
        text.begin(), text.end(),
        [](char c) { return (static_cast<unsigned char>(c) < 0x20 && c != '\n') || c == 0x7F; }, '?');
    for (size_t at = text.find('\n'); at != std::string::npos; at = text.find('\n', at + 1))
        text.insert(at + 1, "  ");
    return text;
}

/// The cause that a layer below told in a sentence of its own joins the sentence before it.
std::string joined(std::string text)
{
    for (size_t at = text.find(".\n"); at != std::string::npos; at = text.find(".\n", at + 1))
        if (at + 2 < text.size() && text[at + 2] != ' ')
            text.replace(at, 2, ": ");
    return text;
}

std::string withoutEnd(std::string text)
{
    while (!text.empty() && (text.back() == '\n' || text.back() == '.'))
        text.pop_back();
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

std::string utf8(const QString& text) { return text.toStdString(); }

void printFailure(const CFailure& failure)
{
    const char* const name = errorHasColour() ? "\x1b[31mbrenmark:\x1b[0m " : "brenmark: ";
    std::string text = name + indented(joined(withoutEnd(failure.what()))) + '\n';
    if (!failure.advice.empty())
        text += "  " + indented(failure.advice) + '\n';
    printError(text);
}

CFailure failureFromLog(const std::vector<SLogMessage>& messages, const std::string& path, const CFailure& fallback)
{
    for (const auto& [level, title, text] : messages)
        if (contains(text, notCarried))
            return CFailure(eExitUnsupported, located(path, text), unsupportedAdvice);
    for (const auto& [level, title, text] : messages) {
        if (level != eError)
            continue;
        if (const size_t at = text.find(noMemory); at != std::string::npos)
            return CFailure(eExitDifferent,
                            located(path, std::string(text).replace(at, std::strlen(noMemory), "too little memory")),
                            memoryAdvice);
        if (contains(title, "names"))
            return CFailure(eExitUnsupported, text, namesAdvice);
        if (contains(title, "write"))
            return CFailure(eExitTarget, text, targetAdvice);
        if (contains(title, "read"))
            return CFailure(eExitSource, located(path, text), sourceAdvice);
        // Companions are read and written: the caller knows which.
        return CFailure(fallback.code, fallback.code == eExitTarget ? text : located(path, text), fallback.advice);
    }
    return fallback;
}

void printWarnings(const std::vector<SLogMessage>& messages)
{
    std::vector<std::string> different; // in the order of their first coming
    std::map<std::string, size_t> count;
    for (const auto& [level, title, text] : messages) {
        if (level != eWarning)
            continue;
        const std::string line = title + ": " + indented(withoutEnd(text));
        if (++count[line] == 1)
            different.push_back(line);
    }
    const char* const head = errorHasColour() ? "brenmark: \x1b[33mwarning:\x1b[0m " : "brenmark: warning: ";
    for (size_t i = 0; i < std::min(different.size(), mostWarnings); ++i) {
        const size_t times = count[different[i]];
        printError(head + different[i] + (times > 1 ? " (" + std::to_string(times) + " times).\n" : ".\n"));
    }
    if (different.size() > mostWarnings)
        printError(head + std::to_string(different.size() - mostWarnings) +
                   " more of other kinds; --json lists all.\n");
}

} // namespace NBrenmark
