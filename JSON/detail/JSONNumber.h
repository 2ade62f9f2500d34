#pragma once

#include <cstdint>

#include "QELModels/Platform/Export.h"
#include "QELModels/Values/Number.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

enum class NumberOutcome : std::uint8_t { read, malformed, tooLarge };

/// Reads the number at `at`, moves `at` past it, and does not look at what follows. Requires: after the text
/// is a byte that cannot belong to a number. Unless the outcome is `read`, `at` is left as it is.
NumberOutcome readNumber(const char*& at, Number& number) noexcept;

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
