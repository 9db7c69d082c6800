// brenmark, the command line: parses the options and hands over to a command.

#include "brenmark/commands.h"
#include "brenmark/deck_reader.h"
#include "brenmark/failure.h"
#include "brenmark/interrupt.h"
#include "brenmark/terminal.h"

#include "core/memory_ceiling.h"

#include <QFile>
#include <QTextCodec>

#include <CLI/CLI.hpp>

#include <clocale>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <functional>
#include <langinfo.h>
#include <new>
#include <sstream>
#include <unistd.h>

namespace NBrenmark {

namespace {

/// Paths come in the encoding of the locale. The C locale has none beyond ASCII: there they are
/// taken as UTF-8, or a deck with an umlaut in its name could not be opened from a bare script.
void chooseEncoding()
{
    std::setlocale(LC_CTYPE, "");
    if (std::strcmp(nl_langinfo(CODESET), "ANSI_X3.4-1968") == 0)
        QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
}

QString pathFrom(const std::string& argument)
{
    const QByteArray bytes = QByteArray::fromStdString(argument);
    const QString path = QFile::decodeName(bytes);
    if (path.isEmpty())
        throw CFailure(eExitUsage, "an empty path", "Name the deck's first file.");
    if (QFile::encodeName(path) != bytes)
        throw CFailure(eExitUsage, argument + ": the path isn't text in the encoding of the locale",
                       "Set LC_ALL to the encoding of your file names, or rename the files.");
    return path;
}

/// A key with nothing in it would be all keys.
QString keyFrom(const std::string& argument)
{
    if (argument.find_first_not_of(':') == std::string::npos)
        throw CFailure(eExitUsage, "an empty key", "Leave it out for all keys.");
    return QFile::decodeName(QByteArray::fromStdString(argument));
}

int run(int argumentCount, char** arguments)
{
    CLI::App app("Moves stored particle simulations, decks, into the current file family.", "brenmark");
    app.set_version_flag("--version", "brenmark " BRENMARK_VERSION, "Show the version and leave");
    app.set_help_flag("-h,--help", "Show this help and leave");
    app.require_subcommand(1);
    app.footer("Exit status: 0 done, 1 different or not converted, 2 usage, 3 source missing or damaged,\n"
               "4 target or other input and output, 5 no supported deck, 6 nothing to convert and\n"
               "nothing made, 130 interrupted.");
    std::function<EExitCode()> command;

    std::string source, target;
    std::vector<std::string> paths;

    SConvertOptions convert;
    CLI::App* const convertApp = app.add_subcommand("convert", "Convert a legacy deck into a new deck");
    convertApp->add_option("IN", source, "The legacy deck: its first file, NAME.dem")->required();
    convertApp->add_option("OUT", target, "The new deck, or a folder for a deck of the same name")->required();
    convertApp->add_flag("--force", convert.force, "Replace an existing OUT, and discard an unfinished one");
    convertApp->add_flag("--resume", convert.resume, "Go on where an unfinished conversion was broken off");
    convertApp->add_flag("--strict", convert.strict, "Make no new deck if anything was lost through damage");
    CLI::Option* const verifyFlag =
        convertApp->add_flag("--verify", convert.verify, "Compare the result with the source at the end");
    convertApp
        ->add_flag("--ignore-companions", convert.ignoreCompanions,
                   "Leave out companions of the source that can't be read")
        ->excludes(verifyFlag);
    convertApp->add_flag("-q,--quiet", convert.quiet, "Show no progress and no summary");
    convertApp->add_flag("--json", convert.json, "Show the result as one JSON object");
    convertApp->callback([&] {
        command = [&] {
            convert.source = pathFrom(source);
            convert.target = pathFrom(target);
            return runConvert(convert);
        };
    });

    SCheckOptions check;
    CLI::App* const checkApp = app.add_subcommand("check", "Tell which decks need converting, one line each");
    checkApp->add_option("PATH", paths, "Decks, or folders of decks")->required();
    checkApp->add_flag("--json", check.json, "Show an array of JSON objects");
    checkApp->callback([&] {
        command = [&] {
            for (const std::string& path : paths)
                check.paths.append(pathFrom(path));
            return runCheck(check);
        };
    });

    SInfoOptions info;
    CLI::App* const infoApp = app.add_subcommand("info", "Describe a deck of either family");
    infoApp->add_option("DECK", source, "The deck's first file, NAME.dem")->required();
    CLI::Option* const quick =
        infoApp->add_flag("--quick", info.quick, "Read the last timestep only, and count what is in no other");
    infoApp->add_flag("--settings", info.settings, "Describe what its settings hold instead")->excludes(quick);
    infoApp->add_flag("--json", info.json, "Show one JSON object");
    infoApp->callback([&] {
        command = [&] {
            info.deck = pathFrom(source);
            return runInfo(info);
        };
    });

    SConfigOptions config;
    CLI::App* const configApp = app.add_subcommand("config", "Show the configuration of a deck, one key a line");
    configApp->add_option("DECK", source, "The deck's first file, NAME.dem")->required();
    CLI::Option* const key =
        configApp->add_option("KEY", target, "This key and those below it, for example PROCESSOR:WRITE");
    configApp->add_flag("--json", config.json, "Show one JSON object");
    configApp->callback([&] {
        command = [&] {
            config.deck = pathFrom(source);
            if (key->count() > 0)
                config.key = keyFrom(target);
            return runConfig(config);
        };
    });

    SDumpOptions dump;
    CLI::App* const dumpApp = app.add_subcommand("dump", "Show the whole model as text, one value a line");
    dumpApp->add_option("DECK", source, "The deck's first file, NAME.dem")->required();
    CLI::Option* const timestep =
        dumpApp->add_option("--timestep", dump.timestep, "This timestep alone, counted from 0")->type_name("N");
    dumpApp->add_flag("--full", dump.full, "Show arrays with all their values");
    dumpApp->callback([&] {
        command = [&] {
            dump.deck = pathFrom(source);
            dump.oneTimestep = timestep->count() > 0;
            return runDump(dump);
        };
    });

    SVerifyOptions verify;
    CLI::App* const verifyApp = app.add_subcommand("verify", "Compare a source and what it was converted into");
    verifyApp->add_option("SOURCE", source, "A deck: its first file, NAME.dem")->required();
    verifyApp->add_option("CONVERTED", target, "The deck to compare it with")->required();
    verifyApp->add_option("--limit", verify.limit, "Name at most N differences, 0 for all")
        ->type_name("N")
        ->capture_default_str();
    verifyApp->add_flag("--json", verify.json, "Show one JSON object");
    verifyApp->callback([&] {
        command = [&] {
            verify.source = pathFrom(source);
            verify.converted = pathFrom(target);
            requireNoPartialDeck(verify.converted);
            return runVerify(verify);
        };
    });

    std::uint64_t mostMemory = 0;
    for (CLI::App* const reading : {convertApp, infoApp, dumpApp, verifyApp})
        reading->add_option("--max-memory", mostMemory, "The most that one timestep may take, for example 4GB")
            ->transform(CLI::AsSizeValue(true))
            ->type_name("SIZE");

    try {
        app.parse(argumentCount, arguments);
    }
    catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == static_cast<int>(CLI::ExitCodes::Success)) { // --help, --version
            std::ostringstream text;
            app.exit(error, text, text);
            printResult(text.str());
            flushResult();
            return eExitDone;
        }
        const auto chosen = app.get_subcommands();
        throw CFailure(eExitUsage, error.what(),
                       "See brenmark " + (chosen.empty() ? "" : chosen.front()->get_name() + ' ') + "--help.");
    }
    if (!convertApp->parsed())
        letInterruptsEndTheProgram();
    setMemoryCeiling(mostMemory);
    return command();
}

/// Some functions of the libraries below let nothing through, too little memory included: the program ends there, but
/// with the status and text that say so. Nothing here takes memory.
void endWithStatus()
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
    const char* const text = isMemory
                                 ? "brenmark: too little memory\n  Repeat this command where more memory is free.\n"
                                 : "brenmark: ended where no failure is expected\n  Please report this.\n";
    [[maybe_unused]] const ssize_t written = ::write(STDERR_FILENO, text, std::strlen(text));
    std::_Exit(isMemory ? eExitTarget : eExitDifferent);
}

} // namespace

} // namespace NBrenmark

int main(int argumentCount, char** arguments)
{
    using namespace NBrenmark;
    std::set_terminate(endWithStatus);
    catchInterrupts();
    std::signal(SIGPIPE, SIG_IGN); // a reader that has gone must not end a conversion between two bytes
    std::signal(SIGXFSZ, SIG_IGN); // a write beyond the limit of a file's size fails like any other
    try {
        chooseEncoding();
        return run(argumentCount, arguments);
    }
    catch (const CFailure& failure) {
        printFailure(failure);
        return failure.code;
    }
    catch (const COutputFailure& failure) {
        if (failure.readerGone())
            return eExitDone;
        printFailure(CFailure(eExitTarget, failure.text(), "Make room where the output goes and repeat this command."));
        return eExitTarget;
    }
    catch (const std::bad_alloc&) {
        printFailure(CFailure(eExitTarget, "too little memory", "Repeat this command where more memory is free."));
        return eExitTarget;
    }
    catch (const std::exception& error) {
        printFailure(CFailure(eExitDifferent, error.what(), "This shouldn't happen; the source is untouched."));
        return eExitDifferent;
    }
}
