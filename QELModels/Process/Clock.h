#pragma once

#include <functional>

#include "QELModels/Platform/Export.h"
#include "QELModels/Values/Date.h"

/// The time that everything in the library goes by.
///
/// Ready before the first static initialiser and until the process ends.
namespace QELModels {
inline namespace QELMODELS_ABI {
namespace Clock {

/// The time now: what the source says, or else the system's clock. What a source throws goes to the caller.
QELMODELS_EXPORT Date now();

/// Puts `source` in the place of the system's clock; an empty one gives the system's clock back. At any time
/// and from any thread; calls of the former source that are under way finish with it. `source` is called on
/// whatever threads ask for the time, at once if they do.
QELMODELS_EXPORT void setSource(std::function<Date()> source);

}  // namespace Clock
}  // namespace QELMODELS_ABI
}  // namespace QELModels
