#pragma once

// The doubles that are no usual number.

#include <limits>

namespace QELModels::test {

inline constexpr double kInfinity = std::numeric_limits<double>::infinity();
inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

}  // namespace QELModels::test
