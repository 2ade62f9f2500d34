#pragma once

#include <cstddef>
#include <string_view>

#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// A dot-joined key path, taken apart at its first dot. Every text is a key path; an empty one is one empty
/// key. To go through all keys:
///
///     for (KeyPath keys(path);; keys = KeyPath(keys.rest)) {
///         use(keys.first);
///         if (keys.isLast()) break;
///     }
struct KeyPath {
    constexpr explicit KeyPath(std::string_view path) noexcept {
        const std::size_t dot = path.find('.');
        first = path.substr(0, dot);
        if (dot != std::string_view::npos) rest = path.substr(dot + 1);
    }

    /// Whether no key follows the first one.
    constexpr bool isLast() const noexcept { return rest.data() == nullptr; }

    std::string_view first;  ///< the first key
    std::string_view rest;   ///< the key path after it; null data where there is none
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
