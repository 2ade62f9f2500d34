#include <string>

#include "tool/Kinds.h"
#include "tool/Options.h"
#include "tool/generate/Schema.h"

namespace QELModels::tool {

namespace {

struct Options {
    std::string kind;
};

void declare(CLI::App& command, Options& options) {
    addKind(command, options.kind, "What the documents are: " + kindNames());
}

ExitStatus run(const Options& options, Session& session) {
    session.output.write(schemaOf(kindNamed(options.kind)) + '\n');
    return ExitStatus::success;
}

}  // namespace

void addSchemaCommand(CommandLine& commandLine) {
    commandLine.add<Options>("schema", "KIND", "JSON Schema of what the mapping reads", declare, run);
}

}  // namespace QELModels::tool
