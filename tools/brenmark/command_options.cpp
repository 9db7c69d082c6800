#include "brenmark/command_options.h"

#include "brenmark/argument_values.h"
#include "brenmark/completion/completion.h"
#include "brenmark/completion/deck_words.h"
#include "brenmark/deck_reader.h"
#include "brenmark/failure.h"
#include "brenmark/xml_deck.h"

namespace NBrenmark {

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
    command->add_flag("--no-plugins", convert.noPlugins,
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
    command->add_option("DECK", source, "The deck's first file, NAME.dem, or the document of a definition")->required();
    CLI::Option* const number =
        command
            ->add_option("--timestep", timestep,
                         "This timestep alone, counted from 0; of a definition's document this document of one")
            ->type_name("N|FILE");
    CLI::Option* const full = command->add_flag("--full", dump.full, "Show arrays with all their values");
    command->add_flag("--stored", dump.stored, "Show the records of a deck below 20.0.0 in place of what they become")
        ->excludes(full);
    addReading(command);
    command->callback([this, number] {
        chosen = [this, number] {
            dump.deck = pathFrom(source);
            dump.oneTimestep = number->count() > 0;
            if (dump.oneTimestep && isDocument(dump.deck))
                dump.timestepDocument = pathFrom(timestep);
            else if (dump.oneTimestep)
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
    command->add_flag("--parts", verify.parts)->group(""); // for a process that compares or converts meanwhile
    command->add_option("--limit", limit, "List at most N differences, 0 for all; default: 100")->type_name("N");
    command->add_flag("--json", verify.json, "Show one JSON object");
    addProgress(command);
    addReading(command);
    addThreads(command);
    command->callback([this] {
        chosen = [this] {
            verify.source = pathFrom(source);
            if (verify.parts)
                return runVerify(verify);
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
    command
        ->add_option("--tolerance", tolerances,
                     "Pass over smaller differences of real numbers: 1e-9, 0.01%, or velocity=1e-6 for some alone")
        ->type_name("[NAME=]BY")
        ->allow_extra_args(false);
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
            diff.tolerances = tolerancesFrom("--tolerance", tolerances);
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
        ->add_option("--query", values.query,
                     "Instead, the answers of a query of the deck's data exports, or with --selection of its own")
        ->type_name("NAME");
    command->add_flag("--list", values.list, "Show the attributes of the deck by their owners instead");
    command
        ->add_option("--owner", values.owner,
                     "Whose values: particle, contact, bond, collision, geometry or simulation; default: the first of "
                     "them that has the attribute")
        ->type_name("OWNER");
    command->add_option("--type", values.type, "Of this particle type, geometry group or family of pairs alone")
        ->type_name("NAME");
    command
        ->add_option("--selection", values.selection,
                     "Of what is in this selection of the deck alone; NAME:N is the Nth element of a region")
        ->type_name("NAME");
    command->add_option("--timestep", timestep, "A timestep counted from 0, a range FROM:TO with both ends, or all")
        ->type_name("N");
    command->add_option("--units", values.units, "Units for quantities, for example length=mm,angVel=rpm")
        ->type_name("LIST");
    command->add_option("--output", output, "Write the table to a file")->type_name("FILE");
    command->add_flag("--summary", values.summary, "Show count, minimum, maximum, mean and sum instead of the table");
    command->add_flag("--json", values.json, "Show the summary or the histogram as one JSON object");
    command->add_option("--histogram", intervals, "Draw how the values are spread over N intervals instead")
        ->type_name("N");
    command->add_option("--svg", svg, "Draw the histogram into a file as well")->type_name("FILE");
    addReading(command);
    command->callback([this] {
        chosen = [this] {
            if (int(values.list) + int(!values.attribute.empty()) + int(!values.query.empty()) != 1)
                throw CFailure(eExitUsage, "values: needs either --attribute, --query or --list",
                               "For example: brenmark values pile.dem --attribute \"Velocity Magnitude\"");
            if (values.json && !values.summary && intervals.empty())
                throw CFailure(eExitUsage, "--json needs --summary or --histogram",
                               "The table itself has no JSON form.");
            if (int(values.summary) + int(!intervals.empty()) + int(!output.empty()) + int(values.list) > 1)
                throw CFailure(eExitUsage, "--list, --summary, --histogram and --output can't be used together",
                               "Use one of them.");
            if (!values.query.empty() && (values.summary || !intervals.empty() || !values.type.empty()))
                throw CFailure(eExitUsage, "--query takes no --summary, --histogram or --type",
                               "What the query reduces, and of which type, is in the query itself.");
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
    command->add_option("--definition", definitionAt, "Export the definition as it is at this timestep, counted from 0")
        ->type_name("N");
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
    command
        ->add_option("SHELL", key, "bash, zsh or fish; or what these ask for: timesteps, attributes, types, selections")
        ->required();
    command->add_option("DECK", source, "Whose words are shown");
    command->callback([this] {
        chosen = [this] { return source.empty() ? printCompletion(app, key) : printDeckWords(key, pathFrom(source)); };
    });
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
    if (!definitionAt.empty()) {
        if (!xml.exports || !timestep.empty())
            throw CFailure(eExitUsage, "--definition is for the export of a definition",
                           "Give either --timestep or --definition with xml export.");
        xml.timestep = numberFrom("--definition", definitionAt);
    }
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
    command->add_option("--values", view.values, "These values alone, for example velocity,radius")
        ->type_name("NAME,NAME");
    command->add_flag("--force", view.force, "Replace files of the view's names that no view has made");
    command->add_flag("--json", view.json, "Show one JSON object");
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
    command->add_flag("--json", exported.json, "Show one JSON object");
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
    command->add_flag("--json", plot.json, "Show one JSON object in place of the picture");
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
    command->add_flag("--json", snapshot.json, "Show one JSON object");
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

} // namespace NBrenmark
