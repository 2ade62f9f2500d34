#pragma once

#include "QELModels/Platform/Export.h"

/// @file
/// Classes of ASCII characters. They depend on no locale, and bytes beyond ASCII belong to none of them.

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

/// U+0009 to U+000D and U+0020.
constexpr bool isWhiteSpace(char c) noexcept {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

constexpr bool isDigit(char c) noexcept {
    return c >= '0' && c <= '9';
}

constexpr bool isLetter(char c) noexcept {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

/// What `hexDigitValue` answers for all other characters: not below any base.
inline constexpr unsigned kNoHexDigit = 16;

/// The value of a hexadecimal digit of either case, which is that of a decimal digit, too.
constexpr unsigned hexDigitValue(char c) noexcept {
    if (isDigit(c)) return static_cast<unsigned>(c - '0');
    if (c >= 'a' && c <= 'f') return static_cast<unsigned>(c - 'a') + 10;
    if (c >= 'A' && c <= 'F') return static_cast<unsigned>(c - 'A') + 10;
    return kNoHexDigit;
}

constexpr bool isHexDigit(char c) noexcept {
    return hexDigitValue(c) != kNoHexDigit;
}

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
