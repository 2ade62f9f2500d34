// Promise: a model's JSON has every declared property in the order of declaration, each kind of value in its
// own form, and null where there is nothing.

#include "JSON/JSONFromValue.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "QELModels/Mappers/QELAssetMapper.h"
#include "QELModels/Mappers/QELCategoryMapper.h"
#include "QELModels/Models/QELFlightTimes.h"
#include "QELModels/Values/Date.h"
#include "QELModels/Values/URL.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace {

using Layout = JSONWriter::Layout;
template <class... Elements>
Representation array(Elements... elements) {
    return Representation::array({Representation(elements)...});
}

TEST(JSONFromValue, EveryKindHasItsForm) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    const struct {
        Value value;
        std::string expected;
    } rows[] = {
        {Value(), "null"},
        {Number(1000.0), "1000"},
        {Number(-0.25), "-0.25"},
        {Number(true), "true"},
        {Number(18446744073709551615U), "18446744073709551615"},
        {Value::text("Sm\xC3\xA5 \"ord\"\n\xED\xA0\xBD"), "\"Sm\xC3\xA5 \\\"ord\\\"\\n\\ud83d\""},
        {Value::url(*URLView::parse("https://tv.example/a?[b]")), "\"https://tv.example/a?[b]\""},
        {dateFromSecondsSince1970(1442829605.25), "1442829605.25"},
        {dateFromSecondsSince1970(nan), "null"},
        {Color{0.5, 0.25, 1, 0.125}, R"({"red":0.5,"green":0.25,"blue":1,"alpha":0.125})"},
        {Representation{{"b", array(1, "x", nullptr)}, {"a", Representation::dictionary({})}},
         R"({"b":[1,"x",null],"a":{}})"},
    };
    for (const auto& row : rows)
        EXPECT_EQ(jsonFromValue(row.value), row.expected);
}

TEST(JSONFromValue, RecordsNestInTheOrderOfDeclaration) {
    const Representation document{
        {"flightTimes", Representation{{"end", 2.5}}},
        {"streamConfiguration", Representation{{"properties", array("geoblocked", "tokenSecured", 7)}}},
        {"streamType", "live"},
        {"assetType", "audio"},
        {"showDisplays", true},
        {"additional",
         Representation{{"chapters", Representation::array({Representation{{"timeline", 9}}, nullptr})},
                        {"featuredChapters", Representation::array({})},
                        {"metadata", Representation{{"z", 1}, {"y", 2}}}}}};
    const auto asset = QELAssetMapper().mappedResponseFromJSONObject(document);
    EXPECT_EQ(
        jsonFromValue(asset),
        R"({"assetIdentifier":null,"title":null,"titleFront":null,"assetDescription":null,)"
        R"("assetDescriptionFront":null,"displays":null,"showDisplays":true,"createdAt":null,"updatedAt":null,)"
        R"("publishedAt":null,"flightTimes":{"flightStart":null,"flightEnd":2.5},"duration":null,"assetType":1,)"
        R"("streamType":2,"status":null,"series":null,)"
        R"("streamConfiguration":{"properties":["geoblocked","tokenSecured",7],"configuration":5},)"
        R"("articleUrl":null,"category":null,"images":null,"streamUrls":null,)"
        R"("assetAdditional":{"settings":null,"barrels":null,"featuredChapters":[],)"
        R"("chapters":[{"title":null,"chapterDescription":null,"timeline":9,"featured":false},)"
        R"({"title":null,"chapterDescription":null,"timeline":null,"featured":false}],)"
        R"("cuePoints":null,"sourceFiles":null,"externalCategoryIdentifier":null,"externalIdentifier":null,)"
        R"("nextAsset":null,"metadata":{"z":1,"y":2},"access":null,"subtitles":null,"imageCaption":null,)"
        R"("url":null}})");
    EXPECT_EQ(jsonFromValue(Value(asset->flightTimes()), Layout::indented),
              "{\n  \"flightStart\": null,\n  \"flightEnd\": 2.5\n}");
}

TEST(JSONFromValue, AListThatIsNullIsNotAnEmptyOne) {
    const auto asset = QELAssetMapper().mappedResponseFromJSONObject(
        Representation{{"additional", Representation{{"chapters", Representation::array({})}}}});
    std::string text;
    JSONWriter writer(text);
    writer.beginArray();
    writeJSON(writer, asset->assetAdditional()->chapters());
    writeJSON(writer, asset->assetAdditional()->cuePoints());
    writer.endArray();
    EXPECT_EQ(text, "[[],null]");
}

}  // namespace
}  // namespace QELMODELS_ABI
}  // namespace QELModels
