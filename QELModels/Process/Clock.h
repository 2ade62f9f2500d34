#pragma once

#include <functional>

#include "QELModels/Platform/Export.h"
#include "QELModels/Values/Date.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// The time for all functions of the library.
///
/// Usable before the first static initialiser and until the process ends.
namespace Clock {

/// The time now, from the source if one is set, else from the system's clock. What a source throws reaches
/// the caller.
QELMODELS_EXPORT Date now();

/// Replaces the system's clock by `source`; an empty one restores it. May be called at any time and from any
/// thread; calls of the former source that have begun end with it. `source` is called on the threads that ask
/// for the time, concurrently.
QELMODELS_EXPORT void setSource(std::function<Date()> source);

}  // namespace Clock
}  // namespace QELMODELS_ABI
}  // namespace QELModels
