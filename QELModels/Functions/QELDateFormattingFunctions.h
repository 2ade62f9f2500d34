#pragma once

#include <cstdint>
#include <string>

#include "QELModels/Platform/Export.h"

/// @file
/// Durations and countdowns as text. Every argument is in seconds, not milliseconds, and is truncated toward
/// zero. What exceeds 64 bits counts as the nearest 64-bit number, and NaN as 0.
///
/// A number is written with two digits or more. A negative one is not clamped: it is written as the unsigned
/// 64-bit number of the same bits (-1 as 18446744073709551615), so a countdown has to end at zero.

namespace QELModels {
inline namespace QELMODELS_ABI {

/// A number of seconds broken into parts, each truncated toward zero: for a negative time every part is
/// negative or 0.
struct QELTimeDifference {
    std::int64_t days = 0;
    std::int64_t hours = 0;    ///< without the days, up to 23
    std::int64_t minutes = 0;  ///< without the hours, up to 59
    std::int64_t seconds = 0;  ///< without the minutes, up to 59

    friend bool operator==(const QELTimeDifference&, const QELTimeDifference&) = default;
};

/// The days, hours, minutes and seconds in a time.
QELMODELS_EXPORT QELTimeDifference QELTimeDifferenceFromSeconds(double seconds) noexcept;

/// A countdown in Norwegian, from the largest part that is not 0 down to the seconds:
/// "02 dager, 01 time, 01 min og 01 sek", "01 time, 00 minutter og 05 sekunder", "05 sekunder".
QELMODELS_EXPORT std::string NSStringRepresentingTimeLeftUntilLive(double seconds);

/// A duration as "01h02m03s", or "02m03s" where the hours are 0. Days are left out: 25 hours are "01h00m00s".
QELMODELS_EXPORT std::string NSStringWithNamedSeparatorsFromMovieDuration(double seconds);

/// A duration as "01:02:03", or "02:03" where the hours are 0. Days are left out: 25 hours are "01:00:00".
QELMODELS_EXPORT std::string NSStringFromMovieDuration(double seconds);

}  // namespace QELMODELS_ABI
}  // namespace QELModels
