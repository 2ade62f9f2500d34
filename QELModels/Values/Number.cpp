#include "QELModels/Values/Number.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdlib>
#include <string_view>

namespace QELModels {
inline namespace QELMODELS_ABI {

namespace {

// The bounds of fixed notation: digits before the point, and zeros after it.
constexpr int kMaxIntegerDigits = 21;
constexpr int kMaxLeadingZeros = 6;

char* put(char* to, std::string_view text) noexcept {
    return to + text.copy(to, text.size());
}

char* putZeros(char* to, int count) noexcept {
    for (int i = 0; i < count; ++i)
        *to++ = '0';
    return to;
}

// The shortest digits that read back as the number, which is 0.DIGITS times ten to the power of `point`.
struct Decimal {
    std::array<char, 17> digits;  // no double needs more
    int count = 0;
    int point = 0;

    std::string_view from(int first, int last) const noexcept {
        return {digits.data() + first, static_cast<std::size_t>(last - first)};
    }
};

Decimal decimalOf(double magnitude) noexcept {
    // The scientific format, "d.ddde-xxx": the fixed one adds digits that mean nothing.
    std::array<char, 32> buffer;
    char* const begin = buffer.data();
    const char* const end =
        std::to_chars(begin, begin + buffer.size(), magnitude, std::chars_format::scientific).ptr;
    Decimal decimal;
    const char* p = begin;
    for (; *p != 'e'; ++p) {
        if (*p != '.') decimal.digits[static_cast<std::size_t>(decimal.count++)] = *p;
    }
    // The exponent always has a sign, of which from_chars reads only "-".
    p += p[1] == '+' ? 2 : 1;
    int exponent = 0;
    std::from_chars(p, end, exponent);
    decimal.point = exponent + 1;
    return decimal;
}

char* putReal(char* to, double value) noexcept {
    if (std::isnan(value)) return put(to, "NaN");
    if (value < 0) *to++ = '-';
    if (std::isinf(value)) return put(to, "Infinity");

    const Decimal decimal = decimalOf(std::fabs(value));
    const int count = decimal.count;
    const int point = decimal.point;
    if (point > 0 && point <= kMaxIntegerDigits) {
        if (count <= point) return putZeros(put(to, decimal.from(0, count)), point - count);
        to = put(put(to, decimal.from(0, point)), ".");
        return put(to, decimal.from(point, count));
    }
    if (point > -kMaxLeadingZeros && point <= 0) {
        return put(putZeros(put(to, "0."), -point), decimal.from(0, count));
    }
    to = put(to, decimal.from(0, 1));
    if (count > 1) to = put(put(to, "."), decimal.from(1, count));
    const int exponent = point - 1;
    to = put(to, exponent < 0 ? "e-" : "e+");
    constexpr int kMaxExponentDigits = 3;
    return std::to_chars(to, to + kMaxExponentDigits, std::abs(exponent)).ptr;
}

}  // namespace

std::string Number::toString() const {
    std::array<char, kMaxChars> text;
    return {text.data(), toChars(text.data())};
}

std::size_t Number::toChars(char* to) const noexcept {
    const char* const end = origin_ == Origin::real ? putReal(to, real())
                            : isBeyondInt64()       ? std::to_chars(to, to + kMaxChars, bits_).ptr
                                                    : std::to_chars(to, to + kMaxChars, integer()).ptr;
    return static_cast<std::size_t>(end - to);
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
