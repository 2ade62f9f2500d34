#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tool/ExitStatus.h"
#include "tool/Texts.h"
#include "tool/generate/Manual.h"

namespace QELModels::tool {

namespace {

// Text as it is to be read: roff prints a bare dash or quote as a typographic one.
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

std::string entry(const Manual::Argument& argument) {
    std::string head;
    for (const std::string& name : argument.names)
        head += fmt::format("{}\\fB{}\\fR", head.empty() ? "" : ", ", roff(name));
    if (!argument.type.empty())
        head += fmt::format("{}\\fI{}\\fR", head.empty() ? "" : " ", roff(argument.type));
    if (argument.isRepeated) head += " ...";
    return fmt::format(".TP\n{}\n{}.\n", head, roff(argument.description));
}

// The description without its end, as it follows the name on the page.
std::string shortDescription(std::string description) {
    while (description.ends_with('.'))
        description.pop_back();
    description.replace(0, 1, 1, static_cast<char>(std::tolower(description.front())));
    return description;
}

std::string header(const Manual::Command& program) {
    return fmt::format(".TH {} 1 \"\" \"{} {}.{}.{}\" \"User Commands\"\n.SH NAME\n{} \\- {}\n",
                       "QELMODELS",
                       program.name,
                       QELMODELS_VERSION_MAJOR,
                       QELMODELS_VERSION_MINOR,
                       QELMODELS_VERSION_PATCH,
                       program.name,
                       roff(shortDescription(program.description)));
}

std::string synopsis(const Manual& manual) {
    std::vector<std::string> calls;
    for (const Manual::Command& command : manual.commands)
        for (const std::string& usage : command.usage)
            calls.push_back(roff(usage));
    return ".SH SYNOPSIS\n" + joined(calls, "\n.br\n") + '\n';
}

std::string description(const Manual& manual) {
    std::string text = ".SH DESCRIPTION\n";
    for (const std::string& line : split(manual.footer, '\n'))
        text += roff(line) + "\n.br\n";
    text += "Results go to standard output, messages to standard error.\n.SH OPTIONS\n";
    for (const Manual::Argument& option : manual.program.options)
        text += entry(option);
    return text;
}

// One command, without the options that the whole program has.
std::string commandSection(const Manual::Command& command, const std::vector<std::string>& everywhere) {
    std::string text = fmt::format(".SS {}\n{}.\n", roff(command.name), roff(command.description));
    for (const std::string& usage : command.usage)
        text += fmt::format(".PP\n\\fB{}\\fR\n", roff(usage));
    for (const Manual::Argument& argument : command.arguments)
        text += entry(argument);
    for (const Manual::Argument& option : command.options)
        if (std::find(everywhere.begin(), everywhere.end(), option.names.front()) == everywhere.end())
            text += entry(option);
    return text;
}

std::string exitStatuses() {
    constexpr std::array<std::pair<ExitStatus, std::string_view>, 3> kStatuses{{
        {ExitStatus::success, "All is well, or nobody reads the results any more."},
        {ExitStatus::badInput, "A document or a file is broken: the message says where."},
        {ExitStatus::badUsage, "The command was called in a way that it does not know."},
    }};
    std::string text = ".SH EXIT STATUS\n";
    for (const auto& [status, meaning] : kStatuses)
        text += fmt::format(".TP\n\\fB{}\\fR\n{}\n", static_cast<int>(status), meaning);
    return text;
}

}  // namespace

std::string manualPage(const Manual& manual) {
    std::string page = header(manual.program) + synopsis(manual) + description(manual) + ".SH COMMANDS\n";
    for (const Manual::Command& command : manual.commands)
        page += commandSection(command, manual.program.optionNames());
    return page + exitStatuses() +
           ".SH ENVIRONMENT\n.TP\n\\fBNO_COLOR\\fR\nTables stay plain on a terminal too.\n";
}

}  // namespace QELModels::tool
