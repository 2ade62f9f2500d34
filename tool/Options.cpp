#include "tool/Options.h"

#include <fast_float/fast_float.h>
#include <fmt/format.h>
#include <CLI/CLI.hpp>

#include <cmath>
#include <system_error>
#include <utility>

#include "QELModels/Process/Clock.h"
#include "QELModels/Process/MainScreen.h"
#include "QELModels/Values/Date.h"
#include "tool/ExitStatus.h"
#include "tool/Input.h"

namespace QELModels::tool {

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

void addOptional(CLI::App& command, std::string name, std::string type, std::optional<std::string>& text,
                 std::string description) {
    // A function, since the parser would ignore an empty text.
    const auto take = [&text](const std::string& given) { text = given; };
    command.add_option_function<std::string>(std::move(name), take, std::move(description))
        ->type_name(std::move(type));
}

void addRepeated(CLI::App& command, std::string name, std::string type, Required required,
                 std::vector<std::string>& texts, std::string description) {
    command.add_option(std::move(name), texts, std::move(description))
        ->type_name(std::move(type))
        ->required(required == Required::yes);
}

void addCount(CLI::App& command, std::string name, std::optional<std::size_t>& count, std::size_t most,
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
    const auto [read, error] = fast_float::from_chars(text.data(), end, number);
    if (error != std::errc() || read != end) return std::nullopt;
    // Only newer versions report a number that is out of range. All store an infinity or zero for it.
    const std::string_view significand = text.substr(0, text.find_first_of("eE"));
    const bool hasValue = significand.find_first_of("123456789") != std::string_view::npos;
    if (hasValue && (std::isinf(number) || number == 0)) return std::nullopt;
    return number;
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
