#pragma once

#include "QELModels/Platform/Export.h"
#include "tool/Output.h"
#include "tool/audit/Audit.h"

namespace QELModels::tool {

/// Writes an audit for people at a terminal: problems first, with an example place for everything.
void writeAuditTable(const Audit& audit, bool isColored, Output& output);

}  // namespace QELModels::tool
