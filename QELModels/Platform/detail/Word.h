#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

/// Eight bytes of text, the first one in the lowest bits.
using Word = std::uint64_t;

/// The first (at most) eight bytes of a text, the same on every machine; NULs for what is missing.
constexpr Word firstWord(std::string_view text) noexcept {
    Word word = 0;
    for (std::size_t i = text.size() < sizeof word ? text.size() : sizeof word; i-- > 0;)
        word = word << 8 | static_cast<unsigned char>(text[i]);
    return word;
}

/// Masks that keep this many of a word's first bytes.
inline constexpr Word kFirstBytes[] = {0,
                                       0xFF,
                                       0xFFFF,
                                       0xFFFFFF,
                                       0xFFFFFFFF,
                                       0xFFFFFFFFFF,
                                       0xFFFFFFFFFFFF,
                                       0xFFFFFFFFFFFFFF,
                                       0xFFFFFFFFFFFFFFFF};

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
