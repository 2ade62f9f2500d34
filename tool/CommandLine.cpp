#include "tool/CommandLine.h"

#include <fmt/format.h>
#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <csignal>
#include <new>
#include <utility>

#include "QELModels/Process/Clock.h"
#include "QELModels/Process/MainScreen.h"
#include "QELModels/Values/Date.h"

namespace QELModels::tool {

namespace {

constexpr const char* kProgram = "qelmodels";

// The version stands in the export header as three numbers.
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
    : app_(std::make_unique<CLI::App>("Looks at documents of the content API as the apps do.", kProgram)) {
    setHelp(*app_, fmt::format("{} COMMAND [ARGUMENTS]", kProgram));
    app_->require_subcommand(1);
    app_->footer(
        fmt::format("FILE is a path or - for standard input, which is also the default.\n"
                    "`{} COMMAND --help` says more about a command.",
                    kProgram));
    for (const AddCommand add : commands)
        add(*this);
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

void CommandLine::addPlain(std::string name,
                           std::string usage,
                           std::string description,
                           ExitStatus (*work)(const std::vector<std::string>& arguments, Output& output)) {
    plainCommands_.push_back(name);
    setWork(addCommand(std::move(name), std::move(usage), std::move(description)),
            [this, work] { status_ = work(plainArguments_, output_); });
}

// Takes a command's mere texts away before the parser sees them: it would read "-inf" and "-.5" as options of
// one letter, and "[a,b]" as a list. Options are left.
void CommandLine::takePlainArguments(std::vector<std::string>& arguments) {
    bool isBehindMark = false;
    std::erase_if(arguments, [&](const std::string& argument) {
        if (!isBehindMark && argument != "--" && (argument.starts_with("--") || argument == "-h"))
            return false;
        if (isBehindMark || argument != "--") plainArguments_.push_back(argument);
        isBehindMark = isBehindMark || argument == "--";
        return true;
    });
}

ExitStatus CommandLine::parsed(std::vector<std::string> arguments) {
    if (arguments.empty()) throw UsageError("a command is required");
    const std::string command = arguments.front();
    if (!command.starts_with('-') && std::find(names_.begin(), names_.end(), command) == names_.end())
        throw UsageError(fmt::format("there is no command '{}'", command));
    if (std::find(plainCommands_.begin(), plainCommands_.end(), command) != plainCommands_.end()) {
        arguments.erase(arguments.begin());
        takePlainArguments(arguments);
        arguments.insert(arguments.begin(), command);
    }
    // The parser takes its arguments from the back.
    std::reverse(arguments.begin(), arguments.end());
    try {
        app_->parse(std::move(arguments));
        return status_;
    } catch (const CLI::CallForHelp&) {
        output_.write(app_->help());
    } catch (const CLI::CallForAllHelp&) {
        output_.write(app_->help("", CLI::AppFormatMode::All));
    } catch (const CLI::CallForVersion&) {
        output_.write(version() + '\n');
    }
    return ExitStatus::success;
}

ExitStatus CommandLine::run(std::vector<std::string> arguments) {
    std::signal(SIGPIPE, SIG_IGN);  // a closed pipe is an error of the write instead
    try {
        const ExitStatus status = parsed(std::move(arguments));
        output_.flush();
        return status;
    } catch (const ClosedPipe&) {
        return ExitStatus::success;
    } catch (const CLI::Error& error) {
        return usageError(*app_, error.what());
    } catch (const UsageError& error) {
        return usageError(*app_, error.what());
    } catch (const BadInput& error) {
        report(error.what());
    } catch (const OutputFailure& error) {
        report(fmt::format("{}: {}", kProgram, error.what()));
    } catch (const std::bad_alloc&) {
        report(fmt::format("{}: not enough memory", kProgram));
    }
    return ExitStatus::badInput;
}

void addArgument(CLI::App& command, std::string name, std::string& text, std::string description) {
    command.add_option(std::move(name), text, std::move(description))->required()->type_name("");
}

void addFlag(CLI::App& command, std::string name, bool& isGiven, std::string description) {
    command.add_flag(std::move(name), isGiven, std::move(description));
}

void addKind(CLI::App& command, std::string& kind, std::string description) {
    addArgument(command, "KIND", kind, std::move(description));
}

void addKeyPath(CLI::App& command, std::optional<std::string>& keyPath) {
    addOptional(command, "--key-path", "PATH", keyPath, "Where a page of assets has its list");
}

void addFile(CLI::App& command, std::string& file) {
    file = kStandardInput;
    command.add_option("FILE", file, "The document; - or nothing is standard input")->type_name("");
}

void addOptional(CLI::App& command,
                 std::string name,
                 std::string type,
                 std::optional<std::string>& text,
                 std::string description) {
    // As a function: the parser would take an empty text for none.
    const auto take = [&text](const std::string& given) { text = given; };
    command.add_option_function<std::string>(std::move(name), take, std::move(description))
        ->type_name(std::move(type));
}

void addRepeated(CLI::App& command,
                 std::string name,
                 std::string type,
                 Required required,
                 std::vector<std::string>& texts,
                 std::string description) {
    command.add_option(std::move(name), texts, std::move(description))
        ->type_name(std::move(type))
        ->required(required == Required::yes);
}

void addCount(CLI::App& command,
              std::string name,
              std::optional<std::size_t>& count,
              std::size_t most,
              std::string description) {
    command.add_option(std::move(name), count, std::move(description))
        ->type_name("N")
        ->check(CLI::Range(std::size_t{1}, most));
}

void addClosingWords(CLI::App& command, std::string words) {
    command.footer(std::move(words));
}

void addCurrentTime(CLI::App& command, std::optional<std::string>& time) {
    addOptional(command, "--at", "EPOCH", time, "The current time, in seconds since 1970-01-01 UTC");
}

void setCurrentTime(const std::optional<std::string>& time) {
    if (!time) return;
    const double seconds = numberFrom(*time);
    if (!std::isfinite(seconds)) throw UsageError(fmt::format("'{}' is no time", *time));
    Clock::setSource([now = dateFromSecondsSince1970(seconds)] { return now; });
}

void addScreenScale(CLI::App& command, std::optional<std::string>& scale) {
    addOptional(command, "--screen-scale", "S", scale, "Pixels a point of the screen; 1 unless given");
}

void setScreenScale(const std::optional<std::string>& scale) {
    if (scale) MainScreen::setScale(numberFrom(*scale));
}

std::optional<double> numberIn(std::string_view text) {
    double number = 0;
    const char* end = text.data() + text.size();
    const auto [read, error] = std::from_chars(text.data(), end, number);
    return error == std::errc() && read == end ? std::optional(number) : std::nullopt;
}

std::optional<Size> sizeIn(std::string_view text) {
    const std::size_t cross = text.find('x');
    if (cross == std::string_view::npos) return std::nullopt;
    const auto width = numberIn(text.substr(0, cross));
    const auto height = numberIn(text.substr(cross + 1));
    return width && height ? std::optional(Size{*width, *height}) : std::nullopt;
}

double numberFrom(std::string_view text) {
    if (const auto number = numberIn(text)) return *number;
    throw UsageError(fmt::format("'{}' is no number", text));
}

Size sizeFrom(std::string_view text) {
    if (const auto size = sizeIn(text)) return *size;
    throw UsageError(fmt::format("'{}' is no size such as 320x180", text));
}

}  // namespace QELModels::tool
