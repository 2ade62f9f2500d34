#pragma once

#include <span>
#include <string>
#include <string_view>

#include "Report.h"

namespace QELModels::bench {

/// The figures that have a ratio, as an SVG picture: a group of bars for each document, and one for all
/// questions. Empty if no figure has one. `caption` is its last line.
std::string plotOf(std::span<const Figure> figures, std::string_view caption);

}  // namespace QELModels::bench
