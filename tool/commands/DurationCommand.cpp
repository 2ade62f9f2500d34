#include <string>
#include <vector>

#include "JSON/JSONWriter.h"
#include "QELModels/Functions/QELDateFormattingFunctions.h"
#include "tool/Members.h"
#include "tool/Options.h"

namespace QELModels::tool {

namespace {

std::string duration(double seconds) {
    std::string text;
    JSONWriter writer(text);
    const QELTimeDifference parts = QELTimeDifferenceFromSeconds(seconds);
    writer.beginDictionary();
    writeMember(writer, "days", parts.days);
    writeMember(writer, "hours", parts.hours);
    writeMember(writer, "minutes", parts.minutes);
    writeMember(writer, "seconds", parts.seconds);
    writeMember(writer, "countdown", NSStringRepresentingTimeLeftUntilLive(seconds));
    writeMember(writer, "named", NSStringWithNamedSeparatorsFromMovieDuration(seconds));
    writeMember(writer, "clock", NSStringFromMovieDuration(seconds));
    writer.endDictionary();
    return text;
}

ExitStatus run(const std::vector<std::string>& arguments, Session& session) {
    if (arguments.empty()) throw UsageError("SECONDS is required");
    // Nothing is written unless all of it can be.
    std::string lines;
    for (const std::string& argument : arguments)
        lines += duration(numberFrom(argument)) + '\n';
    session.output.write(lines);
    return ExitStatus::success;
}

}  // namespace

void addDurationCommand(CommandLine& commandLine) {
    commandLine.addPlain(
        "duration", "SECONDS...", "Durations as parts, countdown and texts, one JSON object a line", run);
}

}  // namespace QELModels::tool
