#include <fmt/format.h>
#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <string>
#include <string_view>

#include "tool/Options.h"
#include "tool/generate/Manual.h"

namespace QELModels::tool {

namespace {

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

ExitStatus run(const Options& options, Session& session) {
    const auto* form =
        std::find_if(kForms.begin(), kForms.end(), [&](const Form& one) { return one.name == options.form; });
    if (form == kForms.end())
        throw UsageError(fmt::format("the forms are man, bash, zsh and fish, not '{}'", options.form));
    session.output.write(form->made(manualOf(*options.program)));
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
