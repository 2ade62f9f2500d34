#include "tool/generate/Manual.h"

#include <CLI/CLI.hpp>

#include <cctype>
#include <cstddef>
#include <string_view>
#include <utility>

#include "tool/Kinds.h"
#include "tool/Texts.h"

namespace QELModels::tool {

namespace {

bool hasWord(std::string_view text, std::string_view word) {
    const auto isLetter = [&](std::size_t at) {
        return at < text.size() && std::isalpha(static_cast<unsigned char>(text[at])) != 0;
    };
    for (std::size_t at = text.find(word); at != std::string_view::npos; at = text.find(word, at + 1))
        if (!isLetter(at - 1) && !isLetter(at + word.size())) return true;
    return false;
}

// The values that there are. The help writes few of them as "width|height"; the description of a KIND names
// those that a command takes.
std::vector<std::string> wordsOf(const Manual::Argument& argument, std::string_view notation) {
    if (notation.find('|') != std::string_view::npos) return split(notation, '|');
    std::vector<std::string> words;
    if (argument.type != "KIND") return words;
    for (const Kind& kind : kinds())
        if (hasWord(argument.description, kind.name)) words.emplace_back(kind.name);
    return words;
}

// The lines of a usage, without the word before them.
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

Manual::Argument argumentOf(const CLI::Option& option, std::string_view notation) {
    Manual::Argument argument;
    argument.type = option.get_name(true);
    argument.description = option.get_description();
    argument.isRepeated = option.get_expected_max() == CLI::detail::expected_max_vector_size;
    argument.words = wordsOf(argument, notation);
    return argument;
}

Manual::Argument optionOf(const CLI::Option& option) {
    constexpr std::string_view kRepeated = "...";
    Manual::Argument argument;
    for (const std::string& name : option.get_lnames())
        argument.names.push_back("--" + name);
    for (const std::string& name : option.get_snames())
        argument.names.push_back("-" + name);
    // After a colon the parser says what it checks.
    const bool hasValue = option.get_items_expected_max() > 0;
    if (hasValue) argument.type = split(option.get_type_name(), ':').front();
    if (argument.type.ends_with(kRepeated)) argument.type.resize(argument.type.size() - kRepeated.size());
    argument.description = option.get_description();
    argument.isRepeated = option.get_expected_max() == CLI::detail::expected_max_vector_size;
    argument.words = wordsOf(argument, argument.type);
    return argument;
}

Manual::Command commandOf(const CLI::App& app) {
    Manual::Command command{app.get_name(), usageOf(app), app.get_description(), {}, {}};
    // In the usage the arguments follow the program's name and the command's, in their order.
    std::vector<std::string> notations = split(command.usage.front(), ' ');
    notations.erase(notations.begin(),
                    notations.begin() + std::min<std::ptrdiff_t>(2, std::ssize(notations)));
    for (const CLI::Option* option : app.get_options()) {
        const std::size_t place = command.arguments.size();
        if (option->get_positional())
            command.arguments.push_back(
                argumentOf(*option, place < notations.size() ? notations[place] : std::string_view()));
        else
            command.options.push_back(optionOf(*option));
    }
    return command;
}

}  // namespace

std::vector<std::string> Manual::Command::optionNames() const {
    std::vector<std::string> all;
    for (const Argument& option : options)
        all.insert(all.end(), option.names.begin(), option.names.end());
    return all;
}

std::vector<std::string> Manual::Command::valuedOptionNames() const {
    std::vector<std::string> valued;
    for (const Argument& option : options)
        if (!option.type.empty()) valued.insert(valued.end(), option.names.begin(), option.names.end());
    return valued;
}

std::vector<std::string> Manual::commandNames() const {
    std::vector<std::string> all;
    all.reserve(commands.size());
    for (const Command& command : commands)
        all.push_back(command.name);
    return all;
}

Manual manualOf(const CLI::App& program) {
    Manual manual{commandOf(program), program.get_footer(), {}};
    // A command without a group is hidden from people.
    for (const CLI::App* command :
         program.get_subcommands([](const CLI::App* app) { return !app->get_group().empty(); }))
        manual.commands.push_back(commandOf(*command));
    return manual;
}

}  // namespace QELModels::tool
