#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "QELModels/Platform/Export.h"
#include "QELModels/Records/MappingFault.h"

namespace QELModels::tool {

/// A message about a place in a text, with the text's line around it: `name:line:column: reason`.
std::string messageAt(std::string_view name, std::uint64_t line, std::size_t column, std::string_view reason,
                      std::string_view text, std::size_t offset);

/// A message about a value that a mapping does not accept: `place: /pointer: reason`, without a pointer for a
/// fault that no document caused.
std::string faultMessage(std::string_view place, const MappingFault& fault);

}  // namespace QELModels::tool
