// The promise: what the writer writes is JSON, the same bytes for the same value, exact to the last code
// unit, in two layouts. Other tests compare through it, at any depth.

#include <JSON/JSONReader.h>
#include <JSON/JSONWriter.h>
#include <gtest/gtest.h>

#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "tests/Doubles.h"

namespace {

using namespace QELModels;
using namespace std::string_view_literals;
using test::kInfinity;
using test::kNaN;
using Layout = JSONWriter::Layout;

std::string written(const Representation& value, Layout layout = Layout::compact) {
    return jsonFromRepresentation(value, layout);
}

TEST(JSONWriter, Scalars) {
    struct Row {
        Representation value;
        std::string text;
    };
    const Row rows[] = {
        {nullptr, "null"},
        {true, "true"},
        {false, "false"},
        {42, "42"},
        {-0.0, "0"},
        {100000.0, "100000"},
        {std::numeric_limits<std::uint64_t>::max(), "18446744073709551615"},
        {kNaN, "null"},
        {-kInfinity, "null"},
        {"", R"("")"},
        {"bl\u00e5 \U0001F600 / \x7F \u2028 <&>", "\"bl\u00e5 \U0001F600 / \x7F \u2028 <&>\""},
        {"\"\\\b\f\n\r\t\x01\x1F\0"sv, R"("\"\\\b\f\n\r\t\u0001\u001f\u0000")"},
        {"\xED\xA0\xBD", R"("\ud83d")"},
        {"a\xED\xB8\x80\xED\xA0\xBD\n", R"("a\ude00\ud83d\n")"},
        // Hangul shares its first byte with the surrogates.
        {"\xED\x95\x9C\xED\x9F\xBF\xEE\x80\x80", "\"\xED\x95\x9C\xED\x9F\xBF\xEE\x80\x80\""},
    };
    for (const auto& [value, text] : rows) {
        EXPECT_EQ(written(value), text);
        EXPECT_EQ(written(value, Layout::indented), text);
        EXPECT_EQ(written(Representation::array({value})), "[" + text + "]");
    }
}

TEST(JSONWriter, Layouts) {
    const std::string compact = R"({"a":1,"":[],"b":{},"c":[["x"],{"e\n":null},[[]]],"g":"\ud83d"})";
    const std::string indented =
        "{\n  \"a\": 1,\n  \"\": [],\n  \"b\": {},\n  \"c\": [\n    [\n      \"x\"\n    ],\n"
        "    {\n      \"e\\n\": null\n    },\n    [\n      []\n    ]\n  ],\n  \"g\": \"\\ud83d\"\n}";
    for (const std::string& text : {compact, indented}) {
        const auto value = representationFromJSON(text);
        ASSERT_TRUE(value);
        EXPECT_EQ(written(*value), compact);
        EXPECT_EQ(written(*value, Layout::indented), indented);
    }
}

}  // namespace
