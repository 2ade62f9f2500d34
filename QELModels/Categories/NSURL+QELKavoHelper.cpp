#include "QELModels/Categories/NSURL+QELKavoHelper.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "QELModels/Process/MainScreen.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace {

// The image server's closed lists of sizes: width, height, quality.
// clang-format off

constexpr std::array<QELKavoConfiguration, 7> kAutoHeightTable{{
    {316, 0, 80}, {480, 0, 80}, {652, 0, 80}, {725, 0, 80}, {800, 0, 80}, {1080, 0, 80}, {1205, 0, 80},
}};

// The lower quality of 104 is meant.
constexpr std::array<QELKavoConfiguration, 7> kAutoWidthTable{{
    {0, 50, 80}, {0, 52, 80}, {0, 75, 80}, {0, 100, 80}, {0, 104, 50}, {0, 150, 80}, {0, 360, 80},
}};

// Five sizes are listed twice, the lower quality first, which is the one that is chosen.
constexpr std::array<QELKavoConfiguration, 121> kFixedTable{{
    {  80,   45, 80}, { 102,   57, 80}, { 124,   70, 80}, { 142,   80, 80}, { 160,   90, 50},  // 1-5
    { 160,  160, 80}, { 161,   91, 80}, { 174,   98, 80}, { 182,  103, 80}, { 193,  109, 80},  // 6-10
    { 200,  100, 80}, { 204,  114, 50}, { 208,  117, 80}, { 215,  121, 80}, { 220,  124, 80},  // 11-15
    { 220,  220, 80}, { 225,  127, 80}, { 235,  132, 80}, { 239,  134, 80}, { 246,  139, 80},  // 16-20
    { 248,  140, 50}, { 276,  155, 80}, { 281,  158, 80}, { 282,  159, 80}, { 284,  160, 50},  // 21-25
    { 287,  161, 80}, { 288,  288, 80}, { 289,  163, 80}, { 291,  164, 80}, { 296,  167, 80},  // 26-30
    { 301,  169, 80}, { 306,  172, 50}, { 306,  172, 80}, { 314,  176, 80}, { 315,  177, 80},  // 31-35
    { 320,  180, 80}, { 320,  320, 50}, { 322,  182, 50}, { 338,  190, 80}, { 348,  196, 50},  // 36-40
    { 359,  202, 80}, { 364,  205, 80}, { 364,  206, 50}, { 370,  150, 80}, { 386,  218, 50},  // 41-45
    { 400,  200, 50}, { 416,  234, 50}, { 427,  240, 80}, { 430,  242, 50}, { 440,  248, 50},  // 46-50
    { 440,  248, 80}, { 440,  440, 50}, { 442,  249, 80}, { 443,  249, 80}, { 450,  254, 50},  // 51-55
    { 452,  254, 80}, { 460,  345, 80}, { 460,  748, 80}, { 470,  264, 50}, { 478,  268, 50},  // 56-60
    { 480,  270, 50}, { 480,  270, 80}, { 492,  278, 50}, { 520,  293, 80}, { 552,  310, 50},  // 61-65
    { 562,  316, 50}, { 564,  318, 50}, { 574,  322, 50}, { 576,  576, 50}, { 578,  326, 50},  // 66-70
    { 582,  327, 80}, { 582,  328, 50}, { 592,  334, 50}, { 594,  334, 80}, { 602,  338, 50},  // 71-75
    { 613,  345, 80}, { 628,  352, 50}, { 630,  354, 50}, { 640,  360, 50}, { 640,  360, 80},  // 76-80
    { 665,  374, 80}, { 676,  380, 50}, { 680,  383, 80}, { 692,  389, 80}, { 718,  404, 50},  // 81-85
    { 728,  410, 50}, { 740,  300, 50}, { 740,  416, 80}, { 768,  432, 80}, { 854,  480, 50},  // 86-90
    { 880,  496, 50}, { 884,  498, 50}, { 886,  498, 50}, { 896,  504, 80}, { 900,  506, 80},  // 91-95
    { 904,  508, 50}, { 920,  690, 50}, { 920, 1496, 50}, { 960,  540, 50}, { 980,  550, 80},  // 96-100
    { 988,  550, 80}, { 988,  660, 80}, {1024,  576, 80}, {1024,  768, 80}, {1040,  586, 50},  // 101-105
    {1152,  648, 50}, {1164,  654, 50}, {1188,  668, 50}, {1226,  690, 50}, {1280,  720, 50},  // 106-110
    {1280,  720, 80}, {1330,  748, 50}, {1360,  766, 50}, {1384,  778, 50}, {1480,  832, 50},  // 111-115
    {1536,  864, 50}, {1792, 1008, 50}, {1800, 1012, 50}, {1960, 1100, 50}, {2048, 1152, 50},  // 116-120
    {2048, 1536, 50},                                                                          // 121
}};

// clang-format on

// One column of a table, packed for searching. No size of the server comes near the limit of 16 bits.
template <std::size_t count>
constexpr std::array<std::uint16_t, count> column(const std::array<QELKavoConfiguration, count>& table,
                                                  std::optional<Number> (QELKavoConfiguration::*value)()
                                                      const noexcept) {
    std::array<std::uint16_t, count> values{};
    for (std::size_t i = 0; i < count; ++i)
        values[i] = static_cast<std::uint16_t>((table[i].*value)()->int64Value());
    return values;
}

constexpr auto kAutoHeightWidths = column(kAutoHeightTable, &QELKavoConfiguration::width);
constexpr auto kAutoWidthHeights = column(kAutoWidthTable, &QELKavoConfiguration::height);
constexpr auto kFixedWidths = column(kFixedTable, &QELKavoConfiguration::width);

static_assert(std::is_sorted(kAutoHeightWidths.begin(), kAutoHeightWidths.end()));
static_assert(std::is_sorted(kAutoWidthHeights.begin(), kAutoWidthHeights.end()));
static_assert(std::is_sorted(kFixedWidths.begin(), kFixedWidths.end()));

// Every choice compares in this way, so that nothing covers NaN.
constexpr bool covers(std::uint16_t pixels, double requested) {
    return pixels >= requested;
}

// The first of ascending values that covers, or their count.
template <std::size_t count>
constexpr std::size_t firstCovering(const std::array<std::uint16_t, count>& ascending, double requested) {
    const auto first = std::partition_point(
        ascending.begin(), ascending.end(), [&](std::uint16_t value) { return !covers(value, requested); });
    return static_cast<std::size_t>(first - ascending.begin());
}

// The heights of the fixed table are in no order. A binary tree of maxima over them finds the first entry
// from any place on that is high enough, without looking at each:
//
//     node    1      2 3      4 5 6 7     ...    the table's entries, then zeros
//             root   children of node n: 2n and 2n + 1
class TreeOfHeights {
public:
    constexpr TreeOfHeights() {
        const auto heights = column(kFixedTable, &QELKavoConfiguration::height);
        std::copy(heights.begin(), heights.end(), tallest_.begin() + kLeaves);
        for (std::size_t node = kLeaves - 1; node >= kRoot; --node)
            tallest_[node] = std::max(tallest_[2 * node], tallest_[2 * node + 1]);
    }

    // The first entry at or after `from` that covers the height, or a place after the table.
    constexpr std::size_t firstCovering(std::size_t from, double height) const {
        std::size_t node = kLeaves + from;
        while (!covers(tallest_[node], height)) {
            // The entries after this node's begin at the right neighbour of the first ancestor that is a left
            // child.
            while (isRightChild(node))
                node /= 2;
            if (node < kRoot) return kFixedTable.size();
            ++node;
        }
        while (node < kLeaves) {
            node *= 2;
            if (!covers(tallest_[node], height)) ++node;
        }
        return node - kLeaves;
    }

private:
    static constexpr std::size_t kRoot = 1;
    // One at least is padding, so that a search may begin after the table.
    static constexpr std::size_t kLeaves = std::bit_ceil(kFixedTable.size() + 1);

    // The root counts as one, too: after its entries there are none, and the search leaves the tree.
    static constexpr bool isRightChild(std::size_t node) { return node % 2 == 1; }

    std::array<std::uint16_t, 2 * kLeaves> tallest_{};
};

constexpr TreeOfHeights kFixedHeights;

template <std::size_t count>
const QELKavoConfiguration& entryOrLast(const std::array<QELKavoConfiguration, count>& table,
                                        std::size_t index) noexcept {
    return table[std::min(index, count - 1)];
}

void append(std::string& text, std::string_view piece) {
    text += piece;
}

void append(std::string& text, std::optional<Number> number) {
    std::array<char, Number::kMaxChars> digits;
    text.append(digits.data(), number->toChars(digits.data()));
}

constexpr std::string_view kTransformation = "?t[]=";
constexpr std::string_view kLongestTransformation = "?t[]=2048x1536q50";

// The brackets are not escaped, since the server expects them so.
//
// The result is a URL and need not be parsed. All that is appended is allowed in a query and in a fragment. A
// "?" ends authority and path, so after a URL without query and fragment it begins the query; otherwise it
// belongs to the query or the fragment that the URL ends with. And nothing is appended that changes the
// meaning of what precedes it, as ":" or "@" would.
template <typename... Pieces>
URL withTransformation(URLView url, Pieces... pieces) {
    std::string text;
    text.reserve(url.text().size() + kLongestTransformation.size());
    text += url.text();
    text += kTransformation;
    (append(text, pieces), ...);
    return detail::URLAccess::ownedFromValidated(std::move(text));
}

}  // namespace

Size QELApplyScaleToSize(Size size, double scale) noexcept {
    const double pixelsPerPoint = MainScreen::scale();
    return {size.width * pixelsPerPoint * scale, size.height * pixelsPerPoint * scale};
}

namespace QELKavoHelper {

URL getURLWithSize(URLView url, Size size, double scale) {
    const auto& chosen = configurationForSize(QELApplyScaleToSize(size, scale));
    return withTransformation(url, chosen.width(), "x", chosen.height(), "q", chosen.quality());
}

URL getAutoWidthURLWithSize(URLView url, Size size, double scale) {
    const auto& chosen = autoWidthConfigurationForSize(QELApplyScaleToSize(size, scale));
    return withTransformation(url, "x", chosen.height(), "q", chosen.quality());
}

URL getAutoHeightURLWithSize(URLView url, Size size, double scale) {
    const auto& chosen = autoHeightConfigurationForSize(QELApplyScaleToSize(size, scale));
    return withTransformation(url, chosen.width(), "q", chosen.quality());
}

const QELKavoConfiguration& configurationForSize(Size pixels) noexcept {
    const std::size_t wideEnough = firstCovering(kFixedWidths, pixels.width);
    return entryOrLast(kFixedTable, kFixedHeights.firstCovering(wideEnough, pixels.height));
}

const QELKavoConfiguration& autoWidthConfigurationForSize(Size pixels) noexcept {
    return entryOrLast(kAutoWidthTable, firstCovering(kAutoWidthHeights, pixels.height));
}

const QELKavoConfiguration& autoHeightConfigurationForSize(Size pixels) noexcept {
    return entryOrLast(kAutoHeightTable, firstCovering(kAutoHeightWidths, pixels.width));
}

std::span<const QELKavoConfiguration> fixedImageSizes() noexcept {
    return kFixedTable;
}

std::span<const QELKavoConfiguration> autoWidthImageSizes() noexcept {
    return kAutoWidthTable;
}

std::span<const QELKavoConfiguration> autoHeightImageSizes() noexcept {
    return kAutoHeightTable;
}

}  // namespace QELKavoHelper
}  // namespace QELMODELS_ABI
}  // namespace QELModels
