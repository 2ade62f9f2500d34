#pragma once

#include <bit>
#include <compare>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <type_traits>

#include "QELModels/Platform/Export.h"
#include "QELModels/Platform/detail/Hash.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

namespace detail {
struct NumberBits;
}

/// An integer type that a `Number` can be made of: one for numbers, not for characters or truth values.
template <typename T>
concept NumberInteger = std::integral<T> && sizeof(T) <= sizeof(std::uint64_t) &&
                        !std::same_as<std::remove_cv_t<T>, bool> &&
                        !std::same_as<std::remove_cv_t<T>, char> &&
                        !std::same_as<std::remove_cv_t<T>, wchar_t> &&
                        !std::same_as<std::remove_cv_t<T>, char8_t> &&
                        !std::same_as<std::remove_cv_t<T>, char16_t> &&
                        !std::same_as<std::remove_cv_t<T>, char32_t>;

/// A number of a document: a 64-bit integer, signed or unsigned, a double, or a boolean, which counts as 1 or
/// 0 and remembers what it was.
///
/// Numbers compare and hash by their exact mathematical value, whatever they were made of: 1, 1.0 and true
/// are equal, -0.0 and 0 are, while 2^53 + 1 is not 2^53 as a double. A NaN is equal to nothing, itself
/// included.
class QELMODELS_EXPORT Number {
public:
    /// What a number was made of.
    enum class Origin : std::uint8_t { int64, uint64, real, boolean };

    /// How many characters the longest text of a number has.
    static constexpr std::size_t kMaxChars = 25;

    /// The integer 0.
    constexpr Number() noexcept = default;

    // Each constructor takes its own types only, so that a pointer is not converted to a boolean.
    /// A boolean, an integer of any width, or a double.
    template <std::same_as<bool> T>
    constexpr Number(T value) noexcept : bits_(value), origin_(Origin::boolean) {}
    template <NumberInteger T>
    constexpr Number(T value) noexcept
        : bits_(static_cast<std::uint64_t>(value)),
          origin_(std::is_signed_v<T> ? Origin::int64 : Origin::uint64) {}
    template <std::floating_point T>
    requires(sizeof(T) <= sizeof(double)) constexpr Number(T value) noexcept
        : bits_(std::bit_cast<std::uint64_t>(static_cast<double>(value))), origin_(Origin::real) {}

    /// What it was made of. Equality, order and hash do not depend on it.
    constexpr Origin origin() const noexcept { return origin_; }
    constexpr bool isBoolean() const noexcept { return origin_ == Origin::boolean; }

    /// The nearest double.
    constexpr double doubleValue() const noexcept {
        if (origin_ == Origin::real) return real();
        return isBeyondInt64() ? static_cast<double>(bits_) : static_cast<double>(integer());
    }

    /// The integer part; beyond the range of the type its nearest limit; 0 for a NaN.
    constexpr std::int64_t int64Value() const noexcept {
        if (isBeyondInt64()) return std::numeric_limits<std::int64_t>::max();
        if (origin_ != Origin::real) return integer();
        if (real() >= kTwoTo63) return std::numeric_limits<std::int64_t>::max();
        if (real() < -kTwoTo63) return std::numeric_limits<std::int64_t>::min();
        return real() == real() ? static_cast<std::int64_t>(real()) : 0;
    }

    /// Whether it is not zero; true for a NaN.
    constexpr bool boolValue() const noexcept { return origin_ == Origin::real ? real() != 0 : bits_ != 0; }

    /// The shortest decimal text that reads back as this number, laid out as `Number::toString` of ECMAScript
    /// does: plain digits from 1e-6 up to below 1e21, an exponent elsewhere ("100000", "1e-7", "1e+21").
    /// A boolean is "1" or "0", -0.0 is "0"; the rest are "NaN", "Infinity" and "-Infinity".
    std::string toString() const;

    /// Writes the same text to `to`, which has room for `kMaxChars`, without a zero at its end, and answers
    /// its length.
    std::size_t toChars(char* to) const noexcept;

    /// Equal numbers have equal hashes.
    constexpr std::uint64_t hash() const noexcept {
        // A double that is an integer has the hash of that integer, -0.0 that of 0.
        if (origin_ != Origin::real) return detail::hashOfWord(bits_);
        if (real() >= kTwoTo63 && real() < kTwoTo64)
            return detail::hashOfWord(static_cast<std::uint64_t>(real()));
        if (real() >= -kTwoTo63 && real() < kTwoTo63) {
            const auto truncated = static_cast<std::int64_t>(real());
            if (static_cast<double>(truncated) == real()) {
                return detail::hashOfWord(static_cast<std::uint64_t>(truncated));
            }
        }
        return detail::hashOfWord(bits_);
    }

    friend constexpr bool operator==(Number a, Number b) noexcept { return (a <=> b) == 0; }

    friend constexpr std::partial_ordering operator<=>(Number a, Number b) noexcept {
        if (b.origin_ == Origin::real) return a.comparedToReal(b.real());
        if (a.origin_ == Origin::real) return 0 <=> b.comparedToReal(a.real());
        if (a.isBeyondInt64() || b.isBeyondInt64()) {
            return a.isBeyondInt64() && b.isBeyondInt64() ? a.bits_ <=> b.bits_
                                                          : a.isBeyondInt64() <=> b.isBeyondInt64();
        }
        return a.integer() <=> b.integer();
    }

private:
    friend struct detail::NumberBits;

    static constexpr double kTwoTo63 = 9223372036854775808.0;
    static constexpr double kTwoTo64 = 18446744073709551616.0;

    constexpr bool isBeyondInt64() const noexcept { return origin_ == Origin::uint64 && bits_ >> 63 != 0; }
    constexpr std::int64_t integer() const noexcept { return static_cast<std::int64_t>(bits_); }
    constexpr double real() const noexcept { return std::bit_cast<double>(bits_); }

    constexpr std::partial_ordering comparedToReal(double other) const noexcept {
        if (origin_ == Origin::real) return real() <=> other;
        // Within the range of the integer's type, the double's integer part is exact, and so is its fraction.
        if (other != other) return std::partial_ordering::unordered;
        if (isBeyondInt64()) {
            if (other >= kTwoTo64) return std::partial_ordering::less;
            if (other < kTwoTo63) return std::partial_ordering::greater;
            return bits_ <=> static_cast<std::uint64_t>(other);  // doubles of this size are integers
        }
        if (other >= kTwoTo63) return std::partial_ordering::less;
        if (other < -kTwoTo63) return std::partial_ordering::greater;
        const auto truncated = static_cast<std::int64_t>(other);
        if (integer() != truncated) return integer() <=> truncated;
        return static_cast<double>(truncated) <=> other;
    }

    // An integer in two's complement, 1 or 0 for a boolean, or the bits of a double.
    std::uint64_t bits_ = 0;
    Origin origin_ = Origin::int64;
};

namespace detail {

/// A number in two parts, for storing them apart.
struct NumberBits {
    static constexpr std::uint64_t of(Number number) noexcept { return number.bits_; }
    static constexpr Number number(std::uint64_t bits, Number::Origin origin) noexcept {
        Number number;
        number.bits_ = bits;
        number.origin_ = origin;
        return number;
    }
    /// Whether two numbers are equal or of the same bits, as a NaN is with itself.
    static constexpr bool areSame(Number a, Number b) noexcept {
        return (a.bits_ == b.bits_ && a.origin_ == b.origin_) || a == b;
    }
};

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels

template <>
struct std::hash<QELModels::Number> {
    std::size_t operator()(QELModels::Number number) const noexcept {
        return static_cast<std::size_t>(number.hash());
    }
};
