#include "QELModels/Categories/UIColor+QELUtils.h"

#include <cstddef>

#include "QELModels/Platform/detail/ASCII.h"
#include "QELModels/Values/Text.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace QELUtils {

namespace {

constexpr std::size_t kLength = 7;  // of "#RRGGBB", in UTF-16 code units
constexpr std::size_t kDigitsOfPart = 2;
constexpr double kMaxPart = 255.0;

// Removes white space and up to two digits from the front of `text` and answers their number, 0 without
// digits. Another character stays in front, so that the later parts are 0, too. Neither a sign nor "0x" is
// part of a number here.
unsigned takePart(std::string_view& text) noexcept {
    while (!text.empty() && detail::isWhiteSpace(text.front()))
        text.remove_prefix(1);
    unsigned part = 0;
    for (std::size_t i = 0; i < kDigitsOfPart && !text.empty(); ++i) {
        const unsigned digit = detail::hexDigitValue(text.front());
        if (digit == detail::kNoHexDigit) break;
        part = part * 16 + digit;
        text.remove_prefix(1);
    }
    return part;
}

}  // namespace

std::optional<Color> colorFromRGBHexString(std::string_view text) noexcept {
    if (Text::codeUnitCount(text) != kLength) return std::nullopt;
    if (text.front() != '#') return Color{0, 0, 0, 1};
    text.remove_prefix(1);
    const double red = takePart(text) / kMaxPart;
    const double green = takePart(text) / kMaxPart;
    const double blue = takePart(text) / kMaxPart;
    return Color{red, green, blue, 1};
}

}  // namespace QELUtils
}  // namespace QELMODELS_ABI
}  // namespace QELModels
