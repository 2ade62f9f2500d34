#pragma once

#include <functional>

#include "QELModels/Platform/Date.h"
#include "QELModels/Platform/Export.h"

/// The time that everything in the library goes by.
///
/// Ready before the first static initialiser and until the process ends.
namespace QELModels::inline QELMODELS_ABI::Clock {

/// The time now: what the source says, or else the system's clock. What a source throws goes to the caller.
QELMODELS_EXPORT Date now();

/// Puts `source` in the place of the system's clock; an empty one gives the system's clock back. At any time
/// and from any thread; calls of the former source that are under way finish with it. `source` is called on
/// whatever threads ask for the time, at once if they do.
QELMODELS_EXPORT void setSource(std::function<Date()> source);

}  // namespace QELModels::inline QELMODELS_ABI::Clock
