#include <fmt/format.h>

#include <string>
#include <string_view>

#include "tool/Texts.h"
#include "tool/generate/Manual.h"

namespace QELModels::tool {

namespace {

// 0: the program; 1: the descriptions of its commands; 2: its options; 3: the arguments of each command.
constexpr std::string_view kZshScript = R"(#compdef {0}

_{0}() {{
    local -a commands
    commands=(
{1}    )
    local curcontext=$curcontext state
    _arguments -C{2} \
            ':command:->command' \
            '*::argument:->argument' && return
    if [[ $state == command ]]; then
        _describe command commands
        return
    fi
    case $words[1] in
{3}    esac
}}

_{0} "$@"
)";

// A text between single quotes, in which a shell sees nothing special.
std::string shellQuoted(std::string_view text) {
    std::string result = "'";
    for (const char c : text)
        result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return result + "'";
}

std::string valueOf(const Manual::Argument& argument) {
    if (!argument.words.empty()) return fmt::format("{}:({})", argument.type, joined(argument.words, " "));
    return fmt::format("{}:{}", argument.type, argument.isFile() ? "_files" : "");
}

std::string argumentsOf(const Manual::Command& command) {
    std::string arguments;
    for (const Manual::Argument& option : command.options) {
        for (const std::string& name : option.names) {
            std::string argument = fmt::format(
                "{}{}[{}]", option.isRepeated ? "*" : "", name, backslashed(option.description, "[]\\:"));
            if (!option.type.empty()) argument += ':' + valueOf(option);
            arguments += " \\\n            " + shellQuoted(argument);
        }
    }
    for (const Manual::Argument& argument : command.arguments)
        arguments +=
            " \\\n            " + shellQuoted((argument.isRepeated ? "*:" : ":") + valueOf(argument));
    return arguments;
}

}  // namespace

std::string zshCompletion(const Manual& manual) {
    std::string descriptions, arguments;
    for (const Manual::Command& command : manual.commands) {
        const std::string description = command.name + ':' + backslashed(command.description, "\\:");
        descriptions += fmt::format("        {}\n", shellQuoted(description));
        arguments +=
            fmt::format("    {})\n        _arguments{}\n        ;;\n", command.name, argumentsOf(command));
    }
    const Manual::Command options{{}, {}, {}, {}, manual.program.options};
    return fmt::format(kZshScript, manual.program.name, descriptions, argumentsOf(options), arguments);
}

}  // namespace QELModels::tool
