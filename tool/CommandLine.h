#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "QELModels/Platform/Export.h"
#include "QELModels/Values/Size.h"
#include "tool/Documents.h"
#include "tool/Output.h"

// The parser is all templates, so only the sources that call it read it: it takes longer to compile than most
// commands.
namespace CLI {
class App;
}

namespace QELModels::tool {

/// What was asked cannot be done: one line for people, who are then pointed to `--help`.
struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

class CommandLine;

/// Adds one command to the command line.
using AddCommand = void (*)(CommandLine& commandLine);

/// The program with its commands, each of which adds itself.
class CommandLine {
public:
    /// The commands are listed for people in this order.
    explicit CommandLine(std::span<const AddCommand> commands);
    ~CommandLine();

    /// Adds a command. `declare` binds its arguments to options, and `work` does the rest with them: it
    /// writes to `output` and may throw `BadInput` and `UsageError`.
    template <class Options>
    void add(std::string name,
             std::string usage,
             std::string description,
             void (*declare)(CLI::App& command, Options& options),
             ExitStatus (*work)(const Options& options, Output& output)) {
        CLI::App& command = addCommand(std::move(name), std::move(usage), std::move(description));
        const auto options = std::make_shared<Options>();
        declare(command, *options);
        setWork(command, [this, options, work] { status_ = work(*options, output_); });
    }

    /// Adds a command whose arguments are mere texts. They may begin with a dash, as negative numbers do;
    /// behind "--" everything is one of them.
    void addPlain(std::string name,
                  std::string usage,
                  std::string description,
                  ExitStatus (*work)(const std::vector<std::string>& arguments, Output& output));

    /// Runs the command with its arguments, the program's name left out, and writes what it has to say.
    ExitStatus run(std::vector<std::string> arguments);

private:
    CLI::App& addCommand(std::string name, std::string usage, std::string description);
    static void setWork(CLI::App& command, std::function<void()> work);
    void takePlainArguments(std::vector<std::string>& arguments);
    ExitStatus parsed(std::vector<std::string> arguments);

    std::unique_ptr<CLI::App> app_;
    std::vector<std::string> names_;
    std::vector<std::string> plainCommands_;
    std::vector<std::string> plainArguments_;
    Output output_;
    ExitStatus status_ = ExitStatus::success;
};

/// An argument by place that must be given.
void addArgument(CLI::App& command, std::string name, std::string& text, std::string description);
/// An option without a value.
void addFlag(CLI::App& command, std::string name, bool& isGiven, std::string description);
/// The argument KIND.
void addKind(CLI::App& command, std::string& kind, std::string description);
/// The option `--key-path PATH`, for `keyPathFor`.
void addKeyPath(CLI::App& command, std::optional<std::string>& keyPath);
/// The argument FILE, standard input unless given.
void addFile(CLI::App& command, std::string& file);
/// An argument or an option with one value, which stays null unless it is given.
void addOptional(CLI::App& command,
                 std::string name,
                 std::string type,
                 std::optional<std::string>& text,
                 std::string description);
/// An argument or an option with any number of values; when it is required, one at least.
enum class Required { no, yes };
void addRepeated(CLI::App& command,
                 std::string name,
                 std::string type,
                 Required required,
                 std::vector<std::string>& texts,
                 std::string description);
/// An option with a number from 1 to `most`, which stays null unless it is given.
void addCount(CLI::App& command,
              std::string name,
              std::optional<std::size_t>& count,
              std::size_t most,
              std::string description);
/// What the help says below a command's options.
void addClosingWords(CLI::App& command, std::string words);
/// The option `--at EPOCH`, for `setCurrentTime`.
void addCurrentTime(CLI::App& command, std::optional<std::string>& time);
/// Fixes the current time for all that is asked; throws `UsageError` when it is no date.
void setCurrentTime(const std::optional<std::string>& time);
/// The option `--screen-scale S`, for `setScreenScale`.
void addScreenScale(CLI::App& command, std::optional<std::string>& scale);
/// Sets the main screen's scale for all that is asked; throws `UsageError` when it is no number.
void setScreenScale(const std::optional<std::string>& scale);

/// A number that is the whole text; nothing when it is none. Negative ones, `nan` and `inf` are taken.
std::optional<double> numberIn(std::string_view text);
/// A size like "320x180"; nothing when it is none.
std::optional<Size> sizeIn(std::string_view text);
/// The same; throws `UsageError` when it is none.
double numberFrom(std::string_view text);
Size sizeFrom(std::string_view text);

}  // namespace QELModels::tool
