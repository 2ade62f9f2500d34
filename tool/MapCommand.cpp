#include <optional>
#include <string>

#include "JSON/JSONFromValue.h"
#include "tool/CommandLine.h"
#include "tool/Commands.h"
#include "tool/Documents.h"
#include "tool/Kinds.h"

namespace QELModels::inline QELMODELS_ABI::tool {

namespace {

struct Options {
    std::string kind;
    std::string file;
    bool isCompact = false;
    bool isLines = false;
    std::optional<std::string> keyPath;
};

void declare(CLI::App& command, Options& options) {
    command.add_option("KIND", options.kind, "What the document is: " + kindNames())
        ->required()
        ->type_name("");
    addFile(command, options.file);
    command.add_flag("--compact", options.isCompact, "Without line breaks and blanks");
    command.add_flag("--lines", options.isLines, "Every line of FILE is a document of its own");
    addOptional(command, "--key-path", "PATH", options.keyPath, "Where a page of assets has its list");
}

ExitStatus run(const Options& options, Output& output) {
    const Kind& kind = kindNamed(options.kind);
    if (options.keyPath && !kind.takesKeyPath) throw UsageError("--key-path goes with assets alone");
    const std::string keyPath = options.keyPath.value_or("");
    const Answer answer = [&](RepresentationView document, JSONWriter& writer) {
        writeJSON(writer, kind.map(document, keyPath, {}));
    };
    if (options.isLines) return answerLines(options.file, output, answer);
    const auto layout = options.isCompact ? JSONWriter::Layout::compact : JSONWriter::Layout::indented;
    return answerDocument(options.file, layout, output, answer);
}

}  // namespace

void addMapCommand(CommandLine& commandLine) {
    commandLine.add<Options>("map",
                             "KIND [FILE] [--compact] [--lines] [--key-path PATH]",
                             "The mapped model as JSON",
                             declare,
                             run);
}

}  // namespace QELModels::inline QELMODELS_ABI::tool
