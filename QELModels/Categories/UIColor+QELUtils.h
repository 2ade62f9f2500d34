#pragma once

#include <optional>
#include <string_view>

#include "QELModels/Platform/Export.h"
#include "QELModels/Values/Color.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
/// Colours as the content API writes them.
namespace QELUtils {

/// The opaque colour of a text such as `#RRGGBB`; null unless the text has exactly seven UTF-16 code units.
///
/// Reading is as lenient as formatted input with `#%2x%2x%2x`: each part is optional white space and one or
/// two hexadecimal digits of either case. The first character that does not fit ends the reading, and what
/// was not read is 0: `#12 345` is 0x12, 0x34, 0x05, and `1234567` is black.
QELMODELS_EXPORT std::optional<Color> colorFromRGBHexString(std::string_view text) noexcept;

}  // namespace QELUtils
}  // namespace QELMODELS_ABI
}  // namespace QELModels
