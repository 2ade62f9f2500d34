#pragma once

#include <optional>

#include "QELModels/Platform/Export.h"
#include "QELModels/Values/Number.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// One size and quality that the image server delivers. Sizes are in pixels and whole numbers; any of the
/// three may be null. There is no equality on purpose: two configurations are the same only if they are one
/// object, so compare their addresses.
class QELMODELS_EXPORT QELKavoConfiguration {
public:
    /// A configuration of these values.
    static constexpr QELKavoConfiguration configurationWithWidth(std::optional<Number> width,
                                                                 std::optional<Number> height,
                                                                 std::optional<Number> quality) noexcept {
        return {width, height, quality};
    }

    /// The same.
    constexpr QELKavoConfiguration(std::optional<Number> width, std::optional<Number> height,
                                   std::optional<Number> quality) noexcept
        : width_(width), height_(height), quality_(quality) {}

    /// The width that the server is asked for; 0 where the server is to choose it.
    constexpr std::optional<Number> width() const noexcept { return width_; }
    constexpr void setWidth(std::optional<Number> width) noexcept { width_ = width; }

    /// The height that the server is asked for; 0 where the server is to choose it.
    constexpr std::optional<Number> height() const noexcept { return height_; }
    constexpr void setHeight(std::optional<Number> height) noexcept { height_ = height; }

    /// The image's quality, 50 or 80 in the size tables.
    constexpr std::optional<Number> quality() const noexcept { return quality_; }
    constexpr void setQuality(std::optional<Number> quality) noexcept { quality_ = quality; }

private:
    std::optional<Number> width_;
    std::optional<Number> height_;
    std::optional<Number> quality_;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
