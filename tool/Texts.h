#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "QELModels/Platform/Export.h"

namespace QELModels::tool {

/// The pieces between separators: one more than there are separators, and any of them may be empty.
std::vector<std::string> split(std::string_view text, char separator);

/// The pieces that are not empty, with a separator between each two of them.
std::string joined(const std::vector<std::string>& pieces, std::string_view separator);

/// A text with a backslash before each of some characters.
std::string backslashed(std::string_view text, std::string_view characters);

}  // namespace QELModels::tool
