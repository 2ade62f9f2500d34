#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "QELModels/Platform/Export.h"

namespace QELModels::tool {

/// One character of any text, as a terminal may show it.
struct Character {
    std::string text;       ///< control characters and what is not UTF-8 are shown as visible signs
    std::size_t width = 0;  ///< columns that it takes: 0, 1 or 2
    std::size_t bytes = 0;  ///< of the original
};

/// The first character of a text that is not empty.
Character firstCharacter(std::string_view text);

/// A text that a terminal can show on one line: blanks for line breaks and tabs, signs for what cannot be
/// shown.
struct Shown {
    std::string text;
    std::size_t width = 0;  ///< in columns
};
/// As many columns as a text needs.
inline constexpr std::size_t kUncut = static_cast<std::size_t>(-1);
/// A text cut to `columns`, with "..." at its end where something was cut off.
Shown shown(std::string_view text, std::size_t columns);

/// How a text looks on a terminal.
enum class Style { plain, bold, faint, cyan, yellow, red, alarm };
/// A text in a style, or as it is where there are no colours.
std::string styled(std::string_view text, Style style, bool isColored);

/// The line of `text` around the byte at `offset`, cut to fit a terminal, and below it a caret under that
/// byte.
std::string excerpt(std::string_view text, std::size_t offset);

}  // namespace QELModels::tool
