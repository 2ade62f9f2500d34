#include "JSON/detail/JSONNumber.h"

#include <fast_float/fast_float.h>

#include <algorithm>
#include <array>
#include <cfloat>
#include <charconv>
#include <cmath>
#include <limits>
#include <optional>
#include <system_error>

#include "QELModels/Platform/detail/ASCII.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

namespace {

// The powers of ten that a double holds exactly, and the largest mantissa below which it holds every integer.
constexpr std::array<double, 23> kExactPowers = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                 1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                                 1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
constexpr std::int64_t kMostExactPower = kExactPowers.size() - 1;
constexpr std::uint64_t kMostExactInteger = std::uint64_t{1} << DBL_MANT_DIG;
// How many digits fit into 64 bits, whatever they are.
constexpr std::int64_t kMostMantissaDigits = std::numeric_limits<std::uint64_t>::digits10;
// Far beyond what the digits of a document of 4 GB can make up for.
constexpr std::int64_t kMostExponent = 1'000'000'000'000;

// A number taken apart by the grammar. Its value is `mantissa` times ten to the power of `exponent`, if the
// mantissa holds all digits.
struct Parts {
    const char* begin;
    const char* end;
    bool isNegative = false;
    bool isInteger = true;
    std::uint64_t mantissa = 0;
    std::int64_t digits = 0;    // from the first that is not 0
    std::int64_t exponent = 0;  // of the last digit's place
};

// Takes in the digits at `at`, of which there has to be one.
bool readDigits(const char*& at, Parts& parts) noexcept {
    const char* const first = at;
    for (; isDigit(*at); ++at) {
        if (parts.digits != 0 || *at != '0') ++parts.digits;
        if (parts.digits <= kMostMantissaDigits)
            parts.mantissa = parts.mantissa * 10 + static_cast<std::uint64_t>(*at - '0');
    }
    return at != first;
}

bool readExponent(const char*& at, Parts& parts) noexcept {
    const bool isNegative = *at == '-';
    if (*at == '-' || *at == '+') ++at;
    const char* const first = at;
    std::int64_t exponent = 0;
    for (; isDigit(*at); ++at)
        exponent = std::min(exponent * 10 + (*at - '0'), kMostExponent);
    parts.exponent += isNegative ? -exponent : exponent;
    return at != first;
}

std::optional<Parts> takenApart(const char* at) noexcept {
    Parts parts{.begin = at, .end = at};
    parts.isNegative = *at == '-';
    if (parts.isNegative) ++at;
    const char* const first = at;
    if (!readDigits(at, parts)) return std::nullopt;
    if (*first == '0' && at - first > 1) return std::nullopt;
    if (*at == '.') {
        parts.isInteger = false;
        const char* const point = at++;
        if (!readDigits(at, parts)) return std::nullopt;
        parts.exponent -= at - point - 1;
    }
    if (*at == 'e' || *at == 'E') {
        parts.isInteger = false;
        if (!readExponent(++at, parts)) return std::nullopt;
    }
    parts.end = at;
    return parts;
}

// The value as a 64-bit integer, if it is one.
std::optional<Number> integer(const Parts& parts) noexcept {
    if (!parts.isInteger) return std::nullopt;
    if (std::int64_t value = 0; std::from_chars(parts.begin, parts.end, value).ec == std::errc())
        return Number(value);
    if (std::uint64_t value = 0; std::from_chars(parts.begin, parts.end, value).ec == std::errc())
        return Number(value);
    return std::nullopt;
}

// The nearest double; an infinity for what is too large.
double real(const Parts& parts) noexcept {
    // One rounded operation on exact operands rounds correctly, unless doubles are calculated in wider
    // registers.
    if (FLT_EVAL_METHOD == 0 && parts.digits <= kMostMantissaDigits && parts.mantissa <= kMostExactInteger &&
        std::abs(parts.exponent) <= kMostExactPower) {
        const auto mantissa = static_cast<double>(parts.mantissa);
        const double power = kExactPowers[static_cast<std::size_t>(std::abs(parts.exponent))];
        const double value = parts.exponent < 0 ? mantissa / power : mantissa * power;
        return parts.isNegative ? -value : value;
    }
    // Not every standard library reads doubles. Whatever is answered, and older versions answer nothing else
    // for what is out of range, the value is the nearest: an infinity or zero.
    double value = 0;
    fast_float::from_chars(parts.begin, parts.end, value);
    return value;
}

}  // namespace

NumberOutcome readNumber(const char*& at, Number& number) noexcept {
    const std::optional<Parts> parts = takenApart(at);
    if (!parts) return NumberOutcome::malformed;
    if (const std::optional<Number> value = integer(*parts)) {
        number = *value;
    } else {
        const double nearest = real(*parts);
        if (std::isinf(nearest)) return NumberOutcome::tooLarge;
        number = Number(nearest);
    }
    at = parts->end;
    return NumberOutcome::read;
}

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
