#pragma once

#include <span>

#include "QELModels/Categories/QELKavoConfiguration.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Values/Size.h"
#include "QELModels/Values/URL.h"

/// @file
/// The URL of an image at the size of the view that shows it. Documents name an image without a size; the
/// server delivers it in the sizes of three closed tables, named in the URL's query:
///
///     MainScreen::setScale(2.0);
///     QELKavoHelper::getURLWithSize(url, {300, 169});  // url, then "?t[]=602x338q50"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// A size in points as one in pixels: times the main screen's scale, then times `scale`. Nothing is rounded.
QELMODELS_EXPORT Size QELApplyScaleToSize(Size size, double scale) noexcept;

/// Addresses of images in the size in which they are shown.
namespace QELKavoHelper {

/// The image at a width and a height that both cover `size`, in points. `scale` multiplies the screen's own.
/// The query is appended to whatever the URL has, even to another query.
QELMODELS_EXPORT URL getURLWithSize(URLView url, Size size, double scale = 1.0);

/// As `getURLWithSize`, but only the height counts: the server chooses the width.
QELMODELS_EXPORT URL getAutoWidthURLWithSize(URLView url, Size size, double scale = 1.0);

/// As `getURLWithSize`, but only the width counts: the server chooses the height.
QELMODELS_EXPORT URL getAutoHeightURLWithSize(URLView url, Size size, double scale = 1.0);

/// The first of `fixedImageSizes` that is neither narrower nor lower than a size in pixels, else the last.
/// That is the narrowest that covers it, and of that width the lowest; neither area nor shape counts. An
/// infinite dimension or one that is NaN is covered by none; one of 0 or less by all. The three choices lend
/// entries of their tables, so an entry can be told by its address.
QELMODELS_EXPORT const QELKavoConfiguration& configurationForSize(Size pixels) noexcept;

/// The first of `autoWidthImageSizes` that is not lower than a size in pixels, else the last.
QELMODELS_EXPORT const QELKavoConfiguration& autoWidthConfigurationForSize(Size pixels) noexcept;

/// The first of `autoHeightImageSizes` that is not narrower than a size in pixels, else the last.
QELMODELS_EXPORT const QELKavoConfiguration& autoHeightConfigurationForSize(Size pixels) noexcept;

/// The sizes that name width and height, by width, then height, then quality.
QELMODELS_EXPORT std::span<const QELKavoConfiguration> fixedImageSizes() noexcept;

/// The sizes that name the height only, by height. Their width is 0.
QELMODELS_EXPORT std::span<const QELKavoConfiguration> autoWidthImageSizes() noexcept;

/// The sizes that name the width only, by width. Their height is 0.
QELMODELS_EXPORT std::span<const QELKavoConfiguration> autoHeightImageSizes() noexcept;

}  // namespace QELKavoHelper
}  // namespace QELMODELS_ABI
}  // namespace QELModels
