#pragma once

#include <cstdint>

#include "QELModels/Platform/Export.h"
#include "QELModels/Values/Number.h"

// The reader's own; applications have no use for it.
namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

enum class NumberOutcome : std::uint8_t { read, malformed, tooLarge };

/// Reads the number at `at`, moves `at` behind it, and does not look at what follows. Some byte that cannot
/// belong to a number stands behind the text. Unless the outcome is `read`, `at` stays where it is.
NumberOutcome readNumber(const char*& at, Number& number) noexcept;

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
