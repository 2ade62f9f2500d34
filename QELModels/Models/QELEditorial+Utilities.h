#pragma once

#include <cstdint>

#include "QELModels/Models/QELEditorial.h"
#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// @defgroup editorialFacts Facts of a curated list
/// @{

/// The category that the list belongs to, read from its key: every "category-" is taken out, and the rest is
/// read as a decimal integer, as far as it is one; 0 when it does not begin with a digit. -1 when the key
/// names no category.
QELMODELS_EXPORT std::int64_t categoryIdentifier(const QELEditorial& editorial) noexcept;

/// @}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
