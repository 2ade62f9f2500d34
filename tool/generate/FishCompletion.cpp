#include <fmt/format.h>

#include <cstddef>
#include <string>
#include <string_view>

#include "tool/Texts.h"
#include "tool/generate/Manual.h"

namespace QELModels::tool {

namespace {

// 0: the program; 1: how a line begins that completes something.
constexpr std::string_view kFishScript = R"(# fish completion for {0}

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

{1} -f
)";

// Between single quotes fish reads a backslash before a quote and before itself.
std::string fishQuoted(std::string_view text) {
    return "'" + backslashed(text, "\\'") + "'";
}

std::string listed(const std::vector<std::string>& words) {
    return "-a " + fishQuoted(joined(words, " "));
}

std::string optionText(const Manual::Argument& option) {
    std::string text;
    for (const std::string& name : option.names)
        text += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
    if (!option.type.empty()) text += option.isFile() ? " -r -F" : " -x";
    if (!option.words.empty()) text += ' ' + listed(option.words);
    return text + " -d " + fishQuoted(option.description);
}

// What completes the arguments of a command by place; empty when nothing does.
std::string argumentLines(const Manual::Command& command, std::string_view complete) {
    std::string valued;
    for (const std::string& name : command.valuedOptionNames())
        valued += ' ' + name;
    std::string lines;
    for (std::size_t i = 0; i < command.arguments.size(); ++i) {
        const Manual::Argument& argument = command.arguments[i];
        if (argument.words.empty() && !argument.isFile()) continue;
        lines += fmt::format("{} -n '__qelmodels_place {} {} {}{}' {}\n",
                             complete,
                             command.name,
                             argument.isRepeated ? "-ge" : "-eq",
                             i,
                             valued,
                             argument.words.empty() ? "-F" : listed(argument.words));
    }
    return lines;
}

std::string commandLines(const Manual::Command& command, std::string_view complete) {
    std::string lines = fmt::format("\n{} -n __fish_use_subcommand -a {} -d {}\n",
                                    complete,
                                    command.name,
                                    fishQuoted(command.description));
    for (const Manual::Argument& option : command.options)
        lines += fmt::format(
            "{} -n '__fish_seen_subcommand_from {}'{}\n", complete, command.name, optionText(option));
    return lines + argumentLines(command, complete);
}

}  // namespace

std::string fishCompletion(const Manual& manual) {
    const std::string complete = "complete -c " + manual.program.name;
    std::string script = fmt::format(kFishScript, manual.program.name, complete);
    for (const Manual::Argument& option : manual.program.options)
        script += fmt::format("{} -n __fish_use_subcommand{}\n", complete, optionText(option));
    for (const Manual::Command& command : manual.commands)
        script += commandLines(command, complete);
    return script;
}

}  // namespace QELModels::tool
