#include "tool/commands/Commands.h"

#include <utility>

namespace QELModels::tool {

// Every command has a source file of its own.
void addListCommand(CommandLine& commandLine);
void addMapCommand(CommandLine& commandLine);
void addFactsCommand(CommandLine& commandLine);
void addNextCommand(CommandLine& commandLine);
void addImageURLCommand(CommandLine& commandLine);
void addTextCommand(CommandLine& commandLine);
void addDurationCommand(CommandLine& commandLine);
void addColorCommand(CommandLine& commandLine);
void addExplainCommand(CommandLine& commandLine);
void addAuditCommand(CommandLine& commandLine);
void addSchemaCommand(CommandLine& commandLine);
void addGenerateCommand(CommandLine& commandLine);

namespace {

constexpr AddCommand kCommands[] = {
    &addListCommand,
    &addMapCommand,
    &addFactsCommand,
    &addNextCommand,
    &addImageURLCommand,
    &addTextCommand,
    &addDurationCommand,
    &addColorCommand,
    &addExplainCommand,
    &addAuditCommand,
    &addSchemaCommand,
    &addGenerateCommand,
};

}  // namespace

ExitStatus runProgram(std::vector<std::string> arguments) {
    return CommandLine(kCommands).run(std::move(arguments));
}

}  // namespace QELModels::tool
