#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>

#include "QELModels/Platform/Export.h"
#include "QELModels/Platform/detail/Hash.h"
#include "QELModels/Values/Number.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// A colour by its red, green and blue parts and its opacity, each from 0 to 1.
struct Color {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;

    friend constexpr bool operator==(const Color&, const Color&) = default;

    /// Equal colours have equal hashes.
    constexpr std::uint64_t hash() const noexcept {
        std::uint64_t h = Number(red).hash();
        h = detail::hashCombine(h, Number(green).hash());
        h = detail::hashCombine(h, Number(blue).hash());
        return detail::hashCombine(h, Number(alpha).hash());
    }
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels

template <>
struct std::hash<QELModels::Color> {
    std::size_t operator()(const QELModels::Color& color) const noexcept {
        return static_cast<std::size_t>(color.hash());
    }
};
