#pragma once

#include <string>

#include "QELModels/Platform/Export.h"
#include "tool/Kinds.h"

namespace QELModels::tool {

/// A JSON Schema (2020-12), as JSON text, of what the mapping of a kind reads: every key with the kinds of
/// values that have a use and the property that it fills as `title`. Null and other keys are allowed
/// anywhere, and nothing is required, as in the mapping itself.
std::string schemaOf(const Kind& kind);

}  // namespace QELModels::tool
