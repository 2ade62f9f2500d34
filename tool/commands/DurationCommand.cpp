#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "JSON/JSONWriter.h"
#include "QELModels/Functions/QELDateFormattingFunctions.h"
#include "tool/CommandLine.h"

namespace QELModels::tool {

namespace {

std::string duration(double seconds) {
    std::string text;
    JSONWriter writer(text);
    const auto number = [&writer](std::string_view key, std::int64_t value) {
        writer.key(key);
        writer.number(value);
    };
    const auto string = [&writer](std::string_view key, const std::string& value) {
        writer.key(key);
        writer.string(value);
    };
    const QELTimeDifference parts = QELTimeDifferenceFromSeconds(seconds);
    writer.beginDictionary();
    number("days", parts.days);
    number("hours", parts.hours);
    number("minutes", parts.minutes);
    number("seconds", parts.seconds);
    string("countdown", NSStringRepresentingTimeLeftUntilLive(seconds));
    string("named", NSStringWithNamedSeparatorsFromMovieDuration(seconds));
    string("clock", NSStringFromMovieDuration(seconds));
    writer.endDictionary();
    return text;
}

ExitStatus run(const std::vector<std::string>& arguments, Output& output) {
    if (arguments.empty()) throw UsageError("SECONDS is required");
    // Nothing is written unless all of it can be.
    std::string lines;
    for (const std::string& argument : arguments)
        lines += duration(numberFrom(argument)) + '\n';
    output.write(lines);
    return ExitStatus::success;
}

}  // namespace

void addDurationCommand(CommandLine& commandLine) {
    commandLine.addPlain(
        "duration", "SECONDS...", "Durations as parts, countdown and texts, one JSON object a line", run);
}

}  // namespace QELModels::tool
