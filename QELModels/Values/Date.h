#pragma once

#include <chrono>

#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// An absolute time: seconds since 1970-01-01 00:00:00 UTC, leap seconds not counted, fractions kept.
using Date = std::chrono::sys_time<std::chrono::duration<double>>;

/// The date this many seconds after 1970-01-01 00:00:00 UTC, before it if negative. Nothing is scaled or
/// rounded.
constexpr Date dateFromSecondsSince1970(double seconds) noexcept {
    return Date(std::chrono::duration<double>(seconds));
}

/// The seconds from 1970-01-01 00:00:00 UTC to `date`.
constexpr double secondsSince1970(Date date) noexcept {
    return date.time_since_epoch().count();
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
