#include "tool/CommandLine.h"

#include <fmt/format.h>
#include <CLI/CLI.hpp>

#include <algorithm>
#include <exception>
#include <new>
#include <utility>

#include "QELModels/Records/MappingFault.h"
#include "tool/Messages.h"
#include "tool/System.h"

namespace QELModels::tool {

namespace {

// The export header has the version as three numbers.
std::string version() {
    return fmt::format(
        "{} {}.{}.{}", kProgram, QELMODELS_VERSION_MAJOR, QELMODELS_VERSION_MINOR, QELMODELS_VERSION_PATCH);
}

// Help that says how a command is called in the words of its author.
class HelpFormatter : public CLI::Formatter {
public:
    explicit HelpFormatter(std::string usage) : usage_(std::move(usage)) {
        constexpr std::size_t kColumnOfDescriptions = 26;
        column_width(kColumnOfDescriptions);
        label("Positionals", "Arguments");
        label("Subcommands", "Commands");
    }
    std::string make_usage(const CLI::App*, std::string) const override {
        return fmt::format("Usage: {}\n", usage_);
    }

private:
    std::string usage_;
};

void setHelp(CLI::App& app, std::string usage) {
    app.formatter(std::make_shared<HelpFormatter>(std::move(usage)));
    app.set_help_flag("--help,-h", "Say how this is used, and end");
    app.set_version_flag("--version", version(), "Say which version this is, and end");
}

// One line that says what is wrong with the arguments, and where to read more.
ExitStatus usageError(const CLI::App& app, std::string problem) {
    std::string program = app.get_name();
    for (const CLI::App* command : app.get_subcommands())
        program += " " + command->get_name();
    std::replace(problem.begin(), problem.end(), '\n', ' ');
    report(fmt::format("{}: {} (see {} --help)", program, problem, program));
    return ExitStatus::badUsage;
}

}  // namespace

CommandLine::CommandLine(std::span<const AddCommand> commands)
    : app_(std::make_unique<CLI::App>("Looks at documents of the content API as the apps do.",
                                      std::string(kProgram))) {
    setHelp(*app_, fmt::format("{} COMMAND [ARGUMENTS]", kProgram));
    app_->require_subcommand(1);
    app_->footer(
        fmt::format("FILE is a path or - for standard input, which is also the default.\n"
                    "`{} COMMAND --help` says more about a command.",
                    kProgram));
    for (const AddCommand addTo : commands)
        addTo(*this);
}

CommandLine::~CommandLine() = default;

CLI::App& CommandLine::addCommand(std::string name, std::string usage, std::string description) {
    names_.push_back(name);
    CLI::App& command = *app_->add_subcommand(name, std::move(description));
    setHelp(command, fmt::format("{} {} {}", kProgram, name, usage));
    command.group("Commands");
    command.footer("");
    return command;
}

void CommandLine::setWork(CLI::App& command, std::function<void()> work) {
    command.final_callback(std::move(work));
}

void CommandLine::addPlain(std::string name, std::string usage, std::string description,
                           ExitStatus (*work)(const std::vector<std::string>& arguments, Session& session)) {
    plainCommands_.push_back(name);
    setWork(addCommand(std::move(name), std::move(usage), std::move(description)),
            [this, work] { status_ = work(plainArguments_, session_); });
}

// Takes a command's mere texts away before the parser sees them: it would read "-inf" and "-.5" as options of
// one letter, and "[a,b]" as a list. Options are left.
void CommandLine::takePlainArguments(std::vector<std::string>& arguments) {
    const auto isOption = [](const std::string& argument) {
        return argument.starts_with("--") || argument == "-h";
    };
    const auto first = arguments.begin() + 1;  // after the command's name
    const auto mark = std::find(first, arguments.end(), "--");
    const auto texts = std::stable_partition(first, mark, isOption);
    plainArguments_.assign(texts, mark);
    if (mark != arguments.end()) plainArguments_.insert(plainArguments_.end(), mark + 1, arguments.end());
    arguments.erase(texts, arguments.end());
}

ExitStatus CommandLine::parsed(std::vector<std::string> arguments) {
    if (arguments.empty()) throw UsageError("a command is required");
    const std::string command = arguments.front();
    if (!command.starts_with('-') && std::find(names_.begin(), names_.end(), command) == names_.end())
        throw UsageError(fmt::format("there is no command '{}'", command));
    if (std::find(plainCommands_.begin(), plainCommands_.end(), command) != plainCommands_.end())
        takePlainArguments(arguments);
    // The parser takes its arguments from the back.
    std::reverse(arguments.begin(), arguments.end());
    try {
        app_->parse(std::move(arguments));
        return status_;
    } catch (const CLI::CallForHelp&) {
        session_.output.write(app_->help());
    } catch (const CLI::CallForAllHelp&) {
        session_.output.write(app_->help("", CLI::AppFormatMode::All));
    } catch (const CLI::CallForVersion&) {
        session_.output.write(version() + '\n');
    }
    return ExitStatus::success;
}

ExitStatus CommandLine::run(std::vector<std::string> arguments) {
    system::prepareFiles();
    try {
        const ExitStatus status = parsed(std::move(arguments));
        session_.output.flush();
        return status;
    } catch (const ClosedPipe&) {
        return ExitStatus::success;
    } catch (const CLI::Error& error) {
        return usageError(*app_, error.what());
    } catch (const UsageError& error) {
        return usageError(*app_, error.what());
    } catch (const BadInput& error) {
        report(error.what());
    } catch (const MappingFault& fault) {
        report(faultMessage(session_.place(), fault));
    } catch (const std::bad_alloc&) {
        report(fmt::format("{}: not enough memory", kProgram));
    } catch (const std::exception& error) {
        report(fmt::format("{}: {}", kProgram, error.what()));
    }
    return ExitStatus::badInput;
}

}  // namespace QELModels::tool
