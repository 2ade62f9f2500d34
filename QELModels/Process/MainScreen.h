#pragma once

#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// The screen that images are chosen for.
///
/// Usable before the first static initialiser and until the process ends.
namespace MainScreen {

/// Pixels per point; 1 unless set.
QELMODELS_EXPORT double scale() noexcept;

/// Sets the pixels per point, for all threads.
QELMODELS_EXPORT void setScale(double scale) noexcept;

}  // namespace MainScreen
}  // namespace QELMODELS_ABI
}  // namespace QELModels
