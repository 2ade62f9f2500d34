#include <string>
#include <vector>

#include "JSON/JSONFromValue.h"
#include "QELModels/Categories/UIColor+QELUtils.h"
#include "tool/Options.h"

namespace QELModels::tool {

namespace {

ExitStatus run(const std::vector<std::string>& arguments, Session& session) {
    if (arguments.empty()) throw UsageError("HEX is required");
    for (const std::string& text : arguments) {
        const auto color = QELUtils::colorFromRGBHexString(text);
        session.output.write(jsonFromValue(color ? Value(*color) : Value()) + '\n');
    }
    return ExitStatus::success;
}

}  // namespace

void addColorCommand(CommandLine& commandLine) {
    commandLine.addPlain("color", "HEX...", "Colours such as \"#1B3A4B\", one JSON value a line", run);
}

}  // namespace QELModels::tool
