// An image is asked for at the first size of its table that covers what is wanted, and at the last where none
// does, for every size that a double can have.

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <concepts>
#include <cstdint>
#include <limits>
#include <numeric>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "QELModels/Categories/NSURL+QELKavoHelper.h"
#include "QELModels/Process/MainScreen.h"
#include "URLOracle.h"
#include "tests/Doubles.h"

namespace QELModels {
namespace {

using namespace QELKavoHelper;
using test::kInfinity;
using test::kNaN;

constexpr double kAny = 12345;

// An entry as three plain numbers: width, height, quality.
using Entry = std::tuple<double, double, double>;

Entry entry(const QELKavoConfiguration& size) {
    return {size.width()->doubleValue(), size.height()->doubleValue(), size.quality()->doubleValue()};
}

std::vector<Entry> entries(std::span<const QELKavoConfiguration> table) {
    std::vector<Entry> all;
    for (const QELKavoConfiguration& size : table)
        all.push_back(entry(size));
    return all;
}

// The rule, word for word: the first that covers, else the last.
template <typename Predicate>
const QELKavoConfiguration* literalChoice(std::span<const QELKavoConfiguration> table,
                                          const std::vector<Entry>& values, Predicate covers) {
    const auto first = std::find_if(values.begin(), values.end(), covers);
    return first == values.end() ? &table.back() : &table[static_cast<std::size_t>(first - values.begin())];
}

void expectLiteralChoices(Size pixels) {
    static const auto fixed = entries(fixedImageSizes());
    static const auto autoWidth = entries(autoWidthImageSizes());
    static const auto autoHeight = entries(autoHeightImageSizes());
    const auto wide = [=](const Entry& size) { return std::get<0>(size) >= pixels.width; };
    const auto high = [=](const Entry& size) { return std::get<1>(size) >= pixels.height; };
    const auto both = [=](const Entry& size) { return wide(size) && high(size); };
    ASSERT_EQ(&configurationForSize(pixels), literalChoice(fixedImageSizes(), fixed, both))
        << pixels.width << " x " << pixels.height;
    ASSERT_EQ(&autoWidthConfigurationForSize(pixels), literalChoice(autoWidthImageSizes(), autoWidth, high))
        << pixels.height;
    ASSERT_EQ(&autoHeightConfigurationForSize(pixels),
              literalChoice(autoHeightImageSizes(), autoHeight, wide))
        << pixels.width;
}

// Between two neighbouring numbers of a table, the answer is the same for every request, so these are enough.
std::vector<double> telling(const std::set<double>& boundaries) {
    std::vector<double> values{kNaN,
                               -kInfinity,
                               kInfinity,
                               -1,
                               -0.0,
                               0,
                               std::numeric_limits<double>::denorm_min(),
                               std::numeric_limits<double>::max()};
    for (const double boundary : boundaries) {
        for (const double step : {-1.0, -0.5, 0.0, 0.5, 1.0})
            values.push_back(boundary + step);
        values.push_back(std::nextafter(boundary, kInfinity));
        values.push_back(std::nextafter(boundary, -kInfinity));
    }
    return values;
}

TEST(Choice, IsTheFirstThatCoversElseTheLastAtEveryBoundary) {
    std::set<double> widths, heights;
    for (const auto table : {fixedImageSizes(), autoWidthImageSizes(), autoHeightImageSizes()}) {
        for (const auto& [width, height, quality] : entries(table)) {
            widths.insert(width);
            heights.insert(height);
        }
    }
    const std::vector<double> tellingHeights = telling(heights);
    for (const double width : telling(widths)) {
        for (const double height : tellingHeights)
            ASSERT_NO_FATAL_FAILURE(expectLiteralChoices({width, height}));
    }
}

TEST(SizeTables, HoldTheServersSizes) {
    const std::vector<Entry> autoHeight{
        {316, 0, 80}, {480, 0, 80}, {652, 0, 80}, {725, 0, 80}, {800, 0, 80}, {1080, 0, 80}, {1205, 0, 80}};
    const std::vector<Entry> autoWidth{
        {0, 50, 80}, {0, 52, 80}, {0, 75, 80}, {0, 100, 80}, {0, 104, 50}, {0, 150, 80}, {0, 360, 80}};
    EXPECT_EQ(entries(autoHeightImageSizes()), autoHeight);
    EXPECT_EQ(entries(autoWidthImageSizes()), autoWidth);

    const std::vector<Entry> fixed = entries(fixedImageSizes());
    ASSERT_EQ(fixed.size(), 121u);
    EXPECT_EQ(fixed.front(), Entry(80, 45, 80));
    EXPECT_EQ(fixed.back(), Entry(2048, 1536, 50));
    EXPECT_TRUE(std::is_sorted(fixed.begin(), fixed.end()));
    EXPECT_EQ(std::count_if(fixed.begin(), fixed.end(), [](const Entry& e) { return std::get<2>(e) == 80; }),
              61);
    EXPECT_EQ(std::count_if(fixed.begin(), fixed.end(), [](const Entry& e) { return std::get<2>(e) == 50; }),
              60);

    // A digit that was mistyped anywhere changes the sum, two that were exchanged do too.
    double sum = 0;
    for (std::size_t i = 0; i < fixed.size(); ++i) {
        const auto [width, height, quality] = fixed[i];
        sum += static_cast<double>(i + 1) * (7 * width + 11 * height + 13 * quality);
    }
    EXPECT_EQ(sum, 90918840);
}

TEST(Configuration, HoldsWhatItIsGivenAndIsNotComparedByValue) {
    auto size = QELKavoConfiguration::configurationWithWidth(320, std::nullopt, 80);
    EXPECT_EQ(size.width(), Number(320));
    EXPECT_EQ(size.height(), std::nullopt);
    EXPECT_EQ(size.quality(), Number(80));
    size.setWidth(std::nullopt);
    size.setHeight(180);
    size.setQuality(50);
    EXPECT_EQ(size.width(), std::nullopt);
    EXPECT_EQ(size.height(), Number(180));
    EXPECT_EQ(size.quality(), Number(50));
    static_assert(!std::equality_comparable<QELKavoConfiguration>);
}

class ImageURL : public ::testing::Test {
protected:
    ~ImageURL() override { MainScreen::setScale(1.0); }
};

TEST_F(ImageURL, AsksForTheSizeInPixels) {
    using Operation = URL (*)(URLView, Size, double);
    const Operation fixed = getURLWithSize, autoWidth = getAutoWidthURLWithSize;
    const Operation autoHeight = getAutoHeightURLWithSize;
    const struct {
        Operation operation;
        double screen;
        Size size;
        double scale;
        std::string query;
    } rows[] = {
        {fixed, 1, {320, 180}, 1, "320x180q80"},
        {fixed, 2, {300, 169}, 1, "602x338q50"},
        {fixed, 2, {320, 180}, 1, "640x360q50"},
        {fixed, 3, {375, 211}, 1, "1152x648q50"},
        {fixed, 3, {1024, 768}, 1, "2048x1536q50"},
        {fixed, 2, {80.25, 45}, 1, "161x91q80"},
        {fixed, 2, {80, 45}, 2, "320x180q80"},
        {fixed, 1, {-5, 0}, 1, "80x45q80"},
        {fixed, 1, {10, kNaN}, 1, "2048x1536q50"},
        {fixed, 0, {kInfinity, 10}, 1, "2048x1536q50"},  // infinity times 0
        {autoWidth, 1, {kAny, 104}, 1, "x104q50"},
        {autoWidth, 1, {kNaN, 100.25}, 1, "x104q50"},
        {autoWidth, 2, {kAny, 200}, 1, "x360q80"},
        {autoWidth, 2, {kAny, 20}, 1.25, "x50q80"},
        {autoHeight, 2, {320, kAny}, 1, "652q80"},
        {autoHeight, 3, {500, kAny}, 1, "1205q80"},
        {autoHeight, 2, {200, kNaN}, 1.5, "652q80"},
    };
    for (const auto& [operation, screen, size, scale, query] : rows) {
        MainScreen::setScale(screen);
        EXPECT_EQ(operation(URLView(), size, scale).text(), "?t[]=" + query);
    }
    MainScreen::setScale(1);
    EXPECT_EQ(getURLWithSize(URLView(), {320, 180}).text(), "?t[]=320x180q80");
    EXPECT_EQ(getAutoWidthURLWithSize(URLView(), {320, 180}).text(), "?t[]=x360q80");
    EXPECT_EQ(getAutoHeightURLWithSize(URLView(), {320, 180}).text(), "?t[]=480q80");
}

// Nothing is parsed again, so all short texts show that it need not be: alone, where an authority begins or
// ends, and after whole URLs.
TEST_F(ImageURL, IsAURLForEveryURL) {
    const auto expectURL = [](const std::string& text) {
        const auto image = URLView::parse(text);
        if (!image) return;
        const URL sized = getURLWithSize(*image, {320, 180});
        ASSERT_EQ(sized.text(), text + "?t[]=320x180q80");
        ASSERT_TRUE(URLView::parse(sized.text()) && isURLByGrammar(sized.text())) << text;
    };
    std::vector<std::string> texts{""};
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const std::string text = texts[i];
        for (const char* before : {"", "//", "//[::1]", "HTTPS://Img.Example:443/%7e/", "data:,x"})
            expectURL(before + text);
        for (const char c : std::string_view(text.size() < 4 ? "a1:/?#[]@%." : ""))
            texts.push_back(text + c);
    }
}

// Which factor comes first decides the last bit.
RC_GTEST_FIXTURE_PROP(ImageURL, ScalesByTheScreenFirst,
                      (std::uint64_t width, std::uint64_t screen, std::uint64_t scale)) {
    const auto factor = [](std::uint64_t bits) { return 0.1 + static_cast<double>(bits >> 11) * 0x1p-50; };
    MainScreen::setScale(factor(screen));
    const Size pixels = QELApplyScaleToSize({factor(width), -factor(width) / 3}, factor(scale));
    RC_ASSERT(pixels.width == (factor(width) * factor(screen)) * factor(scale));
    RC_ASSERT(pixels.height == (-factor(width) / 3 * factor(screen)) * factor(scale));
}

}  // namespace
}  // namespace QELModels
