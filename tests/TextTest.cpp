// The promise: every sequence of UTF-16 code units has exactly one byte form, all functions of Text agree on
// which bytes are one, and none reads outside of what it is given.

#include <QELModels/Values/Text.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/Sequences.h"

namespace {

using namespace QELModels;
using namespace std::string_view_literals;

/// Reads one sequence by its bits alone: 0 bytes if it is incomplete, overlong or too great.
std::size_t sequenceLength(std::string_view text, char32_t& value) {
    const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
    constexpr char32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
    std::size_t length = 1;
    while (length < 5 && (byte(0) << (length - 1) & 0x80) != 0)
        ++length;
    length = length == 1 ? 1 : length - 1;
    if ((byte(0) & 0xC0) == 0x80 || length == 5 || byte(0) > 0xF7 || text.size() < length) return 0;
    value = length == 1 ? byte(0) : byte(0) & (0x7F >> length);
    for (std::size_t at = 1; at < length; ++at) {
        if ((byte(at) & 0xC0) != 0x80) return 0;
        value = value * 64 + byte(at) % 64;
    }
    return value >= kLeast[length] && value <= 0x10FFFF ? length : 0;
}

std::size_t firstMalformedByte(std::string_view text) {
    bool afterHigh = false;
    for (std::size_t at = 0; at < text.size();) {
        char32_t value = 0;
        const std::size_t length = sequenceLength(text.substr(at), value);
        if (length == 0) return at;
        if (afterHigh && value >= 0xDC00 && value <= 0xDFFF) return at - 3;
        afterHigh = value >= 0xD800 && value <= 0xDBFF;
        at += length;
    }
    return text.size();
}

TEST(Text, KnowsMalformedBytes) {
    const std::pair<std::string_view, std::size_t> rows[] = {
        {"0123456789abcdef\x80", 16},
        {"0123456\xC3\xA5 0123456789\xC0\x80", 20},
        {"\xF4\x8F\xBF\xBF\xF4\x90\x80\x80", 4},
        {"a\xED\xA0\x80\xED\xAF\xBF", 7},              // two high halves
        {"a\xED\xA0\x80x\xED\xB0\x80", 8},             // a pair kept apart
        {"a\xED\xB0\x80\xED\xA0\x80\xED\xB0\x80", 4},  // a pair left as halves: at the high one
        {"a\xED\xA0\x80\xED\xB0", 4},                  // not a pair, but cut short
    };
    for (const auto& [bytes, malformed] : rows) {
        EXPECT_EQ(Text::firstMalformedByte(bytes), malformed) << testing::PrintToString(bytes);
        EXPECT_EQ(Text::isWellFormed(bytes), malformed == bytes.size());
    }
}

TEST(Text, IsExactForAllShortSequencesOfBorderBytes) {
    constexpr auto kBorders =
        "\x00\x7F\x80\x8F\x90\x9F\xA0\xAF\xB0\xBF\xC0\xC1\xC2\xDF\xE0\xE1\xEC\xED\xEE\xEF\xF0\xF1\xF3\xF4\xF5\xFF"sv;
    test::forEachSequence(kBorders, 4, [](const std::vector<char>& bytes) {
        // On the heap and of exactly its size, so that an address sanitizer sees a read beyond it.
        const std::string_view text(bytes.data(), bytes.size());
        const std::size_t malformed = Text::firstMalformedByte(text);
        ASSERT_EQ(malformed, firstMalformedByte(text)) << testing::PrintToString(text);
        ASSERT_EQ(Text::fromUTF16(Text::toUTF16(text)) == text, malformed == text.size());
        if (malformed == text.size()) {
            ASSERT_EQ(Text::codeUnitCount(text), Text::toUTF16(text).size());
        }
    });
}

TEST(Text, ConvertsEveryCharacterBothWays) {
    for (char32_t character = 0; character <= 0x10FFFF; ++character) {
        char bytes[Text::kMaxCharacterBytes];
        const std::string_view text(bytes, Text::encode(character, bytes));
        char32_t value = 0;
        ASSERT_EQ(sequenceLength(text, value), text.size());
        ASSERT_EQ(value, character);
        const std::u16string units = Text::toUTF16(text);
        ASSERT_EQ(units.size(), character < 0x10000 ? 1u : 2u);
        ASSERT_EQ(units.size() == 1 ? char32_t{units[0]} : Text::joined(units[0], units[1]), character);
        ASSERT_EQ(Text::fromUTF16(units), text);
    }
}

TEST(Text, ReplacesBytesThatAreNotText) {
    EXPECT_EQ(Text::toUTF16("a\x80\xE2\x82z\xF5"), u"a\uFFFD\uFFFD\uFFFDz\uFFFD");
    EXPECT_EQ(Text::toUTF16("\xED\xA0\xBD\xED\xB8\x80"),
              u"\U0001F600");  // a pair left as halves is one all the same
}

std::string joinedTo(std::string text, std::string_view piece) {
    Text::append(text, piece);
    return text;
}

TEST(Text, AppendJoinsHalves) {
    struct Row {
        std::string_view text, piece, result;
    };
    const Row rows[] = {
        {"a", "b", "ab"},
        {"a\xED\xA0\xBD", "\xED\xB8\x80z", "a\xF0\x9F\x98\x80z"},
        {"\xED\xAF\xBF", "\xED\xBF\xBF", "\xF4\x8F\xBF\xBF"},
        {"\xED\xB8\x80", "\xED\xA0\xBD", "\xED\xB8\x80\xED\xA0\xBD"},
        {"\xED\x9F\xBF", "\xED\xB8\x80", "\xED\x9F\xBF\xED\xB8\x80"},
    };
    for (const auto& [text, piece, result] : rows)
        EXPECT_EQ(joinedTo(std::string(text), piece), result);

    std::string itself = "\xED\xB8\x80 and text that lies on the heap \xED\xA0\xBD";
    Text::append(itself, itself);
    EXPECT_EQ(itself,
              "\xED\xB8\x80 and text that lies on the heap \xF0\x9F\x98\x80 and text that lies on the heap "
              "\xED\xA0\xBD");
}

RC_GTEST_PROP(TextProperty, GluesAsCodeUnitsDo,
              (const std::vector<std::uint16_t>& first, const std::vector<std::uint16_t>& second)) {
    // Values by eight, so that most of them are halves.
    const auto units = [](const std::vector<std::uint16_t>& values) {
        std::u16string text;
        for (const auto value : values)
            text += static_cast<char16_t>(value % 8 == 0 ? value : 0xD800 + value % 0x800);
        return text;
    };
    const std::u16string left = units(first);
    const std::u16string right = units(second);
    const std::string glued = joinedTo(Text::fromUTF16(left), Text::fromUTF16(right));
    RC_ASSERT(glued == Text::fromUTF16(left + right));
    RC_ASSERT(Text::toUTF16(glued) == left + right);
    RC_ASSERT(Text::codeUnitCount(glued) == left.size() + right.size());
    RC_ASSERT(Text::isWellFormed(glued));
}

}  // namespace
