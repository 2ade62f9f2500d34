#pragma once

#include <string>

#include "QELModels/Platform/Export.h"
#include "tool/audit/Audit.h"

namespace QELModels::tool {

/// An audit as one HTML page that needs nothing else, for people: problems first, fill rates as bars, example
/// places one click away. Its script adds sorting and filtering; without scripts the page shows everything
/// too.
std::string auditPage(const Audit& audit);

}  // namespace QELModels::tool
