#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "QELModels/Platform/Export.h"
#include "QELModels/Values/Size.h"
#include "tool/CommandLine.h"

/// @file
/// The arguments and options that commands declare, and what their values mean.

namespace QELModels::tool {

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
void addOptional(CLI::App& command, std::string name, std::string type, std::optional<std::string>& text,
                 std::string description);
/// An argument or an option with any number of values; when it is required, at least one.
enum class Required { no, yes };
void addRepeated(CLI::App& command, std::string name, std::string type, Required required,
                 std::vector<std::string>& texts, std::string description);
/// An option with a number from 1 to `most`, which stays null unless it is given.
void addCount(CLI::App& command, std::string name, std::optional<std::size_t>& count, std::size_t most,
              std::string description);
/// What the help says below a command's options.
void addClosingWords(CLI::App& command, std::string words);
/// The option `--at EPOCH`, for `setCurrentTime`.
void addCurrentTime(CLI::App& command, std::optional<std::string>& time);
/// Fixes the current time for everything that follows; throws `UsageError` when it is not a date.
void setCurrentTime(const std::optional<std::string>& time);
/// The option `--screen-scale S`, for `setScreenScale`.
void addScreenScale(CLI::App& command, std::optional<std::string>& scale);
/// Sets the main screen's scale for everything that follows; throws `UsageError` when it is not a number.
void setScreenScale(const std::optional<std::string>& scale);

/// The number that is the whole text, if it is one. Negative numbers, `nan` and `inf` are accepted.
std::optional<double> numberIn(std::string_view text);
/// The size that a text such as "320x180" is, if it is one.
std::optional<Size> sizeIn(std::string_view text);
/// The same; these throw `UsageError` when the text is something else.
double numberFrom(std::string_view text);
Size sizeFrom(std::string_view text);

}  // namespace QELModels::tool
