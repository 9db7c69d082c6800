#include "brenmark/command_line.h"

#include "brenmark/archive/archive_line.h"
#include "brenmark/argument_values.h"
#include "brenmark/commands.h"
#include "brenmark/completion/completion.h"
#include "brenmark/deck_reader.h"
#include "brenmark/diff/diff.h"
#include "brenmark/failure.h"
#include "brenmark/interrupt.h"
#include "brenmark/nearest_word.h"
#include "brenmark/progress_display.h"
#include "brenmark/terminal.h"

#include "core/memory_ceiling.h"
#include "core/thread_pool.h"
#include "core/worker.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <functional>

namespace NBrenmark {

namespace {

/// The commands, their options, and where those are stored.
class CCommandLine
{
public:
    CCommandLine();

    EExitCode run(int argumentCount, char** arguments);

private:
    /// A command with what every command takes.
    CLI::App* add(const char* name, const char* what);
    void addConvert();
    EExitCode runArchiveLine();
    void addCheck();
    void addInfo();
    void addConfig();
    void addDump();
    void addVerify();
    void addDiff();
    void addLaw();
    void addValues();
    void addXml();
    void addPlugins();
    void chooseXml();
    void addView();
    void addExport();
    void addPlot();
    void addSnapshot();
    void addCompletion();
    /// What the commands take that read timesteps.
    void addReading(CLI::App* command);
    void addThreads(CLI::App* command);
    void addProgress(CLI::App* command);

    EExitCode showHelp(const std::vector<std::string>& about);
    std::vector<std::string> commandNames() const;
    /// Null for none.
    const CLI::App* commandOf(const std::string& word) const;
    [[noreturn]] void refuseCommand(const std::string& word) const;
    [[noreturn]] void refuse(const std::string& parseError, const CLI::App& command) const;
    /// What the parser lets through for the sake of -o.
    bool isConvertWrong() const;

    CLI::App app{"Moves stored particle simulations, decks, into the current file family.", "brenmark"};
    CLI::App* convertCommand = nullptr;
    std::function<EExitCode()> chosen;

    std::string source, target, key, timestep, limit, mostMemory, threads, overlaps, speed, states, csv, svg, output,
        intervals, action, digestFile, tolerance, library, png;
    std::string colour = "auto", progress = "auto";
    std::vector<std::string> paths, pair;
    SConvertOptions convert;
    CArchiveLine archiveLine;
    CArchiveCommands archiveCommands;
    SCheckOptions check;
    SInfoOptions info;
    SConfigOptions config;
    SDumpOptions dump;
    SVerifyOptions verify;
    SDiffOptions diff;
    SLawOptions law;
    SValuesOptions values;
    SXmlOptions xml;
    SPluginsOptions plugins;
    SViewOptions view;
    SExportOptions exported;
    SPlotOptions plot;
    SSnapshotOptions snapshot;
};

// ---------------------------------------------------------------- the commands

/// Arguments that the parser had no use for, without the mark after which a word is no option.
std::vector<std::string> extrasOf(const CLI::App& command)
{
    std::vector<std::string> extras = command.remaining();
    extras.erase(std::remove(extras.begin(), extras.end(), "--"), extras.end());
    return extras;
}

/// The first word among them that looks like an option; the end for none.
std::vector<std::string>::const_iterator optionAmong(const std::vector<std::string>& extras)
{
    return std::find_if(extras.begin(), extras.end(),
                        [](const std::string& extra) { return extra.size() > 1 && extra[0] == '-'; });
}

CCommandLine::CCommandLine()
{
    app.set_version_flag("-V,--version", "brenmark " BRENMARK_VERSION, "Show the version and exit");
    app.set_help_flag("-h,--help", "Show this help and exit");
    app.require_subcommand(1);
    for (const auto& [word, shown] : {std::pair("SUBCOMMAND", "COMMAND"), std::pair("Positionals", "Arguments"),
                                      std::pair("REQUIRED", ""), std::pair("TEXT", "")})
        app.get_formatter()->label(word, shown);
    app.footer("brenmark help COMMAND shows the options of a command.\n"
               "Exit status: 0 done, 1 different or not converted, 2 usage, 3 source missing or damaged,\n"
               "4 target or other input and output, 5 not a deck that is supported, 6 nothing to convert\n"
               "and nothing made, 130 interrupted.");
    addConvert();
    addCheck();
    addInfo();
    addConfig();
    addDump();
    addVerify();
    addDiff();
    addLaw();
    addValues();
    addXml();
    addView();
    addExport();
    addPlot();
    addSnapshot();
    archiveCommands.addTo([this](const char* name, const char* what) { return add(name, what); },
                          [this](std::function<EExitCode()> command) { chosen = std::move(command); });
    addPlugins();
    addCompletion();
}

CLI::App* CCommandLine::add(const char* name, const char* what)
{
    CLI::App* const command = app.add_subcommand(name, what)->group("Commands");
    command->option_defaults()->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
    command->add_option("--color", colour, "Colour on standard error: auto, always or never")->type_name("WHEN");
    return command;
}

void CCommandLine::addReading(CLI::App* command)
{
    command->add_option("--max-memory", mostMemory, "Memory limit for a deck, for example 4GB")->type_name("SIZE");
}

void CCommandLine::addProgress(CLI::App* command)
{
    command->add_option("--progress", progress, "Progress on standard error: auto, bar, plain, json or none")
        ->type_name("FORM");
}

void CCommandLine::addThreads(CLI::App* command)
{
    command->add_option("--threads", threads, "Worker threads; default: one for each core that may be used")
        ->type_name("N");
}

void CCommandLine::addConvert()
{
    CLI::App* const command = convertCommand = add("convert", "Convert a legacy deck into a new deck, or all of them");
    command->add_option("IN", source, "The legacy deck: its first file, NAME.dem; with -o any number of them")
        ->required();
    command->add_option("OUT", target, "The new deck, or a folder for a deck of the same name; not with -o");
    command->allow_extras(); // with -o all of them are decks
    archiveLine.addTo(*command);
    command->add_flag("--force", convert.force, "Replace an existing OUT, and discard an unfinished one");
    command->add_flag("--resume", convert.resume, "Go on with an unfinished conversion");
    command->add_flag("--strict", convert.strict, "Make no new deck if anything was lost through damage");
    command->add_flag("--verify", convert.verify, "Compare the result with the source at the end");
    command->add_flag("--ignore-companions", convert.ignoreCompanions,
                      "Leave out companions of the source that can't be read; not with --verify");
    command->add_flag_callback(
        "--no-plugins", [this] { convert.bindPlugins = false; },
        "Bind no plug-in libraries; their models are kept by their names");
    command->add_flag("--digest", convert.digest, "Write the digest of the values beside the new deck");
    command->add_flag("--dry-run", convert.dryRun, "Look for what would stop it, and write nothing");
    command->add_option("--report", convert.page, "Write a report as a page, with the comparison of --verify")
        ->type_name("FILE");
    command->add_flag("--facts", convert.facts)->group("");
    command->add_option("--record", convert.record)->group(""); // for the processes of a run over many decks
    command->add_flag("-q,--quiet", convert.quiet, "Show no progress and no summary");
    command->add_flag("-v,--verbose", convert.verbose, "Show a line for each timestep, and remarks");
    command->add_flag("--json", convert.json, "Show the result as one JSON object");
    command->add_flag("--xdmf", convert.xdmf, "Write an XDMF file beside the new deck, as brenmark view does");
    addProgress(command);
    addReading(command);
    addThreads(command);
    command->callback([this] {
        chosen = [this] {
            if (convert.ignoreCompanions && convert.wantsComparison())
                throw CFailure(eExitUsage, "--ignore-companions and --verify or --report can't be used together",
                               "What is left out would be missing on both sides of the comparison.");
            if (convert.xdmf && convert.json)
                throw CFailure(eExitUsage, "--xdmf and --json can't be used together",
                               "Use brenmark view after the conversion.");
            if (convert.quiet && convert.verbose)
                throw CFailure(eExitUsage, "--quiet and --verbose can't be used together", "Leave one of them out.");
            if (archiveLine.isGiven())
                return runArchiveLine();
            archiveLine.requireNone();
            convert.source = pathFrom(source);
            convert.target = pathFrom(target);
            return runConvert(convert);
        };
    });
}

EExitCode CCommandLine::runArchiveLine()
{
    std::vector<std::string> inputs{source};
    if (!target.empty())
        inputs.push_back(target);
    const std::vector<std::string> more = extrasOf(*convertCommand);
    inputs.insert(inputs.end(), more.begin(), more.end());
    return archiveLine.run(convert, inputs, threads, mostMemory);
}

void CCommandLine::addCheck()
{
    CLI::App* const command = add("check", "Show which decks need converting, a line each");
    command->add_option("PATH", paths, "Decks, or folders of decks")
        ->required()
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    command->add_flag("--json", check.json, "Show an array of JSON objects");
    command->callback([this] {
        chosen = [this] {
            for (const std::string& path : paths)
                check.paths.append(pathFrom(path));
            return runCheck(check);
        };
    });
}

void CCommandLine::addInfo()
{
    CLI::App* const command = add("info", "Describe a deck of either family");
    command->add_option("DECK", source, "The deck's first file, NAME.dem")->required();
    command->add_flag("--quick", info.quick, "Read the last timestep only");
    command->add_flag("--settings", info.settings, "Describe what its settings hold instead; not with --quick");
    command->add_flag("--json", info.json, "Show one JSON object");
    addProgress(command);
    addReading(command);
    command->callback([this] {
        chosen = [this] {
            if (info.quick && info.settings)
                throw CFailure(eExitUsage, "--quick and --settings can't be used together",
                               "With --settings no timestep is read at all.");
            info.deck = pathFrom(source);
            return runInfo(info);
        };
    });
}

void CCommandLine::addConfig()
{
    CLI::App* const command = add("config", "Show the configuration of a deck, one key a line");
    command->add_option("DECK", source, "The deck's first file, NAME.dem")->required();
    CLI::Option* const wanted =
        command->add_option("KEY", key, "This key and those below it, for example PROCESSOR:WRITE");
    command->add_flag("--json", config.json, "Show one JSON object");
    command->callback([this, wanted] {
        chosen = [this, wanted] {
            config.deck = pathFrom(source);
            if (wanted->count() > 0)
                config.key = keyFrom(key);
            return runConfig(config);
        };
    });
}

void CCommandLine::addDump()
{
    CLI::App* const command = add("dump", "Show the whole model as text, one value a line");
    command->add_option("DECK", source, "The deck's first file, NAME.dem")->required();
    CLI::Option* const number =
        command->add_option("--timestep", timestep, "This timestep alone, counted from 0")->type_name("N");
    CLI::Option* const full = command->add_flag("--full", dump.full, "Show arrays with all their values");
    command->add_flag("--stored", dump.stored, "Show the records of a deck below 20.0.0 in place of what they become")
        ->excludes(full);
    addReading(command);
    command->callback([this, number] {
        chosen = [this, number] {
            dump.deck = pathFrom(source);
            dump.oneTimestep = number->count() > 0;
            if (dump.oneTimestep)
                dump.timestep = numberFrom("--timestep", timestep);
            return runDump(dump);
        };
    });
}

void CCommandLine::addVerify()
{
    CLI::App* const command = add("verify", "Compare a deck with what it was converted into");
    command->add_option("SOURCE", source, "A deck: its first file, NAME.dem")->required();
    command->add_option("CONVERTED", target, "The deck to compare it with; not with --digest");
    command->add_option("--digest", digestFile, "Instead, hold SOURCE against the digest of its values in this file")
        ->type_name("FILE");
    command->add_option("--limit", limit, "List at most N differences, 0 for all; default: 100")->type_name("N");
    command->add_flag("--json", verify.json, "Show one JSON object");
    addProgress(command);
    addReading(command);
    addThreads(command);
    command->callback([this] {
        chosen = [this] {
            verify.source = pathFrom(source);
            if (digestFile.empty() == target.empty())
                throw CFailure(eExitUsage,
                               target.empty() ? "verify: CONVERTED is missing"
                                              : "--digest takes the place of CONVERTED",
                               "See brenmark help verify.");
            if (!digestFile.empty()) {
                verify.digest = pathFrom(digestFile);
                requireNoPartialDeck(verify.source);
                return runVerify(verify);
            }
            verify.converted = pathFrom(target);
            if (!limit.empty())
                verify.limit = numberFrom("--limit", limit);
            requireNoPartialDeck(verify.converted);
            return runVerify(verify);
        };
    });
}

void CCommandLine::addDiff()
{
    CLI::App* const command = add("diff", "Show how two decks differ, whatever family each is of");
    command->add_option("A", source, "A deck: its first file, NAME.dem")->required();
    command->add_option("B", target, "Another one")->required();
    command->add_option("--tolerance", tolerance, "Pass over smaller differences of real numbers: 1e-9, or 0.01%")
        ->type_name("BY");
    command->add_option("--limit", limit, "Show at most N differences; default: all")->type_name("N");
    command->add_flag("--brief", diff.isBrief, "Show only whether they differ");
    command->add_flag("--json", diff.json, "Show one JSON object");
    addProgress(command);
    addReading(command);
    addThreads(command);
    command->callback([this] {
        chosen = [this] {
            diff.first = pathFrom(source);
            diff.second = pathFrom(target);
            if (!limit.empty())
                diff.limit = numberFrom("--limit", limit);
            if (!tolerance.empty())
                diff.tolerance = toleranceFrom("--tolerance", tolerance);
            return runDiff(diff);
        };
    });
}

void CCommandLine::addLaw()
{
    CLI::App* const command =
        add("law", "Show the force of two things of a deck in contact, by its own contact models");
    command->add_option("DECK", source, "The deck's first file, NAME.dem");
    command->add_option("--pair", pair, "Two particle types, or a type and a geometry group; type:NAME, geometry:NAME")
        ->expected(2)
        ->type_name("NAME");
    command->add_option("--overlap", overlaps, "Overlaps in m, for example 0:1e-5:50 for 50 from 0 to 10 um")
        ->type_name("FROM:TO:COUNT");
    command->add_option("--speed", speed, "Speed of approach in m/s; default: 1e-6, without noticeable damping")
        ->type_name("V");
    command->add_flag("--load-unload", law.unloads, "Go back as well");
    command->add_option("--only", law.only, "This contact model of the chain alone")->type_name("MODEL");
    command->add_option("--show", law.show, "Draw this column of the table; default: normal force")
        ->type_name("COLUMN");
    command->add_option("--csv", csv, "Write the table to a file")->type_name("FILE");
    command->add_option("--svg", svg, "Draw the curve into a file")->type_name("FILE");
    command
        ->add_option("--states", states, "Instead, calculate an array of contact states in JSON; - is standard input")
        ->type_name("FILE");
    command->callback([this] {
        chosen = [this] {
            const bool hasDeck = !source.empty(), hasStates = !states.empty();
            if (hasStates && (hasDeck || !pair.empty() || !overlaps.empty()))
                throw CFailure(eExitUsage, "--states can't be used with a deck", "Leave DECK and its options out.");
            if (!hasStates && (!hasDeck || pair.size() != 2 || overlaps.empty()))
                throw CFailure(eExitUsage, "law: needs DECK, --pair and --overlap, or --states",
                               "For example: brenmark law pile.dem --pair Ball Rod --overlap 0:1e-5:50");
            if (hasStates)
                law.states = pathFrom(states);
            else {
                law.deck = pathFrom(source);
                law.first = pair[0];
                law.second = pair[1];
                std::tie(law.from, law.to, law.count) = rangeFrom("--overlap", overlaps);
                if (!speed.empty())
                    law.speed = speedFrom("--speed", speed);
                law.csv = csv.empty() ? QString() : pathFrom(csv);
                law.svg = svg.empty() ? QString() : pathFrom(svg);
            }
            return runLaw(law);
        };
    });
}

void CCommandLine::addValues()
{
    CLI::App* const command = add("values", "Show the values of an attribute at the timesteps of a deck, as a table");
    command->add_option("DECK", source, "The deck's first file, NAME.dem")->required();
    command->add_option("--attribute", values.attribute, "The attribute, for example \"Velocity Magnitude\"")
        ->type_name("NAME");
    command
        ->add_option("--query", values.query, "Instead, the answers of a query of the deck's data exports, by its ID")
        ->type_name("NAME");
    command->add_flag("--list", values.list, "Show the attributes of the deck by their owners instead");
    command
        ->add_option("--owner", values.owner,
                     "Whose values: particle, contact, bond, collision, geometry or simulation; default: the first of "
                     "them that has the attribute")
        ->type_name("OWNER");
    command->add_option("--type", values.type, "Of this particle type, geometry group or family of pairs alone")
        ->type_name("NAME");
    command->add_option("--selection", values.selection, "Of the particles of this selection of the deck alone")
        ->type_name("NAME");
    command->add_option("--timestep", timestep, "A timestep counted from 0, a range FROM:TO with both ends, or all")
        ->type_name("N");
    command->add_option("--units", values.units, "Units for quantities, for example length=mm,angVel=rpm")
        ->type_name("LIST");
    command->add_option("--output", output, "Write the table to a file")->type_name("FILE");
    command->add_flag("--summary", values.summary, "Show count, minimum, maximum, mean and sum instead of the table");
    command->add_flag("--json", values.json, "Show the summary as JSON");
    command->add_option("--histogram", intervals, "Draw how the values are spread over N intervals instead")
        ->type_name("N");
    command->add_option("--svg", svg, "Draw the histogram into a file as well")->type_name("FILE");
    addReading(command);
    command->callback([this] {
        chosen = [this] {
            if (int(values.list) + int(!values.attribute.empty()) + int(!values.query.empty()) != 1)
                throw CFailure(eExitUsage, "values: needs either --attribute, --query or --list",
                               "For example: brenmark values pile.dem --attribute \"Velocity Magnitude\"");
            if (values.json && !values.summary)
                throw CFailure(eExitUsage, "--json needs --summary", "The table itself has no JSON form.");
            if (int(values.summary) + int(!intervals.empty()) + int(!output.empty()) + int(values.list) > 1)
                throw CFailure(eExitUsage, "--list, --summary, --histogram and --output can't be used together",
                               "Use one of them.");
            const bool hasMore = values.summary || !intervals.empty() || !output.empty() || !values.owner.empty() ||
                                 !values.type.empty() || !values.selection.empty() || !values.units.empty();
            if (!values.query.empty() && hasMore)
                throw CFailure(eExitUsage, "--query takes --timestep alone",
                               "What the query is about is in the query itself.");
            values.deck = pathFrom(source);
            values.output = output.empty() ? QString() : pathFrom(output);
            if (!svg.empty() && intervals.empty())
                throw CFailure(eExitUsage, "--svg needs --histogram", "A table has no picture.");
            values.svg = svg.empty() ? QString() : pathFrom(svg);
            if (!intervals.empty())
                values.intervals = countFrom("--histogram", intervals);
            values.allTimesteps = timestep.empty() || timestep == "all";
            if (!values.allTimesteps)
                std::tie(values.firstTimestep, values.lastTimestep) = timestepsFrom("--timestep", timestep);
            return runValues(values);
        };
    });
}

void CCommandLine::addXml()
{
    CLI::App* const command = add("xml", "Write a deck as an XML document, or make one of documents");
    command->add_option("ACTION", action, "export: a deck into a document; import: documents into a new deck")
        ->required();
    command->add_option("FROM", source, "The deck's first file, NAME.dem; of an import the definition's document")
        ->required();
    command->add_option("TO", target, "The document; of an import the new deck, or a folder for it")->required();
    command
        ->add_option("--timestep", timestep,
                     "Export this timestep in place of the definition, counted from 0; import this document of one")
        ->type_name("N|FILE");
    command->add_flag("--contacts", xml.contacts, "Export the timestep's contacts");
    command->add_flag("--bonds", xml.bonds, "Export the timestep's bonds");
    command->add_flag("--collisions", xml.collisions, "Export how many collisions the timestep has");
    command->add_flag_callback(
        "--no-particles", [this] { xml.particles = false; }, "Leave out the timestep's particles");
    command->add_flag("--force", xml.force, "Replace an existing TO");
    addReading(command);
    command->callback([this] {
        chosen = [this] {
            chooseXml();
            return runXml(xml);
        };
    });
}

void CCommandLine::addCompletion()
{
    CLI::App* const command = add("completion", "Show the completion for a shell: bash, zsh or fish");
    command->add_option("SHELL", key, "bash, zsh or fish")->required();
    command->callback([this] { chosen = [this] { return printCompletion(app, key); }; });
}

void CCommandLine::addPlugins()
{
    CLI::App* const command =
        add("plugins", "Show the plug-in libraries that are found, and whether they can be bound");
    command->add_flag("--json", plugins.json, "Show one JSON object");
    command->add_option("--one-library", library)->group(""); // this program asks itself, in a process for each library
    command->callback([this] {
        chosen = [this] {
            plugins.oneLibrary = library.empty() ? QString() : pathFrom(library);
            return runPlugins(plugins);
        };
    });
}

void CCommandLine::chooseXml()
{
    const bool ofTimestep = xml.contacts || xml.bonds || xml.collisions || !xml.particles;
    xml.exports = action == "export";
    if (!xml.exports && action != "import")
        throw CFailure(eExitUsage, oneLine(action) + ": xml has no such action", "The actions are export and import.");
    if (ofTimestep && (!xml.exports || timestep.empty()))
        throw CFailure(eExitUsage, "--contacts, --bonds, --collisions and --no-particles are for a timestep's export",
                       "Give --timestep N with xml export, or leave them out.");
    xml.source = pathFrom(source);
    xml.target = pathFrom(target);
    if (timestep.empty())
        return;
    xml.oneTimestep = xml.exports;
    if (xml.exports)
        xml.timestep = numberFrom("--timestep", timestep);
    else
        xml.timestepDocument = pathFrom(timestep);
}

void CCommandLine::addView()
{
    CLI::App* const command = add("view", "Write an XDMF file beside a converted deck, for ParaView");
    command->add_option("DECK", source, "The deck's first file, NAME.dem")->required();
    command->add_flag("--force", view.force, "Replace files of the view's names that no view has made");
    addReading(command);
    command->callback([this] {
        chosen = [this] {
            view.deck = pathFrom(source);
            return runView(view);
        };
    });
}

void CCommandLine::addExport()
{
    CLI::App* const command = add("export", "Write timesteps of a deck of either family as files of other programs");
    command->add_option("DECK", source, "The deck's first file, NAME.dem")->required();
    command->add_option("--format", exported.format, "vtp, vtu, csv, xyz or ensight")->type_name("FORMAT")->required();
    command->add_option("--output", output, "The folder that the files go to")->type_name("DIR")->required();
    command->add_option("--attribute", exported.attributes, "These attributes in place of the usual ones")
        ->type_name("NAME,NAME");
    command->add_option("--timestep", timestep, "A timestep counted from 0, a range FROM:TO with both ends, or all")
        ->type_name("N");
    command->add_option("--units", exported.units, "Units for quantities, for example length=mm,angVel=rpm")
        ->type_name("LIST");
    command->add_flag("--force", exported.force, "Write into a folder that isn't empty");
    addReading(command);
    command->callback([this] {
        chosen = [this] {
            exported.deck = pathFrom(source);
            exported.output = pathFrom(output);
            exported.allTimesteps = timestep.empty() || timestep == "all";
            if (!exported.allTimesteps)
                std::tie(exported.firstTimestep, exported.lastTimestep) = timestepsFrom("--timestep", timestep);
            return runExport(exported);
        };
    });
}

void CCommandLine::addPlot()
{
    CLI::App* const command = add("plot", "Draw attributes of a deck over time, or how their values are spread");
    command->add_option("DECK", source, "The deck's first file, NAME.dem")->required();
    command->add_option("--attribute", plot.attributes, "The attributes, for example \"Velocity Magnitude,Mass\"")
        ->type_name("NAME,NAME")
        ->required();
    command->add_option("--reduce", plot.reduce, "mean, sum, min, max or count of the rows; default: mean")
        ->type_name("HOW");
    command->add_option("--owner", plot.owner, "Whose values, as of brenmark values")->type_name("OWNER");
    command->add_option("--type", plot.type, "Of this particle type, geometry group or family of pairs alone")
        ->type_name("NAME");
    command->add_option("--timestep", timestep, "A timestep counted from 0, a range FROM:TO with both ends, or all")
        ->type_name("N");
    command->add_option("--units", plot.units, "Units for quantities, for example length=mm,angVel=rpm")
        ->type_name("LIST");
    command->add_option("--histogram", intervals, "Draw how the values are spread over N intervals instead")
        ->type_name("N");
    command->add_option("--svg", svg, "Draw into a file as well")->type_name("FILE");
    command->add_option("--csv", csv, "Write the numbers to a file")->type_name("FILE");
    addReading(command);
    command->callback([this] {
        chosen = [this] {
            plot.deck = pathFrom(source);
            plot.svg = svg.empty() ? QString() : pathFrom(svg);
            plot.csv = csv.empty() ? QString() : pathFrom(csv);
            plot.allTimesteps = timestep.empty() || timestep == "all";
            if (!plot.allTimesteps)
                std::tie(plot.firstTimestep, plot.lastTimestep) = timestepsFrom("--timestep", timestep);
            if (!intervals.empty())
                plot.intervals = countFrom("--histogram", intervals);
            if (!csv.empty() && !intervals.empty())
                throw CFailure(eExitUsage, "--csv and --histogram can't be used together",
                               "brenmark values writes the values themselves.");
            return runPlot(plot);
        };
    });
}

void CCommandLine::addSnapshot()
{
    CLI::App* const command = add("snapshot", "Draw a timestep of a deck into a file: particles and walls");
    command->add_option("DECK", source, "The deck's first file, NAME.dem")->required();
    command->add_option("--timestep", timestep, "The timestep, counted from 0; default: the last")->type_name("N");
    command->add_option("--attribute", snapshot.attribute, "What the colours show; default: \"Velocity Magnitude\"")
        ->type_name("NAME");
    command->add_option("--view", snapshot.view, "Look along x, y or z, or from aside and above: iso, the default")
        ->type_name("VIEW");
    command->add_option("--units", snapshot.units, "Units for quantities, for example velocity=mm/s")
        ->type_name("LIST");
    command->add_option("--svg", svg, "Draw into this SVG file")->type_name("FILE");
    command->add_option("--png", png, "Draw into this PNG file")->type_name("FILE");
    addReading(command);
    command->callback([this] {
        chosen = [this] {
            if (svg.empty() && png.empty())
                throw CFailure(eExitUsage, "snapshot: needs --svg or --png", "Name the file to draw into.");
            snapshot.deck = pathFrom(source);
            snapshot.svg = svg.empty() ? QString() : pathFrom(svg);
            snapshot.png = png.empty() ? QString() : pathFrom(png);
            snapshot.lastTimestep = timestep.empty();
            if (!timestep.empty())
                snapshot.timestep = numberFrom("--timestep", timestep);
            return runSnapshot(snapshot);
        };
    });
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

std::vector<std::string> optionNames(const CLI::App& command)
{
    std::vector<std::string> names;
    for (const CLI::Option* const option : command.get_options())
        for (const std::string& name : option->get_lnames())
            names.push_back("--" + name);
    return names;
}

/// A flag with a value, as in --json=yes.
void refuseValuesOfFlags(const CLI::App& command, int argumentCount, char** arguments)
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

} // namespace

bool isJsonAsked(int argumentCount, char** arguments)
{
    for (int i = 2; i < argumentCount && std::string(arguments[i]) != "--"; ++i)
        if (std::string(arguments[i]) == "--json")
            return true;
    return false;
}

EExitCode runCommandLine(int argumentCount, char** arguments) { return CCommandLine().run(argumentCount, arguments); }

} // namespace NBrenmark
