// The promise: the reader takes JSON and nothing else, gives every value exactly, names the place of the
// first mistake, never reads outside its input or costs stack, and agrees in all of this with the naive
// reader.

#include <JSON/JSONReader.h>
#include <JSON/JSONWriter.h>
#include <QELModels/Representation/detail/RepresentationAccess.h>
#include <QELModels/Values/Text.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "NaiveJSONOracle.h"
#include "TestSupport.h"

namespace {

using QELModels::detail::RepresentationAccess;

using namespace QELModels;
using namespace std::string_literals;
using test::CountingZone;
using test::Exact;

constexpr double kTwoTo64 = 18446744073709551616.0;

/// The value of a document whose bytes are gone by the time that one looks at it.
std::optional<Representation> valueOf(std::string_view document, JSONError* error = nullptr) {
    static JSONReader reader;
    return reader.read(Exact(document).view(), error);
}

std::string printable(std::string_view document) {
    return testing::PrintToString(std::string(document.substr(0, 500)));
}

/// The reader and the naive one agree on the document.
[[nodiscard]] testing::AssertionResult agrees(std::string_view document) {
    JSONError error;
    const auto value = valueOf(document, &error);
    const std::string disagreement = NaiveJSONOracle::disagreement(document, value, error);
    if (disagreement.empty()) return testing::AssertionSuccess();
    return testing::AssertionFailure() << printable(document) << ": " << disagreement;
}

std::string repeated(std::string_view text, std::size_t count) {
    std::string result;
    for (std::size_t i = 0; i < count; ++i)
        result += text;
    return result;
}

/// The pieces of a text, which single blanks part: an empty one between two blanks.
std::vector<std::string> piecesOf(std::string_view text) {
    std::vector<std::string> result(1);
    for (const char byte : text)
        byte == ' ' ? (void)result.emplace_back() : result.back().push_back(byte);
    return result;
}

std::string joined(const std::vector<std::string>& pieces) {
    std::string result;
    for (const std::string& piece : pieces)
        result += (result.empty() ? "" : ",") + piece;
    return result;
}

TEST(JSONReader, WordsAreWholeOrNone) {
    for (const std::string word : {"true", "false", "null"}) {
        for (std::size_t i = 0; i <= word.size(); ++i) {
            EXPECT_TRUE(agrees('[' + word.substr(0, i) + ']'));
            EXPECT_TRUE(agrees('[' + word.substr(i) + ']'));
            for (int byte = 0; byte < 256; ++byte) {
                std::string changed = word + ' ';
                changed[i] = static_cast<char>(byte);
                EXPECT_TRUE(agrees('[' + changed + ']'));
            }
        }
    }
}

TEST(JSONReader, Numbers) {
    struct Row {
        const char* text;
        Number number;
    };
    constexpr auto kInt64 = std::numeric_limits<std::int64_t>();
    constexpr auto kDouble = std::numeric_limits<double>();
    const Row rows[] = {
        {"0", 0},
        {"-0", 0},
        {"-0.0", -0.0},
        {"-12", -12},
        {"12345678", 12345678},
        {"-123456789", -123456789},
        {"123456789012345678", 123456789012345678},
        {"1234567890123456789", 1234567890123456789},
        {"9223372036854775807", kInt64.max()},
        {"-9223372036854775808", kInt64.min()},
        {"9223372036854775808", std::uint64_t{1} << 63},
        {"18446744073709551615", std::numeric_limits<std::uint64_t>::max()},
        {"18446744073709551616", kTwoTo64},
        {"-9223372036854775809", -9223372036854775808.0},
        {"100000000000000000000000000", 1e26},
        {"1.0", 1.0},
        {"1e2", 100.0},
        {"-25e-1", -2.5},
        {"9007199254740993.0", 9007199254740992.0},
        {"123456.789e22", 123456.789e22},
        {"7.123456789", 7.123456789},
        {"1.7976931348623157e308", kDouble.max()},
        {"1.7976931348623158079e308", kDouble.max()},
        {"2.2250738585072014e-308", kDouble.min()},
        {"4.9406564584124654e-324", kDouble.denorm_min()},
        {"2e-324", 0.0},
        {"-1e-400", -0.0},
        {"0e999999999999999999999", 0.0},
        {"1e-99999999999999999999", 0.0},
        {"true", true},
        {"false", false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const auto value = valueOf(row.text);
        ASSERT_TRUE(value);
        ASSERT_TRUE(value->view().isNumber());
        EXPECT_EQ(value->view().number()->origin(), row.number.origin());
        EXPECT_EQ(detail::NumberBits::of(*value->view().number()), detail::NumberBits::of(row.number));
        for (const char* end : {"", " ", ",3", "]", "}", ":"})
            EXPECT_TRUE(agrees("[" + std::string(row.text) + end));
    }
    // Halfway between two doubles, but for the last of more digits than any reader keeps.
    const std::string halfway = "9007199254740993." + std::string(800, '0');
    EXPECT_EQ(*valueOf(halfway)->view().number(), Number(9007199254740992.0));
    EXPECT_EQ(*valueOf(halfway + '1')->view().number(), Number(9007199254740994.0));
    // Both ends of the range, and what is beyond them.
    for (const std::string digits : {"1", "17976931348623159", "24703282292062328", "49406564584124654"}) {
        for (int exponent = -345; exponent <= 310; exponent == -300 ? exponent = 285 : ++exponent) {
            EXPECT_TRUE(agrees('[' + digits + 'e' + std::to_string(exponent) + ']'));
            EXPECT_TRUE(agrees("[-0." + digits + 'e' + std::to_string(exponent) + ']'));
        }
    }
    // Digits on both sides of a point, short enough for the quick way and too long for it.
    constexpr std::string_view kDigits = "907264518309726451";
    for (std::size_t whole = 1; whole <= kDigits.size(); ++whole) {
        for (std::size_t places = 1; places <= 10; ++places) {
            for (const char* sign : {"", "-"}) {
                const std::string text = sign + std::string(kDigits.substr(0, whole)) + '.' +
                                         std::string(kDigits.substr(0, places));
                EXPECT_EQ(*valueOf(text)->view().number(), Number(std::strtod(text.c_str(), nullptr)))
                    << text;
                for (const char* end : {"", "e3", "e", ".", "5.", "-", "x", "\"1\""})
                    EXPECT_TRUE(agrees('[' + text + end + ']'));
            }
        }
    }
    for (const char* text : {"1.", "-1.", ".5", "-.5", "01.5", "00.5", "-00.5", "1.e2", "1..5", "1.-5"})
        EXPECT_TRUE(agrees(text));
    EXPECT_EQ(*valueOf("0." + std::string(400, '0') + "25e401")->view().number(), Number(2.5));
    EXPECT_EQ(*valueOf("1" + std::string(400, '0') + "e-400")->view().number(), Number(1.0));
}

TEST(JSONReader, Texts) {
    struct Row {
        const char* json;
        std::string text;
    };
    const Row rows[] = {
        {R"("")", ""},
        {R"("a")", "a"},
        {R"("\"")", "\""},
        {R"("\\")", "\\"},
        {R"("a\\" )", "a\\"},
        {R"("\"\\\/\b\f\n\r\t")", "\"\\/\b\f\n\r\t"},
        {R"("bl\u00e5b\u00E6r \u20ac")", "bl\u00e5b\u00e6r \u20ac"},
        {R"("\u0000x")", "\0x"s},
        {R"("\u007F\u0080\u07FF\u0800")", "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80"},
        {R"("\ud83d\ude00")", "\U0001F600"},
        {R"("\udbff\udfff!")", "\U0010FFFF!"},
        {R"("\ud83d")", "\xED\xA0\xBD"},
        {R"("\ude00")", "\xED\xB8\x80"},
        {R"("\ude00\ud83d")", "\xED\xB8\x80\xED\xA0\xBD"},
        {R"("\ud83d\ud83d\ude00")", "\xED\xA0\xBD\U0001F600"},
        {R"("\ud83dx\ude00")", "\xED\xA0\xBDx\xED\xB8\x80"},
        {R"("\ud83d\n")", "\xED\xA0\xBD\n"},
        {R"("\ud83d\\ude00")", "\xED\xA0\xBD\\ude00"},
        {"\"\xF0\x9F\x98\x80 \xEF\xBB\xBF \xC3\xA6 \x7F /\"", "\U0001F600 \uFEFF \u00e6 \x7F /"},
        {R"("https:\/\/tv.example\/a?b=[1,2],{\"c\":null}")", R"(https://tv.example/a?b=[1,2],{"c":null})"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.json);
        const auto value = valueOf(row.json);
        ASSERT_TRUE(value);
        EXPECT_EQ(value->view().text(), row.text);
        EXPECT_TRUE(Text::isWellFormed(row.text));
        EXPECT_EQ(valueOf("{" + std::string(row.json) + ":1}")->view().valueForKey(row.text)->number(),
                  Number(1));
    }
}

// Wherever a text lies in the words and blocks that are looked at together, and wherever its escapes are.
TEST(JSONReader, TextsOfEveryLengthAndPlace) {
    for (std::size_t length = 0; length < 70; ++length) {
        for (std::size_t place = 0; place <= length; ++place) {
            const std::string before = std::string(place, 'a');
            const std::string after = std::string(length - place, 'b');
            for (const auto& [escape, meaning] : {std::pair(R"(\n)", "\n"),
                                                  std::pair(R"(\\)", "\\"),
                                                  std::pair(R"(\u00e5)", "\u00e5"),
                                                  std::pair(R"(\/\ud83d\ude00)", "/\U0001F600")}) {
                const auto value = valueOf("[\"" + before + escape + after + "\" , \"" + after + "\",\"" +
                                           before + escape + "\"]");
                ASSERT_TRUE(value);
                auto element = value->view().elements().begin();
                ASSERT_EQ((*element++).text(), before + meaning + after);
                ASSERT_EQ((*element++).text(), after);
                ASSERT_EQ((*element++).text(), before + meaning);
            }
        }
    }
}

/// How many nodes and bytes of text each container takes, as both makers of representations have to note.
std::vector<std::pair<std::size_t, std::size_t>> extents(RepresentationView view) {
    std::vector<std::pair<std::size_t, std::size_t>> result;
    for (const detail::RepresentationNode* node = RepresentationAccess::node(view);
         node != RepresentationAccess::node(view) + RepresentationAccess::node(view)->extent();
         ++node) {
        if (node->isContainer()) result.emplace_back(node->extent(), node->textBytes());
    }
    return result;
}

TEST(JSONReader, Containers) {
    const auto array = [](std::initializer_list<Representation> elements) {
        return Representation::array(elements);
    };
    const auto dictionary = [](std::initializer_list<Representation::Member> members) {
        return Representation::dictionary(members);
    };
    struct Row {
        const char* json;
        Representation value;
    };
    const Row rows[] = {
        {"null", nullptr},
        {" \t\r\n[ ] \n", array({})},
        {"{}", dictionary({})},
        {"{\"\":{ \"\" : [ ]},\"b\":[{},[]]}",
         dictionary({{"", dictionary({{"", array({})}})}, {"b", array({dictionary({}), array({})})}})},
        {"[1,[2,[3]],{\"a\":[null]}]",
         array({1, array({2, array({3})}), dictionary({{"a", array({nullptr})}})})},
        {"[\"abc\",{\"key\":[\"de\",\"\\u00e6\"]},\"f\"]",
         array({"abc", dictionary({{"key", array({"de", "\u00e6"})}}), "f"})},
        {"\xEF\xBB\xBF[true]", array({true})},
    };
    for (const Row& row : rows) {
        ASSERT_TRUE(valueOf(row.json)) << row.json;
        EXPECT_EQ(*valueOf(row.json), row.value) << row.json;
        EXPECT_EQ(extents(*valueOf(row.json)), extents(row.value)) << row.json;
        EXPECT_TRUE(agrees(row.json));
    }
    EXPECT_FALSE(valueOf("{}")->view().valueForKey("a"));
    EXPECT_TRUE(valueOf("{\"a\":null}")->view().valueForKey("a")->isNull());
}

// The naive reader knows which of two equal keys counts. The large dictionaries here are the last thing in
// their documents and lie in each other, so that their indexes need more room than the characters read
// account for.
TEST(JSONReader, RepeatedKeysAndLargeDictionaries) {
    for (const std::size_t size : std::initializer_list<std::size_t>{1, 2, 8, 20, 32, 33, 34, 100, 1000}) {
        for (const std::size_t keys : {size, size / 2 + 1, std::size_t{1}}) {
            std::string members;
            for (std::size_t i = 0; i < size; ++i)
                members +=
                    (i == 0 ? "" : ",") + ("\"k" + std::to_string(i * 7 % keys) + "\":") + std::to_string(i);
            const std::string flat = "{" + members + "}";
            EXPECT_TRUE(agrees(flat)) << size << " " << keys;
            std::string nested = flat;
            for (int i = 0; i < 40; ++i)
                nested = "{" + members + ",\"k0\":[" + nested + "," + flat + "]}";
            EXPECT_TRUE(nested.size() > 200'000 || agrees(nested)) << size << " " << keys;
        }
    }
    EXPECT_TRUE(agrees(R"({"a":1,"\u0061":[{"b":1,"b":{"c":2,"\u0063":3}}],"b":2,"a":{"a":4,"a":5}})"));
}

TEST(JSONReader, PlacesOfMistakes) {
    // The caret is under the mistake, in the last of the lines that come before it or that it is in.
    struct Row {
        std::string document;
        std::string caret;
        const char* reason;
        std::size_t line = 1;
    };
    const char* const cutShort = "the document ends before its value does";
    const char* const empty = "the document is empty";
    const char* const badNumber = "a bad number";
    const char* const badWord = "a word that is no value";
    const char* const badEscape = "a bad escape";
    const char* const control = "a control character that is not escaped";
    const char* const unclosed = "a text without closing quote";
    const char* const notUTF8 = "a sequence that is not UTF-8";
    const char* const more = "something follows the document's value";
    const char* const noDouble = "a number that no double can hold";
    const Row rows[] = {
        {"", "^", empty},
        {"  ", "  ^", empty},
        {"\n \n", "^", empty, 3},
        {"\xEF\xBB\xBF", "...^", empty},
        {"\xEF\xBB\xBF[1,2", "...    ^", cutShort},
        {"[1, 2", "     ^", cutShort},
        {"[1,\n", "^", cutShort, 2},
        {"{\"a\":\n {\"b\": ", "       ^", cutShort, 2},
        {"{\"a\"", "    ^", cutShort},
        {"[tru", "    ^", cutShort},
        {"[tru ", " ^", badWord},
        {"[nul]", " ^", badWord},
        {"nullx", "^", badWord},
        {"[NaN]", " ^", badWord},
        {"[\"a\", \"bc]", "      ^", unclosed},
        {"\"", "^", unclosed},
        {"[\"a\\\"]", " ^", unclosed},
        {"{\"a\\q\":\"b\\u12", "   ^", badEscape},
        {"[\"\\q", " ^", unclosed},
        {"[\"ab\\x41\"]", "    ^", badEscape},
        {"[\"ab\\u12g4\"]", "    ^", badEscape},
        {"[\"\\u123\"]", "  ^", badEscape},
        {"[\"\\ud83d\\u\"]", "        ^", badEscape},
        {"[\"\\ud83d\\x\"]", "        ^", badEscape},
        {"[\n\"a\tb\"]", "  ^", control, 2},
        {"[\"a\nb\"]", "   ^", control},
        {"[\"a\0\"]"s, "   ^", control},
        {"[01]", " ^", badNumber},
        {"[-]", " ^", badNumber},
        {"[1.", " ^", badNumber},
        {"[.5]", " ^", badWord},
        {"[1e+, 2]", " ^", badNumber},
        {"[2, 1x]", "    ^", badNumber},
        {"[1\v]", " ^", badNumber},
        {"[1\xC3\xA6]", " ^", badNumber},
        {"{\"a\":{\"unread\":1e400}}", "               ^", noDouble},
        {"[-1.7976931348623159e308]", " ^", noDouble},
        {"[1" + std::string(309, '0') + "]", " ^", noDouble},
        {"[0.01e311]", " ^", noDouble},
        {"[1e18446744073709551617]", " ^", noDouble},
        {"[\"\xC3\xA6\xE2\x82\"]", "    ^", notUTF8},
        {"[\"\xED\xA0\xBD\"]", "  ^", notUTF8},
        {"[\"\xF4\x90\x80\x80\"]", "  ^", notUTF8},
        {"[\"a\x80\"]", "   ^", notUTF8},
        {"[\xFF]", " ^", notUTF8},
        {"\xEF\xBB", "^", notUTF8},
        {"[\xEF\xBB\xBF]", " ^", badWord},
        {"[1,]", "   ^", "a value is missing"},
        {"[,1]", " ^", "a value is missing"},
        {"{\"a\":}", "     ^", "a value is missing"},
        {"{\"a\" 1}", "     ^", "':' is missing"},
        {"{\"a\":1,}", "       ^", "a key in quotes is missing"},
        {"{a:1}", " ^", "a key in quotes is missing"},
        {"[1 2]", "   ^", "',' or ']' is missing"},
        {"[1}", "  ^", "',' or ']' is missing"},
        {"[1:2]", "  ^", "',' or ']' is missing"},
        {"{\"a\":1]", "      ^", "',' or '}' is missing"},
        {"[\"a\"b]", "    ^", "',' or ']' is missing"},
        {"[\"a\"\"b\"]", "    ^", "',' or ']' is missing"},
        {"[true\"b\", 1]", "     ^", "',' or ']' is missing"},
        {"[1\"b\"]", "  ^", "',' or ']' is missing"},
        {"[\"a\"\\]", "    ^", "',' or ']' is missing"},
        {"\\\"", "^", badWord},
        {"[1]]", "   ^", more},
        {"[1] x", "    ^", more},
        {"1 2", "  ^", more},
        {"\"a\" \"b", "    ^", more},
        {"{}\n\xFF", "^", more, 2},
        {"]", "^", "a value is missing"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.document.substr(0, 100));
        JSONError error;
        EXPECT_FALSE(valueOf(row.document, &error));
        EXPECT_EQ(error.line, row.line);
        EXPECT_EQ(error.column, row.caret.size());
        EXPECT_EQ(error.reason, row.reason);
        EXPECT_TRUE(agrees(row.document));
    }
}

// Nesting is bounded where it is asked to be, and costs no stack at any depth.
TEST(JSONReader, Nesting) {
    constexpr std::size_t kMost = JSONReader::kDefaultMaxDepth;
    JSONError error;
    struct Row {
        std::string open, close;
        std::size_t brackets;
    };
    for (const Row& row : {Row{"[", "]", 1}, Row{"{\"a\":", "}", 1}, Row{"[1,{\"a\":", "}]", 2}}) {
        const auto nested = [&](std::size_t count) {
            return repeated(row.open, count) + "0" + repeated(row.close, count);
        };
        const std::size_t most = kMost / row.brackets;
        EXPECT_TRUE(agrees(nested(most)));
        EXPECT_TRUE(representationFromJSON(nested(most)));
        EXPECT_TRUE(agrees(nested(most + 1)));
        EXPECT_FALSE(representationFromJSON(nested(most + 1), &error));
        EXPECT_EQ(error.reason, "nested deeper than 1024");
    }
    const auto deep = [](std::size_t count) {
        return repeated("[{\"a\":", count) + "0" + repeated("}]", count);
    };
    constexpr std::size_t kDeep = 500'000;
    JSONReader reader(2 * kDeep);
    const auto value = reader.read(deep(kDeep));
    ASSERT_TRUE(value);
    EXPECT_EQ(*reader.read(deep(kDeep)), *value);
    EXPECT_FALSE(reader.read(repeated("[{\"a\":", kDeep), &error));
    EXPECT_EQ(error.offset, 6 * kDeep);
    EXPECT_FALSE(reader.read(deep(kDeep + 1), &error));
    EXPECT_EQ(error.offset, 6 * kDeep);
    EXPECT_TRUE(JSONReader(0).read("1"));
    EXPECT_FALSE(JSONReader(0).read("[]", &error));
    EXPECT_EQ(error.column, 1u);
}

struct NoElements final : JSONElementHandler {
    void element(RepresentationView) override {}
    void startOver() override {}
} kNoElements;

// What one document leaves does not show in the next one, and only documents allocate.
TEST(JSONReader, IsUsedAgain) {
    CountingZone zone;
    {
        JSONReader reader(100, &zone);
        JSONError error;
        const std::string large = "[" + joined(std::vector<std::string>(5000, R"({"a\n":"b"})")) + "]";
        const auto kept = reader.read(large, &error);
        EXPECT_LE(zone.requests(), 3u);
        EXPECT_FALSE(reader.read("[\"\\q\"]", &error));
        EXPECT_FALSE(reader.read("[[[[1", nullptr));
        EXPECT_EQ(error.column, 3u);
        JSONReader moved = std::move(reader);
        EXPECT_FALSE(reader.read(repeated("[", 101))) << "a reader that was moved from is as it was made";
        EXPECT_TRUE(reader.lend("[1]") && reader.readElements("[]", "a", kNoElements));
        reader = JSONReader(1);
        EXPECT_FALSE(reader.read("[[]]"));
        const auto small = moved.read("{\"a\":[1]}", &error);
        EXPECT_EQ(error.column, 3u) << "an error is written only when there is one";
        EXPECT_EQ(small->view().valueForKey("a")->elements().size(), 1u);
        const std::size_t before = zone.bytes();
        EXPECT_TRUE(moved.read(repeated("[", 100) + repeated("]", 100)));
        const auto tiny = moved.read("[]");
        EXPECT_LT(zone.bytes() - before, 1000u)
            << "what a deep document needs is not set aside for the next one";
        EXPECT_EQ(*kept, *representationFromJSON(large));
    }
    EXPECT_EQ(zone.pieces(), 0u);
}

// The destructor of a static object that is older than anything that was read.
struct ReadingAtTheEnd {
    ~ReadingAtTheEnd() {
        if (isAsked) std::_Exit(representationFromJSON("[7, {}]")->view().size() == 2 ? 72 : 1);
    }
    bool isAsked = false;
} readingAtTheEnd;

TEST(JSONReader, ReadsInTheDestructorsOfStaticObjects) {
    const auto leave = [] {
        readingAtTheEnd.isAsked = representationFromJSON("[1]").has_value();
        std::exit(0);
    };
    EXPECT_EXIT(leave(), testing::ExitedWithCode(72), "");
}

#if SIZE_MAX > UINT32_MAX  // else there is no such document
TEST(JSONReader, RefusesFourGigabytes) {
    // Nothing of it is read, so it need not be there.
    const std::string_view document("[", std::size_t{1} << 32);
    JSONError error;
    EXPECT_FALSE(JSONReader().read(document, &error));
    EXPECT_EQ(error.reason, "a document of 4 GB or more");
    EXPECT_EQ(error.line + error.column, 2u);
}
#endif

// --- Against the naive reader -----------------------------------------------------------------------------

class Generator {
public:
    explicit Generator(std::uint64_t seed) : random_(seed) {}

    std::size_t below(std::size_t count) { return static_cast<std::size_t>(random_() % count); }
    const std::string& oneOf(const std::vector<std::string>& choices) {
        return choices[below(choices.size())];
    }

    std::string text() {
        static const std::vector<std::string> pieces =
            piecesOf(R"(a key \" \\ \n \u00e5 \ud83d \ude00 \/ , {} identifier \uD83D\uDE00  )"
                     "\xC3\xB8 \xF0\x9F\x98\x80");
        std::string result = "\"";
        for (std::size_t i = below(6); i > 0; --i)
            result += oneOf(pieces);
        return result + "\"";
    }

    std::string number() {
        std::string result = below(3) == 0 ? "-" : "";
        result += below(6) == 0 ? "0" : digits(1 + below(below(4) == 0 ? 24 : 10));
        if (below(4) == 0) result += "." + std::to_string(below(10)) + digits(below(20));
        if (below(6) == 0) result += (below(2) == 0 ? "e-" : "E") + std::to_string(below(330));
        return result;
    }

    std::string value(std::size_t depth = 0) {
        const std::size_t kind = below(depth > 5 ? 4 : 7);
        if (kind == 0) return oneOf(piecesOf("true false null"));
        if (kind < 3) return text();
        if (kind == 3) return number();
        const bool isDictionary = kind != 4;
        std::string result = isDictionary ? "{" : "[";
        const std::size_t size = below(below(20) == 0 ? 50 : 6);
        for (std::size_t i = 0; i < size; ++i) {
            if (i != 0) result += "," + space();
            if (isDictionary) result += text() + space() + ":" + space();
            result += value(depth + (size > 6 ? 4 : 1)) + space();
        }
        return result + (isDictionary ? "}" : "]");
    }

    std::string mutated(std::string document) {
        static const std::vector<std::string> edits =
            piecesOf("\" \\ { } [ ] , : 1 - . e true  \n \x01 \xC3 \xED\xA0\xBD \\u 0 \xEF\xBB\xBF \"\"");
        for (std::size_t i = below(3); i > 0 && !document.empty(); --i) {
            const std::size_t at = below(document.size() + 1);
            if (below(3) == 0)
                document.resize(at);
            else if (below(2) == 0)
                document.insert(at, oneOf(edits));
            else
                document.erase(at, 1);
        }
        return document;
    }

    std::string soup() {
        static const std::vector<std::string> tokens =
            piecesOf(R"({ } [ ] , : "a" "b": " \ 1 - 0 true tru null  1.5 1e999 \" [] {} "\ud83d )"
                     "\n \xC3\xA6 \xC3");
        std::string result = below(2) == 0 ? "[" : "";
        for (std::size_t i = below(9); i > 0; --i)
            result += oneOf(tokens);
        return result + (below(2) == 0 ? "]" : "");
    }

private:
    std::string digits(std::size_t count) {
        std::string result;
        for (std::size_t i = 0; i < count; ++i)
            result += static_cast<char>('0' + (i == 0 ? 1 + below(9) : below(10)));
        return result;
    }
    std::string space() { return below(8) == 0 ? oneOf({" ", "\n", "\t ", "\r\n"}) : ""; }

    std::mt19937_64 random_;
};

RC_GTEST_PROP(JSONReader, AgreesOnWellFormedDocuments, (std::uint64_t seed)) {
    Generator generator(seed);
    for (int i = 0; i < 10; ++i) {
        const std::string document = generator.value();
        JSONError error;
        if (!valueOf(document, &error)) RC_ASSERT(error.reason == "a number that no double can hold");
        const auto result = agrees(document);
        if (!result) RC_FAIL(result.message());
    }
}

RC_GTEST_PROP(JSONReader, AgreesOnBrokenDocuments, (std::uint64_t seed)) {
    Generator generator(seed);
    for (int i = 0; i < 30; ++i) {
        const auto result = agrees(generator.mutated(generator.value()));
        if (!result) RC_FAIL(result.message());
        const auto soup = agrees(generator.soup());
        if (!soup) RC_FAIL(soup.message());
    }
}

// A list somewhere in a document, longer than what is looked at together, with large elements and repeated
// keys.
std::string documentWithList(Generator& generator) {
    const std::size_t count = generator.below(3) == 0 ? generator.below(4) : generator.below(4000);
    const auto list = [&](std::size_t elements) {
        std::string text = "[";
        for (std::size_t i = 0; i < elements; ++i) {
            if (i != 0) text += ',';
            if (generator.below(1000) == 0)
                text += "[\"" + repeated("\\\",", generator.below(40'000)) + "\"]";
            else
                text += generator.value(3);
        }
        return text + "]";
    };
    const auto other = [&] {
        if (generator.below(3) != 0) return std::string();
        return generator.text() + ":" + (generator.below(3) == 0 ? list(count) : generator.value()) + ",";
    };
    const auto value = [&](std::string text) {
        return generator.below(8) == 0 ? generator.value() : std::move(text);
    };
    std::string inner = "{" + other();
    if (generator.below(4) == 0) inner += "\"list\":" + value(list(generator.below(50))) + ",";
    inner += "\"l\\u0069st\":" + value(list(count)) + "," + other() + "\"end\":1}";
    std::string outer = "{" + other();
    if (generator.below(4) == 0) outer += "\"in\":" + value(inner) + ",";
    return outer + "\"in\":" + value(inner) + "," + other() + "\"end\":{}}";
}

// Notes what each element is while it is lent, and keeps some of them.
class NotingElements final : public JSONElementHandler {
public:
    explicit NotingElements(std::size_t keepEvery = 5) : keepEvery_(keepEvery) {}
    void element(RepresentationView element) override {
        if (texts.size() % keepEvery_ == 0) kept.emplace_back(element);
        texts.push_back(jsonFromRepresentation(element));
    }
    void startOver() override {
        texts.clear();
        kept.clear();
    }

    std::vector<std::string> texts;
    std::vector<Representation> kept;

private:
    std::size_t keepEvery_;
};

// What is lent, and what is wrong with a document, is what reading all of it says.
RC_GTEST_PROP(JSONReader, LendsWhatItReads, (std::uint64_t seed)) {
    Generator generator(seed);
    JSONReader reader;
    const std::string whole = documentWithList(generator);
    for (const std::string& document : {whole, generator.mutated(whole), generator.value()}) {
        const Exact exact(document);
        JSONError error;
        JSONError lendingError;
        NotingElements elements;
        const auto value = reader.read(exact.view(), &error);
        RC_ASSERT(reader.readElements(exact.view(), "in.list", elements, &lendingError) == value.has_value());
        RC_ASSERT(lendingError.offset == error.offset && lendingError.reason == error.reason);
        if (!value) continue;
        std::vector<std::string> expected;
        if (const auto list = value->view().valueForKeyPath("in.list"))
            for (const RepresentationView element : list->elements())
                expected.push_back(jsonFromRepresentation(element));
        RC_ASSERT(elements.texts == expected);
        const auto lent = reader.lend(exact.view());
        RC_ASSERT(lent && *lent == value->view());
        const Representation keptByItself(*lent);
        RC_ASSERT(reader.lend("[]")->isArray());
        RC_ASSERT(keptByItself == *value);
        for (std::size_t i = 0; i < elements.kept.size(); ++i)
            RC_ASSERT(jsonFromRepresentation(elements.kept[i]) == expected[5 * i]);
    }
}

// Windows end where they can, however the commas lie: elements of many numbers after one text, elements that
// are larger than any window, texts that are nothing but ends of texts.
TEST(JSONReader, LendsElementsWhereverCommasLie) {
    const std::string numbers = repeated("1,", 150'000) + "1]";
    for (const std::string& element : {"[\"a\"," + numbers,
                                       "[" + numbers,
                                       "[{\"a\":1}," + numbers,
                                       "\"" + std::string(300'000, ' ') + "\"",
                                       "\"" + repeated("},", 150'000) + "\"",
                                       "\"" + repeated("\\\",", 100'000) + "\"",
                                       repeated("[", 1000) + numbers + repeated("]", 999)}) {
        for (const char* around : {"[]", "\"b\"", "1"}) {
            const std::string list = std::string(around) + "," + element + "," + around + "," + element;
            const std::string document = R"({"in":{"before":)" + element + R"(,"list":[)" + list + "]}}";
            NotingElements elements;
            JSONReader reader(2000);
            ASSERT_TRUE(reader.readElements(document, "in.list", elements)) << printable(document);
            EXPECT_TRUE(elements.texts == (std::vector<std::string>{around, element, around, element}));
        }
    }
}

// Whoever keeps all elements keeps little more than them.
TEST(JSONReader, LendsWithoutWasteWhatIsKept) {
    CountingZone zone;
    JSONReader reader(10, &zone);
    for (const std::string& before : {"\"\""s, "\"" + repeated("\\\",", 100'000) + "\""}) {
        NotingElements elements(1);
        const std::string document =
            "{\"b\":" + before + ",\"a\":[" + joined(std::vector<std::string>(2000, "1")) + "]}";
        EXPECT_TRUE(reader.readElements(document, "a", elements));
        EXPECT_EQ(elements.kept.size(), 2000u);
        EXPECT_LT(zone.bytes(), 2000u * 4096);
    }
}

// The handler's exception passes through, the depth counts from the document's root, and all memory comes
// back.
TEST(JSONReader, LendsWithinItsLimits) {
    class Throwing final : public JSONElementHandler {
        void element(RepresentationView) override { throw std::domain_error("enough"); }
        void startOver() override {}
    };
    CountingZone zone;
    {
        JSONReader reader(3, &zone);
        Throwing throwing;
        EXPECT_THROW(reader.readElements(R"({"a":[1,2]})", "a", throwing), std::domain_error);
        NotingElements elements;
        EXPECT_TRUE(reader.readElements(R"({"a":[[1],{}]})", "a", elements));
        EXPECT_EQ(elements.texts, (std::vector<std::string>{"[1]", "{}"}));
        JSONError error;
        EXPECT_FALSE(reader.readElements(R"({"a":[[[1]]]})", "a", elements, &error));
        EXPECT_EQ(error.column, 8u);
        EXPECT_FALSE(reader.readElements(R"({"a":{"b":{"c":{}}}})", "a.b.c", elements, &error));
        EXPECT_EQ(error.column, 16u);
        EXPECT_TRUE(reader.readElements("[1]", "a", elements));
        EXPECT_TRUE(reader.lend("\"" + std::string(1'000'000, 'x') + "\""));
        EXPECT_TRUE(reader.lend("[]"));
        EXPECT_LE(zone.bytes(), 200'000u) << "what a large document needs is not kept for the next one";
    }
    EXPECT_EQ(zone.pieces(), 0u);
}

}  // namespace
