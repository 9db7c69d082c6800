#include "brenmark/completion/completion.h"

#include "brenmark/argument_values.h"
#include "brenmark/completion/deck_words.h"
#include "brenmark/failure.h"
#include "brenmark/terminal.h"
#include "brenmark/values/value_sources.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <utility>
#include <vector>

namespace NBrenmark {

namespace {

struct SShellOption
{
    std::vector<std::string> longNames, shortNames;
    std::string what;
    std::string value;              ///< name of the value; empty for a flag
    std::vector<std::string> words; ///< that the value may be; empty for any
    std::string deckWords;          ///< their kind, where the deck on the line has them

    bool takesFile() const { return value == "FILE" || value == "DIR" || value == "N|FILE"; }
};

struct SShellCommand
{
    std::string name, what;
    std::vector<SShellOption> options;
    std::vector<std::string> words; ///< that its argument may be; empty for files
    bool takesDecks = true;
};

std::string joinedWords(const std::vector<std::string>& words)
{
    std::string text;
    for (const std::string& word : words)
        text += (text.empty() ? "" : " ") + word;
    return text;
}

std::vector<SShellOption> optionsOf(const CLI::App& command)
{
    std::vector<SShellOption> options;
    for (const CLI::Option* const option : command.get_options()) {
        if (option->get_positional() || option->get_group().empty())
            continue;
        SShellOption own{option->get_lnames(), option->get_snames(), option->get_description(), {}, {}, {}};
        if (option->get_expected_max() > 0)
            own.value = option->get_type_name();
        if (own.value == "WHEN")
            own.words = colourWords();
        else if (own.value == "FORM")
            own.words = progressWords();
        else if (own.value == "FORMAT")
            own.words = {"vtp", "vtu", "csv", "xyz", "ensight"};
        else if (own.value == "OWNER")
            for (const SOwnerWord& word : ownerWords)
                own.words.emplace_back(word.word);
        else if (!own.value.empty() && !own.longNames.empty())
            own.deckWords = deckWordKindOf(own.longNames.front());
        options.push_back(std::move(own));
    }
    return options;
}

std::vector<SShellCommand> commandsOf(const CLI::App& app)
{
    std::vector<SShellCommand> commands;
    for (const CLI::App* const command : app.get_subcommands([](const CLI::App*) { return true; })) {
        const std::string name = command->get_name();
        commands.push_back({name, command->get_description(), optionsOf(*command), {}});
        commands.back().takesDecks = name != "report" && name != "plugins" && name != "xml" && name != "completion";
        if (name == "completion")
            commands.back().words = {"bash", "zsh", "fish"};
        if (name == "xml")
            commands.back().words = {"export", "import"};
    }
    SShellCommand help{"help", "Show the commands, or the options of one", {}, {}, false};
    for (const SShellCommand& command : commands)
        help.words.push_back(command.name);
    commands.push_back(std::move(help));
    return commands;
}

std::string commandWords(const std::vector<SShellCommand>& commands)
{
    std::string text;
    for (const SShellCommand& command : commands)
        text += command.name + ' ';
    return text + "--help --version";
}

// ---------------------------------------------------------------- bash

/// Names may hold blanks: what is offered is quoted as the word on the line is.
constexpr const char* bashDeckWords = "_brenmark_listed()\n"
                                      "{\n"
                                      "    local deck= word= quote= current=$3\n"
                                      "    for word in \"${COMP_WORDS[@]:2}\"; do\n"
                                      "        word=${word//[\\\\\\\"\\']/}\n"
                                      "        case $word in *.dem) deck=${word/#\\~\\//$HOME/}; break ;; esac\n"
                                      "    done\n"
                                      "    [ -n \"$deck\" ] || return\n"
                                      "    case $current in [\\\"\\']*) quote=${current:0:1} ;; esac\n"
                                      "    current=${current//[\\\\\\\"\\']/}\n"
                                      "    while IFS= read -r word; do\n"
                                      "        case $word in \"$current\"*)\n"
                                      "            [ -n \"$quote\" ] || word=$(printf %q \"$word\")\n"
                                      "            COMPREPLY+=(\"$word\") ;;\n"
                                      "        esac\n"
                                      "    done < <(\"$1\" completion \"$2\" \"$deck\" 2>/dev/null)\n"
                                      "}\n";

std::string bashCompletion(const std::vector<SShellCommand>& commands)
{
    std::string values, options;
    for (const SShellCommand& command : commands) {
        std::string words;
        for (const SShellOption& option : command.options) {
            std::string names;
            for (const std::string& name : option.longNames) {
                words += "--" + name + ' ';
                names += (names.empty() ? "" : "|") + ('"' + command.name + " --" + name + '"');
            }
            for (const std::string& name : option.shortNames) {
                words += '-' + name + ' ';
                names += (names.empty() ? "" : "|") + ('"' + command.name + " -" + name + '"');
            }
            if (!option.value.empty())
                values += "        " + names + ") offered='" + joinedWords(option.words) + "' isValue=1" +
                          (option.deckWords.empty() ? "" : " listed=" + option.deckWords) + " ;;\n";
        }
        options += "        " + command.name + ") options='" + words + "' arguments='" + joinedWords(command.words) +
                   '\'' + (command.takesDecks ? " decks=1" : "") + " ;;\n";
    }
    return "# bash completion of brenmark\n" + std::string(bashDeckWords) +
           "_brenmark()\n"
           "{\n"
           "    local current=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD-1]} command=${COMP_WORDS[1]}\n"
           "    local offered= isValue= options= arguments= listed= decks=\n"
           "    COMPREPLY=()\n"
           "    if [ \"$COMP_CWORD\" -eq 1 ]; then\n"
           "        COMPREPLY=($(compgen -W '" +
           commandWords(commands) +
           "' -- \"$current\"))\n"
           "        return\n"
           "    fi\n"
           "    if [ \"$before\" = = ]; then\n"
           "        before=${COMP_WORDS[COMP_CWORD-2]}\n"
           "    elif [ \"$current\" = = ]; then\n"
           "        current=\n"
           "    fi\n"
           "    case \"$command $before\" in\n" +
           values +
           "    esac\n"
           "    case $command in\n" +
           options +
           "    esac\n"
           "    if [ -n \"$listed\" ]; then\n"
           "        _brenmark_listed \"${1:-brenmark}\" \"$listed\" \"$current\"\n"
           "        return\n"
           "    fi\n"
           "    if [ -z \"$isValue\" ]; then\n"
           "        case $current in -*) offered=$options decks= ;; *) offered=$arguments ;; esac\n"
           "        if [ -n \"$decks\" ]; then\n"
           "            compopt -o filenames 2>/dev/null\n"
           "            local IFS=$'\\n'\n"
           "            COMPREPLY=($(compgen -f -X '!*.dem' -- \"$current\") $(compgen -d -- \"$current\"))\n"
           "            return\n"
           "        fi\n"
           "    fi\n"
           "    COMPREPLY=($(compgen -W \"$offered\" -- \"$current\"))\n"
           "}\n"
           "complete -o bashdefault -o default -F _brenmark brenmark\n";
}

// ---------------------------------------------------------------- zsh

/// For a text in single quotes in which some characters mean something.
std::string zshText(const std::string& text, const char* special)
{
    std::string out;
    for (const char c : text) {
        if (c == '\'')
            out += "'\\''";
        else
            out += (std::string(special).find(c) == std::string::npos ? "" : "\\") + std::string(1, c);
    }
    return out;
}

std::string zshOption(const SShellOption& option)
{
    std::vector<std::string> names;
    for (const std::string& name : option.shortNames)
        names.push_back('-' + name);
    for (const std::string& name : option.longNames)
        names.push_back("--" + name);
    std::string value;
    if (!option.value.empty())
        value = ':' + zshText(option.value, ":[]\\") + ':' +
                (!option.words.empty()       ? '(' + joinedWords(option.words) + ')'
                 : !option.deckWords.empty() ? " _brenmark_listed " + option.deckWords
                 : option.takesFile()        ? "_files"
                                             : " ");
    const std::string rest = '[' + zshText(option.what, "[]\\") + ']' + value + '\'';
    if (names.size() == 1)
        return '\'' + names.front() + rest;
    std::string braces;
    for (const std::string& name : names)
        braces += (braces.empty() ? "" : ",") + name;
    return "'(" + joinedWords(names) + ")'{" + braces + "}'" + rest;
}

std::string zshCompletion(const std::vector<SShellCommand>& commands)
{
    std::string list, cases;
    for (const SShellCommand& command : commands) {
        list += "        '" + command.name + ':' + zshText(command.what, ":\\") + "'\n";
        cases += "    " + command.name + ")\n        _arguments -s \\\n";
        for (const SShellOption& option : command.options)
            cases += "            " + zshOption(option) + " \\\n";
        cases += command.takesDecks ? "            '*:deck:_files -g \"*.dem(-.)\"' ;;\n"
                 : command.words.empty()
                     ? "            '*:file:_files' ;;\n"
                     : "            '1:word:(" + joinedWords(command.words) + ")' '*:file:_files' ;;\n";
    }
    return "#compdef brenmark\n"
           "# zsh completion of brenmark\n"
           "_brenmark_listed()\n"
           "{\n"
           "    local deck=${(Q)${(M)words:#*.dem*}[1]}\n"
           "    local -a listed=(${(f)\"$(brenmark completion $1 ${deck/#\\~\\//$HOME/} 2>/dev/null)\"})\n"
           "    compadd -a listed\n"
           "}\n"
           "_brenmark()\n"
           "{\n"
           "    local -a commands=(\n" +
           list +
           "    )\n"
           "    if (( CURRENT == 2 )); then\n"
           "        _describe command commands\n"
           "        return\n"
           "    fi\n"
           "    local command=$words[2]\n"
           "    shift words\n"
           "    (( CURRENT-- ))\n"
           "    case $command in\n" +
           cases +
           "    esac\n"
           "}\n"
           "_brenmark \"$@\"\n";
}

// ---------------------------------------------------------------- fish

std::string fishText(const std::string& text)
{
    std::string out = "'";
    for (const char c : text)
        out += (c == '\'' || c == '\\' ? "\\" : "") + std::string(1, c);
    return out + '\'';
}

std::string fishCompletion(const std::vector<SShellCommand>& commands)
{
    std::string text = "# fish completion of brenmark\n"
                       "function __brenmark_listed\n"
                       "    for word in (commandline -opc)\n"
                       "        if string match -q -- '*.dem' $word\n"
                       "            brenmark completion $argv[1] $word 2>/dev/null\n"
                       "            return\n"
                       "        end\n"
                       "    end\n"
                       "end\n"
                       "complete -c brenmark -n __fish_use_subcommand -f -s h -l help\n"
                       "complete -c brenmark -n __fish_use_subcommand -f -s V -l version\n";
    for (const SShellCommand& command : commands) {
        text += "complete -c brenmark -n __fish_use_subcommand -f -a " + command.name + " -d " +
                fishText(command.what) + '\n';
        const std::string within = "complete -c brenmark -n '__fish_seen_subcommand_from " + command.name + "'";
        for (const SShellOption& option : command.options) {
            text += within;
            for (const std::string& name : option.shortNames)
                text += " -s " + name;
            for (const std::string& name : option.longNames)
                text += " -l " + name;
            if (!option.words.empty())
                text += " -x -a " + fishText(joinedWords(option.words));
            else if (!option.deckWords.empty())
                text += " -x -a '(__brenmark_listed " + option.deckWords + ")'";
            else if (!option.value.empty())
                text += option.takesFile() ? " -r -F" : " -x";
            text += " -d " + fishText(option.what) + '\n';
        }
        if (!command.words.empty())
            text += within + " -a " + fishText(joinedWords(command.words)) + '\n';
        if (command.takesDecks)
            text += within + " -k -a '(__fish_complete_suffix .dem)'\n";
    }
    return text;
}

} // namespace

EExitCode printCompletion(const CLI::App& app, const std::string& shell)
{
    const std::vector<SShellCommand> commands = commandsOf(app);
    if (shell != "bash" && shell != "zsh" && shell != "fish")
        throw CFailure(eExitUsage, oneLine(shell) + ": there is no completion for this shell",
                       "The shells are bash, zsh and fish.");
    unlessReaderIsGone([&] {
        printResult(shell == "bash"  ? bashCompletion(commands)
                    : shell == "zsh" ? zshCompletion(commands)
                                     : fishCompletion(commands));
        flushResult();
    });
    return eExitDone;
}

} // namespace NBrenmark
