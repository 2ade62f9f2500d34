#include <optional>
#include <string>

#include "JSON/JSONFromValue.h"
#include "tool/Answers.h"
#include "tool/Kinds.h"
#include "tool/Options.h"

namespace QELModels::tool {

namespace {

struct Options {
    std::string kind;
    std::string file;
    bool isCompact = false;
    bool isLines = false;
    std::optional<std::string> keyPath;
};

void declare(CLI::App& command, Options& options) {
    addKind(command, options.kind, "What the document is: " + kindNames());
    addFile(command, options.file);
    addFlag(command, "--compact", options.isCompact, "Without line breaks and blanks");
    addFlag(command, "--lines", options.isLines, "Every line of FILE is a document of its own");
    addKeyPath(command, options.keyPath);
}

ExitStatus run(const Options& options, Session& session) {
    const Kind& kind = kindNamed(options.kind);
    const std::string keyPath = keyPathFor(kind, options.keyPath);
    const Answer answer = [&](RepresentationView document, JSONWriter& writer) {
        writeJSON(writer, kind.map(document, keyPath, {}));
    };
    if (options.isLines) return answerLines(session, options.file, answer);
    const auto layout = options.isCompact ? JSONWriter::Layout::compact : JSONWriter::Layout::indented;
    return answerDocument(session, options.file, layout, answer);
}

}  // namespace

void addMapCommand(CommandLine& commandLine) {
    commandLine.add<Options>("map",
                             "KIND [FILE] [--compact] [--lines] [--key-path PATH]",
                             "The mapped model as JSON",
                             declare,
                             run);
}

}  // namespace QELModels::tool
