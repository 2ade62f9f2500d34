#pragma once

#include <functional>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "QELModels/Platform/Export.h"
#include "tool/ExitStatus.h"
#include "tool/Session.h"

// The parser is all templates, and takes longer to compile than most commands: only the sources that call it
// include it.
namespace CLI {
class App;
}

namespace QELModels::tool {

class CommandLine;

/// Adds one command to the command line.
using AddCommand = void (*)(CommandLine& commandLine);

/// The program with its commands, each of which adds itself.
class CommandLine {
public:
    /// The commands are listed for people in this order.
    explicit CommandLine(std::span<const AddCommand> commands);
    ~CommandLine();

    /// Adds a command. `declare` binds its arguments to options, and `work` does the rest with them. It may
    /// throw `BadInput`, `UsageError`, and the faults of a mapping.
    template <class Options>
    void add(std::string name, std::string usage, std::string description,
             void (*declare)(CLI::App& command, Options& options),
             ExitStatus (*work)(const Options& options, Session& session)) {
        CLI::App& command = addCommand(std::move(name), std::move(usage), std::move(description));
        const auto options = std::make_shared<Options>();
        declare(command, *options);
        setWork(command, [this, options, work] { status_ = work(*options, session_); });
    }

    /// Adds a command whose arguments are mere texts. They may begin with a dash, as negative numbers do;
    /// after
    /// "--" everything is one of them.
    void addPlain(std::string name, std::string usage, std::string description,
                  ExitStatus (*work)(const std::vector<std::string>& arguments, Session& session));

    /// Runs the command that the arguments name, and writes what it has to say. The program's name is not
    /// among them. Nothing is thrown: whatever a command throws becomes a message.
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
    Session session_;
    ExitStatus status_ = ExitStatus::success;
};

}  // namespace QELModels::tool
