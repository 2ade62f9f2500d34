// A colour is read from seven code units as the C library's formatted input reads "#%2x%2x%2x" in them.

#include <QELModels/Categories/UIColor+QELUtils.h>

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <optional>
#include <string>
#include <string_view>

namespace {

using namespace std::string_view_literals;
using QELModels::Color;
using QELModels::QELUtils::colorFromRGBHexString;

Color opaque(unsigned red, unsigned green, unsigned blue) {
    return {red / 255.0, green / 255.0, blue / 255.0, 1};
}

TEST(Color, IsReadFromSevenCodeUnits) {
    struct Row {
        std::string_view text;
        std::optional<Color> color;
    };
    const Row rows[] = {
        {"#ff8000", opaque(255, 128, 0)},
        {"#0A1b2C", opaque(10, 27, 44)},
        {"#12 345", opaque(0x12, 0x34, 0x5)},
        {"# 1\t2\v3", opaque(1, 2, 3)},
        {"#\r\n\f \t1", opaque(1, 0, 0)},
        {"#1\xC2\xA0 23 ", opaque(1, 0, 0)},  // a no-break space is no white space here
        {"#12\0"
         "345"sv,
         opaque(0x12, 0, 0)},
        {"#0x1234", opaque(0, 0, 0)},
        {"#12-345", opaque(0x12, 0, 0)},
        {"#+1+2+3", opaque(0, 0, 0)},
        {"1234567", opaque(0, 0, 0)},
        {" #12345", opaque(0, 0, 0)},
        // Seven code units: what follows is three bytes a unit, four bytes two units, three bytes a lone
        // half.
        {"#1234\xE2\x82\xAC"
         "5",
         opaque(0x12, 0x34, 0)},
        {"#1234\xF0\x9F\x98\x80", opaque(0x12, 0x34, 0)},
        {"#12345\xED\xA0\x80", opaque(0x12, 0x34, 0x5)},
        {"#\xF0\x9F\x98\x80\xF0\x9F\x98\x80\xF0\x9F\x98\x80", opaque(0, 0, 0)},
        {"#123\xE2\x82\xAC", std::nullopt},  // seven bytes are not enough ...
        {"#123\xF0\x9F\x98\x80", std::nullopt},
        {"#1234567", std::nullopt},
        {"ff8000", std::nullopt},
        {"", std::nullopt},
    };
    for (const Row& row : rows)
        EXPECT_EQ(colorFromRGBHexString(row.text), row.color) << row.text;
}

// What the C library makes of the text, after the two things are out of it in which it is more liberal: a
// sign and "0x" are parts of a number there.
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
    constexpr std::string_view kAlphabet = "0Ae g-x";
    constexpr int kLength = 6;
    std::array<std::size_t, kLength> letters{};
    for (;;) {
        std::string text = "#";
        for (const std::size_t letter : letters)
            text += kAlphabet[letter];
        ASSERT_EQ(colorFromRGBHexString(text), scanned(text)) << text;

        std::size_t place = 0;
        while (place < letters.size() && ++letters[place] == kAlphabet.size())
            letters[place++] = 0;
        if (place == letters.size()) return;
    }
}

TEST(Color, IsEqualAndHashesByItsParts) {
    const Color color{0.25, 0.5, 0.75, 1};
    EXPECT_EQ(color.hash(), (Color{0.25, 0.5, 0.75, 1}).hash());
    EXPECT_EQ((Color{0.0, 0, 0, 0}).hash(), (Color{-0.0, 0, 0, 0}).hash());
    const Color others[] = {{0.5, 0.5, 0.75, 1},
                            {0.25, 0.25, 0.75, 1},
                            {0.25, 0.5, 0.5, 1},
                            {0.25, 0.5, 0.75, 0.5},
                            {0.5, 0.25, 0.75, 1}};
    for (const Color& other : others) {
        EXPECT_NE(color, other);
        EXPECT_NE(color.hash(), other.hash());
    }
}

}  // namespace
