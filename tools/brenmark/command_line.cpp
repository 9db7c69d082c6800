#include "brenmark/command_line.h"

#include "brenmark/argument_values.h"
#include "brenmark/command_options.h"
#include "brenmark/failure.h"
#include "brenmark/interrupt.h"
#include "brenmark/nearest_word.h"
#include "brenmark/progress_display.h"
#include "brenmark/terminal.h"

#include "core/memory_ceiling.h"
#include "core/thread_pool.h"
#include "core/worker.h"

#include <algorithm>

namespace NBrenmark {

std::vector<std::string> extrasOf(const CLI::App& command)
{
    std::vector<std::string> extras = command.remaining();
    extras.erase(std::remove(extras.begin(), extras.end(), "--"), extras.end());
    return extras;
}

/// The first word among them that looks like an option; the end for none.
static std::vector<std::string>::const_iterator optionAmong(const std::vector<std::string>& extras)
{
    return std::find_if(extras.begin(), extras.end(),
                        [](const std::string& extra) { return extra.size() > 1 && extra[0] == '-'; });
}

// ---------------------------------------------------------------- what can't be understood

std::vector<std::string> CCommandLine::commandNames() const
{
    std::vector<std::string> names;
    for (const CLI::App* const command : app.get_subcommands([](const CLI::App*) { return true; }))
        names.push_back(command->get_name());
    return names;
}

const CLI::App* CCommandLine::commandOf(const std::string& word) const
{
    const std::vector<std::string> names = commandNames();
    const bool isOne = std::find(names.begin(), names.end(), word) != names.end();
    return isOne ? app.get_subcommand(word) : nullptr;
}

void CCommandLine::refuseCommand(const std::string& word) const
{
    const std::string nearest = nearestOf(word, commandNames());
    std::string all;
    for (const std::string& name : commandNames())
        all += (all.empty() ? "" : ", ") + name;
    throw CFailure(eExitUsage, oneLine(word) + ": there is no such command",
                   nearest.empty() ? "The commands are " + all + "; see brenmark --help."
                                   : "Did you mean brenmark " + nearest + "?");
}

static std::vector<std::string> optionNames(const CLI::App& command)
{
    std::vector<std::string> names;
    for (const CLI::Option* const option : command.get_options())
        for (const std::string& name : option->get_lnames())
            names.push_back("--" + name);
    return names;
}

/// A flag with a value, as in --json=yes.
static void refuseValuesOfFlags(const CLI::App& command, int argumentCount, char** arguments)
{
    for (int i = 2; i < argumentCount && std::string(arguments[i]) != "--"; ++i) {
        const std::string argument = arguments[i];
        const std::string name = argument.substr(0, argument.find('='));
        if (name.size() == argument.size() || name.compare(0, 2, "--") != 0)
            continue;
        const CLI::Option* const option = command.get_option_no_throw(name);
        if (option != nullptr && option->get_expected_max() == 0)
            throw CFailure(eExitUsage, name + " takes no value", "Give it alone, or leave it out.");
    }
}

bool CCommandLine::isConvertWrong() const
{
    const std::vector<std::string> extras = extrasOf(*convertCommand);
    const bool isOption = optionAmong(extras) != extras.end();
    return convertCommand->parsed() &&
           (isOption ||
            (!archiveLine.isGiven() && (!extras.empty() || convertCommand->get_option("OUT")->count() == 0)));
}

/// \param parseError  the parser's own text
void CCommandLine::refuse(const std::string& parseError, const CLI::App& command) const
{
    const std::string help = "See brenmark help " + command.get_name() + ".";
    const std::vector<std::string> extras = extrasOf(command);
    const auto option = optionAmong(extras);
    if (option != extras.end()) {
        const std::string name = option->substr(0, option->find('='));
        const std::string nearest = nearestOf(name, optionNames(command));
        throw CFailure(eExitUsage, oneLine(name) + ": " + command.get_name() + " has no such option",
                       nearest.empty() ? help : "Did you mean " + nearest + "? " + help);
    }
    if (!extras.empty() && &command == convertCommand)
        throw CFailure(eExitUsage,
                       "convert takes one deck at a time, IN and OUT, without -o; " + oneLine(extras.front()) +
                           " is one too many",
                       adviceForManyDecks("*.dem"));
    if (!extras.empty())
        throw CFailure(eExitUsage, oneLine(extras.front()) + ": " + command.get_name() + " takes no further argument",
                       help);
    const std::string name = parseError.substr(0, parseError.find(':'));
    if (name.compare(0, 1, "-") == 0)
        throw CFailure(eExitUsage, name + " needs a value", help);
    std::string missing;
    for (const CLI::Option* const one : command.get_options())
        if ((one->get_required() || (one->get_positional() && &command == convertCommand)) && one->count() == 0)
            missing += (missing.empty() ? "" : " and ") +
                       (one->get_positional() ? one->get_name(true, false) : "--" + one->get_lnames().front());
    if (!missing.empty())
        throw CFailure(eExitUsage,
                       command.get_name() + ": " + missing +
                           (missing.find(' ') == std::string::npos ? " is missing" : " are missing"),
                       help);
    throw CFailure(eExitUsage, command.get_name() + ": the arguments can't be understood", help);
}

// ---------------------------------------------------------------- the way through

EExitCode CCommandLine::showHelp(const std::vector<std::string>& about)
{
    std::string text;
    if (about.empty()) {
        text = app.help();
    }
    else {
        const CLI::App* const command = commandOf(about.front());
        if (command == nullptr)
            refuseCommand(about.front());
        text = command->help("brenmark");
    }
    unlessReaderIsGone([&] {
        printResult(text);
        flushResult();
    });
    return eExitDone;
}

EExitCode CCommandLine::run(int argumentCount, char** arguments)
{
    const std::vector<std::string> words(arguments + 1, arguments + argumentCount);
    if (words.empty())
        return showHelp({});
    if (words.front() == "help")
        return showHelp({words.begin() + 1, words.end()});
    const CLI::App* const command = commandOf(words.front());
    if (command == nullptr && words.front().compare(0, 1, "-") != 0)
        refuseCommand(words.front());
    if (command != nullptr)
        refuseValuesOfFlags(*command, argumentCount, arguments);
    try {
        app.parse(argumentCount, arguments);
    }
    catch (const CLI::CallForHelp&) {
        return showHelp(command == nullptr ? std::vector<std::string>()
                                           : std::vector<std::string>{command->get_name()});
    }
    catch (const CLI::CallForVersion& version) {
        printResult(version.what() + std::string("\n"));
        flushResult();
        return eExitDone;
    }
    catch (const CLI::ParseError& error) {
        if (command == nullptr)
            throw CFailure(eExitUsage, oneLine(words.front()) + ": brenmark has no such option",
                           "The command comes first, then its options; see brenmark --help.");
        refuse(error.get_name() == "ArgumentMismatch" ? error.what() : "", *command);
    }
    if (isConvertWrong())
        refuse(std::string(), *convertCommand);
    chooseColour(colourFrom(colour));
    chooseProgress(progressFrom(progress));
    if (command != convertCommand)
        letInterruptsEndTheProgram();
    setMemoryCeiling(mostMemory.empty() ? 0 : sizeFrom("--max-memory", mostMemory));
    setThreadCount(threadsChosen(threads));
    const CThreadPool pool(threadCount()); // idle where a command has nothing to share
    const CKeptThread kept;
    return chosen();
}

bool isJsonAsked(int argumentCount, char** arguments)
{
    for (int i = 2; i < argumentCount && std::string(arguments[i]) != "--"; ++i)
        if (std::string(arguments[i]) == "--json")
            return true;
    return false;
}

EExitCode runCommandLine(int argumentCount, char** arguments) { return CCommandLine().run(argumentCount, arguments); }

} // namespace NBrenmark
