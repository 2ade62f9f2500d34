#include <fmt/format.h>
#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <cctype>
#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tool/CommandLine.h"
#include "tool/Kinds.h"

namespace QELModels::tool {

namespace {

// --- The command as its own definitions have it -----------------------------------------------------------

/// An argument by place, or an option.
struct Argument {
    std::vector<std::string> names;  ///< of an option: "--help", "-h"; none: an argument by place
    std::string type;                ///< what the help calls the value; empty when there is none
    std::string description;
    std::vector<std::string> words;  ///< the values that there are, where they are few
    bool isRepeated = false;

    bool isFile() const { return type.ends_with("FILE") || type == "OUT"; }
};

struct Command {
    std::string name;
    std::vector<std::string> usage;  ///< one line for each way to call it
    std::string description;
    std::vector<Argument> arguments;
    std::vector<Argument> options;
};

/// What all that is generated is made of.
struct Manual {
    Command program;
    std::string footer;
    std::vector<Command> commands;
};

std::vector<std::string> split(std::string_view text, char separator) {
    std::vector<std::string> pieces;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(separator, begin), text.size());
        pieces.emplace_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return pieces;
}

std::string joined(const std::vector<std::string>& pieces, std::string_view separator) {
    return fmt::format("{}", fmt::join(pieces, separator));
}

bool hasWord(std::string_view text, std::string_view word) {
    const auto isLetter = [&](std::size_t at) {
        return at < text.size() && std::isalpha(static_cast<unsigned char>(text[at])) != 0;
    };
    for (std::size_t at = text.find(word); at != std::string_view::npos; at = text.find(word, at + 1))
        if (!isLetter(at - 1) && !isLetter(at + word.size())) return true;
    return false;
}

// The help writes few values as "width|height"; of the kinds a description names those that a command takes.
std::vector<std::string> wordsOf(const Argument& argument, std::string_view notation) {
    if (notation.find('|') != std::string_view::npos) return split(notation, '|');
    std::vector<std::string> words;
    if (argument.type != "KIND") return words;
    for (const Kind& kind : kinds())
        if (hasWord(argument.description, kind.name)) words.emplace_back(kind.name);
    return words;
}

// The lines of a usage, without the word in front of them.
std::vector<std::string> usageOf(const CLI::App& app) {
    constexpr std::string_view kBefore = "Usage: ";
    // Every command's help has a formatter of this class, which the parser hands out as its base.
    const auto& formatter = static_cast<const CLI::Formatter&>(*app.get_formatter());
    std::vector<std::string> lines = split(formatter.make_usage(&app, "").substr(kBefore.size()), '\n');
    std::erase(lines, "");
    for (std::string& line : lines)
        line.erase(0, line.find_first_not_of(' '));
    return lines;
}

Command commandOf(const CLI::App& app) {
    Command command{app.get_name(), usageOf(app), app.get_description(), {}, {}};
    const std::vector<std::string> usage = split(command.usage.front(), ' ');
    for (const CLI::Option* option : app.get_options()) {
        Argument argument;
        argument.description = option->get_description();
        argument.isRepeated = option->get_expected_max() == CLI::detail::expected_max_vector_size;
        if (option->get_positional()) {
            // In the usage the arguments stand behind the program's name and the command's, in their order.
            constexpr std::size_t kNames = 2;
            argument.type = option->get_name(true);
            const std::size_t place = kNames + command.arguments.size();
            argument.words = wordsOf(argument, place < usage.size() ? usage[place] : std::string_view());
            command.arguments.push_back(std::move(argument));
            continue;
        }
        for (const std::string& name : option->get_lnames())
            argument.names.push_back("--" + name);
        for (const std::string& name : option->get_snames())
            argument.names.push_back("-" + name);
        // Behind a colon the parser tells what it checks.
        const bool hasValue = option->get_items_expected_max() > 0;
        if (hasValue) argument.type = split(option->get_type_name(), ':').front();
        if (argument.type.ends_with("...")) argument.type.resize(argument.type.size() - 3);
        argument.words = wordsOf(argument, argument.type);
        command.options.push_back(std::move(argument));
    }
    return command;
}

Manual manualOf(const CLI::App& program) {
    Manual manual{commandOf(program), program.get_footer(), {}};
    // Without a group a command is hidden from people.
    for (const CLI::App* command :
         program.get_subcommands([](const CLI::App* app) { return !app->get_group().empty(); }))
        manual.commands.push_back(commandOf(*command));
    return manual;
}

std::vector<std::string> commandNames(const Manual& manual) {
    std::vector<std::string> names;
    for (const Command& command : manual.commands)
        names.push_back(command.name);
    return names;
}

std::vector<std::string> optionNames(const Command& command) {
    std::vector<std::string> names;
    for (const Argument& option : command.options)
        names.insert(names.end(), option.names.begin(), option.names.end());
    return names;
}

// Puts something before each of some characters.
std::string escaped(std::string_view text, std::string_view characters, std::string_view before) {
    std::string result;
    for (const char c : text) {
        if (characters.find(c) != std::string_view::npos) result += before;
        result += c;
    }
    return result;
}

// --- The page of the manual -------------------------------------------------------------------------------

// Text as it is to be read: a bare dash or quote would come out as a typographic one.
std::string roff(std::string_view text) {
    std::string result;
    for (const char c : text) {
        switch (c) {
            case '\\':
                result += "\\e";
                break;
            case '-':
                result += "\\-";
                break;
            case '\'':
                result += "\\(aq";
                break;
            case '`':
                result += "\\(ga";
                break;
            case '"':
                result += "\\(dq";
                break;
            case '^':
                result += "\\(ha";
                break;
            case '~':
                result += "\\(ti";
                break;
            default:
                result += c;
        }
    }
    // A dot that begins a line would begin a request.
    return result.starts_with('.') ? "\\&" + result : result;
}

std::string manualEntry(const Argument& argument) {
    std::string head;
    for (const std::string& name : argument.names)
        head += fmt::format("{}\\fB{}\\fR", head.empty() ? "" : ", ", roff(name));
    if (!argument.type.empty())
        head += fmt::format("{}\\fI{}\\fR", head.empty() ? "" : " ", roff(argument.type));
    if (argument.isRepeated) head += " ...";
    return fmt::format(".TP\n{}\n{}.\n", head, roff(argument.description));
}

std::string manualPage(const Manual& manual) {
    const Command& program = manual.program;
    // Behind the name stands no sentence.
    std::string description = program.description;
    while (description.ends_with('.'))
        description.pop_back();
    description.replace(0, 1, 1, static_cast<char>(std::tolower(description.front())));
    std::string page =
        fmt::format(".TH {} 1 \"\" \"{} {}.{}.{}\" \"User Commands\"\n.SH NAME\n{} \\- {}\n.SH SYNOPSIS\n",
                    "QELMODELS",
                    program.name,
                    QELMODELS_VERSION_MAJOR,
                    QELMODELS_VERSION_MINOR,
                    QELMODELS_VERSION_PATCH,
                    program.name,
                    roff(description));
    std::vector<std::string> calls;
    for (const Command& command : manual.commands)
        for (const std::string& usage : command.usage)
            calls.push_back(roff(usage));
    page += joined(calls, "\n.br\n") + '\n';
    page += ".SH DESCRIPTION\n";
    for (const std::string& line : split(manual.footer, '\n'))
        page += roff(line) + "\n.br\n";
    page += "Results go to standard output, messages to standard error.\n.SH OPTIONS\n";
    for (const Argument& option : program.options)
        page += manualEntry(option);
    page += ".SH COMMANDS\n";
    for (const Command& command : manual.commands) {
        page += fmt::format(".SS {}\n{}.\n", roff(command.name), roff(command.description));
        for (const std::string& usage : command.usage)
            page += fmt::format(".PP\n\\fB{}\\fR\n", roff(usage));
        for (const Argument& argument : command.arguments)
            page += manualEntry(argument);
        const std::vector<std::string> everywhere = optionNames(program);
        for (const Argument& option : command.options)
            if (std::find(everywhere.begin(), everywhere.end(), option.names.front()) == everywhere.end())
                page += manualEntry(option);
    }
    constexpr std::array<std::pair<ExitStatus, std::string_view>, 3> kStatuses{{
        {ExitStatus::success, "All is well, or nobody reads the results any more."},
        {ExitStatus::badInput, "A document or a file is broken: the message says where."},
        {ExitStatus::badUsage, "The command was called in a way that it does not know."},
    }};
    page += ".SH EXIT STATUS\n";
    for (const auto& [status, meaning] : kStatuses)
        page += fmt::format(".TP\n\\fB{}\\fR\n{}\n", static_cast<int>(status), meaning);
    return page + ".SH ENVIRONMENT\n.TP\n\\fBNO_COLOR\\fR\nTables stay plain on a terminal too.\n";
}

// --- bash -------------------------------------------------------------------------------------------------

// What completes a value: words, names of files, or nothing at all.
std::string bashValue(const Argument& argument) {
    if (!argument.words.empty()) return fmt::format("words='{}'", joined(argument.words, " "));
    return argument.isFile() ? "files=yes" : "";
}

std::string bashCompletion(const Manual& manual) {
    std::string script = fmt::format(
        R"(# bash completion for {0}

_{0}() {{
    local current=${{COMP_WORDS[COMP_CWORD]}} previous=${{COMP_WORDS[COMP_CWORD - 1]}}
    local options='' valued='' words='' files='' place=0 at
    COMPREPLY=()
    if ((COMP_CWORD == 1)); then
        mapfile -t COMPREPLY < <(compgen -W '{1} {2}' -- "$current")
        return
    fi
    case ${{COMP_WORDS[1]}} in
)",
        manual.program.name,
        joined(commandNames(manual), " "),
        joined(optionNames(manual.program), " "));
    std::string values;
    for (const Command& command : manual.commands) {
        const auto addValue = [&](const std::string& place, const Argument& argument) {
            const std::string value = bashValue(argument);
            if (!value.empty()) values += fmt::format("    {}:{}) {} ;;\n", command.name, place, value);
        };
        std::string valued;
        for (const Argument& option : command.options) {
            if (option.type.empty()) continue;
            for (const std::string& name : option.names) {
                valued += name + ' ';
                addValue(name, option);
            }
        }
        for (std::size_t i = 0; i < command.arguments.size(); ++i)
            addValue(command.arguments[i].isRepeated ? "[0-9]*" : std::to_string(i), command.arguments[i]);
        script += fmt::format("    {}) options='{}' valued=' {}' ;;\n",
                              command.name,
                              joined(optionNames(command), " "),
                              valued);
    }
    return script + fmt::format(R"(    *) return ;;
    esac
    # Which of the arguments by place this is: neither an option nor an option's value.
    for ((at = 2; at < COMP_CWORD; ++at)); do
        if [[ $valued == *" ${{COMP_WORDS[at]}} "* ]]; then
            ((++at))
        elif [[ ${{COMP_WORDS[at]}} != -?* ]]; then
            ((++place))
        fi
    done
    [[ $valued == *" $previous "* ]] && place=$previous options=''
    case ${{COMP_WORDS[1]}}:$place in
{1}    esac
    [[ $current == -* ]] && words=$options files=''
    if [[ $files ]]; then
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    else
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
    fi
}}
complete -F _{0} {0}
)",
                                manual.program.name,
                                values);
}

// --- zsh --------------------------------------------------------------------------------------------------

// A text between single quotes, where a shell reads nothing into it.
std::string zshQuoted(std::string_view text) {
    std::string result = "'";
    for (const char c : text)
        result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return result + "'";
}

std::string zshValue(const Argument& argument) {
    if (!argument.words.empty()) return fmt::format("{}:({})", argument.type, joined(argument.words, " "));
    return fmt::format("{}:{}", argument.type, argument.isFile() ? "_files" : "");
}

std::string zshArguments(const Command& command) {
    std::string arguments;
    for (const Argument& option : command.options) {
        for (const std::string& name : option.names) {
            std::string argument = fmt::format(
                "{}{}[{}]", option.isRepeated ? "*" : "", name, escaped(option.description, "[]\\:", "\\"));
            if (!option.type.empty()) argument += ':' + zshValue(option);
            arguments += " \\\n            " + zshQuoted(argument);
        }
    }
    for (const Argument& argument : command.arguments)
        arguments += " \\\n            " + zshQuoted((argument.isRepeated ? "*:" : ":") + zshValue(argument));
    return arguments;
}

std::string zshCompletion(const Manual& manual) {
    const std::string& program = manual.program.name;
    std::string script =
        fmt::format("#compdef {0}\n\n_{0}() {{\n    local -a commands\n    commands=(\n", program);
    for (const Command& command : manual.commands)
        script += fmt::format("        {}\n",
                              zshQuoted(command.name + ':' + escaped(command.description, "\\:", "\\")));
    script += fmt::format(R"(    )
    local curcontext=$curcontext state
    _arguments -C{} \
            ':command:->command' \
            '*::argument:->argument' && return
    if [[ $state == command ]]; then
        _describe command commands
        return
    fi
    case $words[1] in
)",
                          zshArguments({{}, {}, {}, {}, manual.program.options}));
    for (const Command& command : manual.commands)
        script +=
            fmt::format("    {})\n        _arguments{}\n        ;;\n", command.name, zshArguments(command));
    return script + fmt::format("    esac\n}}\n\n_{0} \"$@\"\n", program);
}

// --- fish -------------------------------------------------------------------------------------------------

// Between single quotes fish reads a backslash before a quote and before itself.
std::string fishQuoted(std::string_view text) {
    return "'" + escaped(text, "\\'", "\\") + "'";
}

std::string fishOption(const Argument& option) {
    std::string line;
    for (const std::string& name : option.names)
        line += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
    if (!option.type.empty()) line += option.isFile() ? " -r -F" : " -x";
    if (!option.words.empty()) line += " -a " + fishQuoted(joined(option.words, " "));
    return line + " -d " + fishQuoted(option.description);
}

// What completes the arguments of a command by place; empty when nothing does.
std::string fishArguments(const Command& command, std::string_view complete) {
    std::string lines, valued;
    for (const Argument& option : command.options)
        for (const std::string& name : option.names)
            if (!option.type.empty()) valued += ' ' + name;
    for (std::size_t i = 0; i < command.arguments.size(); ++i) {
        const Argument& argument = command.arguments[i];
        const std::string values =
            argument.words.empty() ? "-F" : "-a " + fishQuoted(joined(argument.words, " "));
        if (argument.words.empty() && !argument.isFile()) continue;
        lines += fmt::format("{} -n '__qelmodels_place {} {} {}{}' {}\n",
                             complete,
                             command.name,
                             argument.isRepeated ? "-ge" : "-eq",
                             i,
                             valued,
                             values);
    }
    return lines;
}

std::string fishCompletion(const Manual& manual) {
    const std::string complete = "complete -c " + manual.program.name;
    std::string script = fmt::format(R"(# fish completion for {}

# Whether the arguments by place before the cursor, options and their values left out, are so many.
function __qelmodels_place --argument-names command comparison place
    set -l words (commandline -opc)
    test "$words[2]" = $command; or return
    set -l before 0
    set -l at 3
    while test $at -le (count $words)
        if contains -- $words[$at] $argv[4..]
            set at (math $at + 1)
        else if not string match -q -- '-?*' $words[$at]
            set before (math $before + 1)
        end
        set at (math $at + 1)
    end
    test $before $comparison $place
end

{} -f
)",
                                     manual.program.name,
                                     complete);
    for (const Argument& option : manual.program.options)
        script += fmt::format("{} -n __fish_use_subcommand{}\n", complete, fishOption(option));
    for (const Command& command : manual.commands) {
        script += fmt::format("\n{} -n __fish_use_subcommand -a {} -d {}\n",
                              complete,
                              command.name,
                              fishQuoted(command.description));
        for (const Argument& option : command.options)
            script += fmt::format(
                "{} -n '__fish_seen_subcommand_from {}'{}\n", complete, command.name, fishOption(option));
        script += fishArguments(command, complete);
    }
    return script;
}

// --- The command ------------------------------------------------------------------------------------------

struct Form {
    std::string_view name;
    std::string (*made)(const Manual& manual);
};
constexpr std::array<Form, 4> kForms{{
    {"man", &manualPage},
    {"bash", &bashCompletion},
    {"zsh", &zshCompletion},
    {"fish", &fishCompletion},
}};

struct Options {
    const CLI::App* program = nullptr;
    std::string form;
};

void declare(CLI::App& command, Options& options) {
    options.program = command.get_parent();
    command.group("");  // for those who build packages, not for the help
    addArgument(
        command, "FORM", options.form, "man: a page of the manual; the others: completion for a shell");
}

ExitStatus run(const Options& options, Output& output) {
    const auto* form =
        std::find_if(kForms.begin(), kForms.end(), [&](const Form& one) { return one.name == options.form; });
    if (form == kForms.end())
        throw UsageError(fmt::format("the forms are man, bash, zsh and fish, not '{}'", options.form));
    output.write(form->made(manualOf(*options.program)));
    return ExitStatus::success;
}

}  // namespace

void addGenerateCommand(CommandLine& commandLine) {
    commandLine.add<Options>("generate",
                             "man|bash|zsh|fish",
                             "The manual and the shells' completions, made from the command itself",
                             declare,
                             run);
}

}  // namespace QELModels::tool
