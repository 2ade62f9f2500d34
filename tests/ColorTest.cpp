// A colour is read from seven code units as the C library's formatted input reads "#%2x%2x%2x" in them.

#include <QELModels/Categories/UIColor+QELUtils.h>

#include <gtest/gtest.h>

#include <cstdio>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/Sequences.h"

namespace {

using namespace std::string_view_literals;
using QELModels::Color;
using QELModels::QELUtils::colorFromRGBHexString;

Color opaque(unsigned red, unsigned green, unsigned blue) {
    return {red / 255.0, green / 255.0, blue / 255.0, 1};
}

TEST(Color, IsReadFromSevenCodeUnits) {
    const std::pair<std::string_view, std::optional<Color>> rows[] = {
        {"#ff8000", opaque(255, 128, 0)},
        {"#0A1b2C", opaque(10, 27, 44)},
        {"#12 345", opaque(0x12, 0x34, 0x5)},
        {"# 1\t2\v3", opaque(1, 2, 3)},
        {"#\r\n\f \t1", opaque(1, 0, 0)},
        {"#1\xC2\xA0 23 ", opaque(1, 0, 0)},  // a no-break space is not white space here
        {"#12\0xyz"sv, opaque(0x12, 0, 0)},
        {"#0x1234", opaque(0, 0, 0)},
        {"#12-345", opaque(0x12, 0, 0)},
        {"#+1+2+3", opaque(0, 0, 0)},
        {"1234567", opaque(0, 0, 0)},
        {" #12345", opaque(0, 0, 0)},
        // Code units are counted: one of three bytes, two of four bytes, a lone half of three.
        {"#1234\xE2\x82\xACx", opaque(0x12, 0x34, 0)},
        {"#1234\xF0\x9F\x98\x80", opaque(0x12, 0x34, 0)},
        {"#12345\xED\xA0\x80", opaque(0x12, 0x34, 0x5)},
        {"#123\xE2\x82\xAC", std::nullopt},  // seven bytes are not enough ...
        {"#1234567", std::nullopt},
        {"ff8000", std::nullopt},
        {"", std::nullopt},
    };
    for (const auto& [text, color] : rows)
        EXPECT_EQ(colorFromRGBHexString(text), color) << text;
}

// What the C library reads, without the two things that only it takes as parts of a number: a sign and "0x".
Color scanned(std::string text) {
    for (char& c : text) {
        if (c == '+' || c == '-' || c == 'x') c = 'g';
    }
    unsigned red = 0;
    unsigned green = 0;
    unsigned blue = 0;
    EXPECT_LE(std::sscanf(text.c_str(), "#%2x%2x%2x", &red, &green, &blue), 3);
    return opaque(red, green, blue);
}

TEST(Color, IsReadAsFormattedInputIs) {
    QELModels::test::forEachSequence("0Ae g-x"sv, 6, [](const std::vector<char>& characters) {
        if (characters.size() < 6) return;
        const std::string text = '#' + std::string(characters.begin(), characters.end());
        ASSERT_EQ(colorFromRGBHexString(text), scanned(text)) << text;
    });
}

TEST(Color, IsEqualAndHashesByItsParts) {
    const Color color{0.25, 0.5, 0.75, 1};
    EXPECT_EQ(color.hash(), (Color{0.25, 0.5, 0.75, 1}).hash());
    EXPECT_EQ((Color{0.0, 0, 0, 0}).hash(), (Color{-0.0, 0, 0, 0}).hash());
    for (const Color& other : {Color{0, 0.5, 0.75, 1},
                               Color{0.25, 0, 0.75, 1},
                               Color{0.25, 0.5, 0, 1},
                               Color{0.25, 0.5, 0.75, 0},
                               Color{0.5, 0.25, 0.75, 1}}) {
        EXPECT_NE(color, other);
        EXPECT_NE(color.hash(), other.hash());
    }
}

}  // namespace
