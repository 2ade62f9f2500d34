#pragma once

#include <string_view>

#include "JSON/JSONWriter.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Values/Number.h"

namespace QELModels::tool {

/// Writes a member of a dictionary: its key, and a string.
inline void writeMember(JSONWriter& writer, std::string_view key, std::string_view text) {
    writer.key(key);
    writer.string(text);
}
/// Writes a member of a dictionary: its key, and a number.
inline void writeMember(JSONWriter& writer, std::string_view key, Number number) {
    writer.key(key);
    writer.number(number);
}

}  // namespace QELModels::tool
