// The promise: a model's JSON has every declared property in the order of declaration, each kind of value in
// its own form, and null where there is nothing.

#include "JSON/JSONFromValue.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "QELModels/Values/Date.h"
#include "QELModels/Values/URL.h"
#include "tests/JSONSupport.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace {

TEST(JSONFromValue, EveryKindHasItsForm) {
    const auto asset = test::assetFrom(R"({"flightTimes": {"end": 2.5}, "additional": {"chapters": [
        {"timeline": 9}, null], "featuredChapters": []}})");
    const QELAssetAdditional* additional = asset->assetAdditional();
    const struct {
        Value value;
        std::string expected;
    } rows[] = {
        {Value(), "null"},
        {Number(1000.0), "1000"},
        {Number(true), "true"},
        {Value::text("Sm\xC3\xA5 \"ord\"\n\xED\xA0\xBD"), "\"Sm\xC3\xA5 \\\"ord\\\"\\n\\ud83d\""},
        {Value::url(*URLView::parse("https://tv.example/a?[b]")), "\"https://tv.example/a?[b]\""},
        {dateFromSecondsSince1970(1442829605.25), "1442829605.25"},
        {dateFromSecondsSince1970(std::numeric_limits<double>::quiet_NaN()), "null"},
        {Color{0.5, 0.25, 1, 0.125}, R"({"red":0.5,"green":0.25,"blue":1,"alpha":0.125})"},
        {test::json(R"({"b":[1,"x",null],"a":{}})"), R"({"b":[1,"x",null],"a":{}})"},
        {Value(asset->flightTimes()), R"({"flightStart":null,"flightEnd":2.5})"},
        {Value(additional->chapters()),
         R"([{"title":null,"chapterDescription":null,"timeline":9,"featured":false},)"
         R"({"title":null,"chapterDescription":null,"timeline":null,"featured":false}])"},
        {Value(additional->featuredChapters()), "[]"},
        {Value(additional->cuePoints()), "null"},
    };
    for (const auto& [value, expected] : rows)
        EXPECT_EQ(jsonFromValue(value), expected);
    EXPECT_EQ(jsonFromValue(Value(asset->flightTimes()), JSONWriter::Layout::indented),
              "{\n  \"flightStart\": null,\n  \"flightEnd\": 2.5\n}");
}

}  // namespace
}  // namespace QELMODELS_ABI
}  // namespace QELModels
