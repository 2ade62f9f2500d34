// What is an asset's own: the words for its types, the flags of its stream, which records it holds,
// and the order of its cue points. What all records have in common, equality too, is in RecordsTest.

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "QELModels/Models/QELAssetAdditional+Utils.h"
#include "tests/JSONSupport.h"

namespace QELModels::test {
namespace {

TEST(Asset, HasTypesByExactWords) {
    const struct {
        std::string_view text, streamType, assetType;
    } rows[] = {
        {R"({"streamType": "live", "assetType": "audio"})", "2", "1"},
        {R"({"streamType": "wasLive", "assetType": "video"})", "1", "0"},
        {R"({"streamType": "vod", "assetType": "live"})", "0", "0"},
        {R"({"streamType": "LIVE", "assetType": "audio "})", "0", "0"},
        {R"({"streamType": "live ", "assetType": ""})", "0", "0"},
        {R"({"streamType": ["live"], "assetType": ["audio"]})", "0", "0"},
        {R"({"streamType": 2, "assetType": null})", "0", "0"},
    };
    for (const auto& [text, streamType, assetType] : rows) {
        EXPECT_EQ(showAt(*assetFrom(text), "streamType"), streamType) << text;
        EXPECT_EQ(showAt(*assetFrom(text), "assetType"), assetType) << text;
    }
}

TEST(Asset, FoldsTheProtectionsOfItsStreamIntoFlags) {
    const struct {
        std::string_view properties, configuration;
    } rows[] = {
        {R"(["tokenSecured"])", "1"},
        {R"(["encrypted"])", "2"},
        {R"(["geoblocked"])", "4"},
        {R"(["playerVerified"])", "8"},
        {R"(["playerVerified", "geoblocked", "encrypted", "tokenSecured"])", "15"},
        {R"(["encrypted", "other", "encrypted"])", "2"},
        {R"(["TokenSecured", "geo", "encrypted "])", "16"},
        {R"([["encrypted"], 2, null, {"encrypted": 1}])", "16"},
        {"[]", "16"},
        {R"("encrypted")", "16"},
    };
    for (const auto& [properties, configuration] : rows) {
        const auto stream =
            mapped<QELStreamConfiguration>(R"({"properties": )" + std::string(properties) + '}');
        EXPECT_EQ(showAt(*stream, "configuration"), configuration) << properties;
    }
}

TEST(Asset, HoldsRecordsOfTheDeclaredClassesAlone) {
    const auto asset = assetFrom(R"({"series": {}, "category": {},
        "additional": {"nextAsset": {}, "chapters": [{}, {}], "cuePoints": [{}]}})");
    const Value series(asset->series());
    const Value category(asset->category());
    const Value chapters(asset->assetAdditional()->chapters());
    const Value cuePoints(asset->assetAdditional()->cuePoints());
    EXPECT_EQ(showAt(*recordWith<QELAsset>("series", series), "series"), "QELAssetSeries");
    EXPECT_EQ(showAt(*recordWith<QELAssetAdditional>("chapters", chapters), "chapters"), "[2]");
    for (const Value& wrong : {category, chapters, Value(Number(7))})
        EXPECT_FALSE(recordWith<QELAsset>("series", wrong)) << show(wrong);
    for (const Value& wrong : {category, cuePoints, Value(Number(7))})
        EXPECT_FALSE(recordWith<QELAssetAdditional>("chapters", wrong)) << show(wrong);
}

TEST(Asset, SortsItsCuePointsWithoutChangingThem) {
    const auto timelines = [](const auto& cuePoints) {
        std::string shown;
        for (const QELAssetCuePoint& cuePoint : cuePoints)
            shown += showAt(cuePoint, "timeline") + ' ';
        return shown;
    };
    const struct {
        std::string_view cuePoints, listed, sorted;
    } rows[] = {
        {R"([{"timeline": 30}, {"timeline": 10}, {"timeline": 20}])", "30 10 20 ", "10 20 30 "},
        {R"([{"timeline": 5}, {}, {"timeline": -1.5}, {}])", "5 null -1.5 null ", "null null -1.5 5 "},
        {R"([{"timeline": 1}, {"timeline": true}, {"timeline": 0}])", "1 true 0 ", "0 1 true "},
        {R"([{"timeline": 9007199254740993}, {"timeline": 9007199254740992}])",
         "9007199254740993 9007199254740992 ",
         "9007199254740992 9007199254740993 "},
        {"[]", "", ""},
        {"null", "none", ""},
    };
    for (const auto& [cuePoints, listed, sorted] : rows) {
        const auto additional =
            mapped<QELAssetAdditional>(R"({"cuePoints": )" + std::string(cuePoints) + '}');
        EXPECT_EQ(timelines(*sortedAdCuePoints(*additional)), sorted);
        EXPECT_EQ(additional->cuePoints() == nullptr ? "none" : timelines(*additional->cuePoints()), listed);
    }
}

}  // namespace
}  // namespace QELModels::test
