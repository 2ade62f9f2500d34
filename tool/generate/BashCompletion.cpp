#include <fmt/format.h>

#include <cstddef>
#include <string>

#include "tool/Texts.h"
#include "tool/generate/Manual.h"

namespace QELModels::tool {

namespace {

// 0: the program; 1: its commands; 2: its options; 3: the options of each command; 4: what completes each
// value.
constexpr std::string_view kBashScript = R"(# bash completion for {0}

_{0}() {{
    local current=${{COMP_WORDS[COMP_CWORD]}} previous=${{COMP_WORDS[COMP_CWORD - 1]}}
    local options='' valued='' words='' files='' place=0 at
    COMPREPLY=()
    if ((COMP_CWORD == 1)); then
        mapfile -t COMPREPLY < <(compgen -W '{1} {2}' -- "$current")
        return
    fi
    case ${{COMP_WORDS[1]}} in
{3}    *) return ;;
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
{4}    esac
    [[ $current == -* ]] && words=$options files=''
    if [[ $files ]]; then
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    else
        mapfile -t COMPREPLY < <(compgen -W "$words" -- "$current")
    fi
}}
complete -F _{0} {0}
)";

std::string optionsCase(const Manual::Command& command) {
    std::string valued;
    for (const std::string& name : command.valuedOptionNames())
        valued += name + ' ';
    return fmt::format(
        "    {}) options='{}' valued=' {}' ;;\n", command.name, joined(command.optionNames(), " "), valued);
}

// What completes a value at a place of a command: words, names of files, or nothing at all.
std::string valueCase(const Manual::Command& command, const std::string& place,
                      const Manual::Argument& value) {
    const auto completedBy = [&](const std::string& what) {
        return fmt::format("    {}:{}) {} ;;\n", command.name, place, what);
    };
    if (!value.words.empty()) return completedBy(fmt::format("words='{}'", joined(value.words, " ")));
    return value.isFile() ? completedBy("files=yes") : std::string();
}

std::string valueCases(const Manual::Command& command) {
    std::string cases;
    for (const Manual::Argument& option : command.options)
        if (!option.type.empty())
            for (const std::string& name : option.names)
                cases += valueCase(command, name, option);
    for (std::size_t i = 0; i < command.arguments.size(); ++i) {
        const Manual::Argument& argument = command.arguments[i];
        cases += valueCase(command, argument.isRepeated ? "[0-9]*" : std::to_string(i), argument);
    }
    return cases;
}

}  // namespace

std::string bashCompletion(const Manual& manual) {
    std::string options, values;
    for (const Manual::Command& command : manual.commands) {
        options += optionsCase(command);
        values += valueCases(command);
    }
    return fmt::format(kBashScript,
                       manual.program.name,
                       joined(manual.commandNames(), " "),
                       joined(manual.program.optionNames(), " "),
                       options,
                       values);
}

}  // namespace QELModels::tool
