// What a document says of an asset stands in the asset and in the records nested in it, and two assets are
// equal exactly when what counts in them is.

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "QELModels/Models/QELAssetAdditional+Utils.h"
#include "tests/TestSupport.h"

namespace QELModels::test {
namespace {

TEST(Asset, isFilledFromItsDocument) {
    const struct {
        std::string_view text, path, shown;
    } rows[] = {
        {R"({"id": 42, "streamType": "live"})", "assetIdentifier", "42"},
        {R"({"id": 42, "streamType": "live"})", "streamType", "2"},
        {R"({"id": 42, "streamType": "live"})", "assetType", "0"},
        {R"({"id": 18446744073709551615})", "assetIdentifier", "18446744073709551615"},
        {R"({"id": "42"})", "assetIdentifier", "null"},
        {R"({"streamType": "vod"})", "streamType", "0"},
        {R"({"streamType": "wasLive"})", "streamType", "1"},
        {R"({"streamType": "LIVE"})", "streamType", "0"},
        {R"({"streamType": "live "})", "streamType", "0"},
        {R"({"streamType": ["live"]})", "streamType", "0"},
        {R"({"streamType": 2})", "streamType", "0"},
        {R"({"streamType": null})", "streamType", "0"},
        {R"({"assetType": "audio"})", "assetType", "1"},
        {R"({"assetType": "video"})", "assetType", "0"},
        {R"({"assetType": "live"})", "assetType", "0"},
        {R"({"created": 1420070400})", "createdAt", "@1420070400"},
        {R"({"created": -0.25})", "createdAt", "@-0.25"},
        {R"({"created": "1420070400"})", "createdAt", "null"},
        {R"({"title": "<p>A &amp;<br/> B</p>"})", "title", R"("A & B")"},
        {R"({"title": "&lt;b&gt;"})", "title", R"("<b>")"},
        {R"({"title": ""})", "title", R"("")"},
        {R"({"title": "<b></b>"})", "title", R"("")"},
        {R"({"title": 5})", "title", "null"},
        {R"({"status": "<i>&amp;</i>"})", "status", R"("<i>&amp;</i>")"},
        {R"({"status": ""})", "status", R"("")"},
        {R"({"articleUrl": "../x?t[]=1#y"})", "articleUrl", "<../x?t[]=1#y>"},
        {R"({"articleUrl": ""})", "articleUrl", "<>"},
        {R"({"additional": {"url": "a b"}})", "assetAdditional.url", R"("a b")"},
        {R"({"additional": {"barrels": [{"a": [1, "x", null]}, 2.50]}})",
         "assetAdditional.barrels",
         R"([{"a":[1,"x",null]},2.5])"},
        {R"({"additional": {"metadata": {"z": 1, "a": {"b": []}}}})",
         "assetAdditional.metadata",
         R"({"z":1,"a":{"b":[]}})"},
        {R"({"additional": {"chapters": [{"title": "<b>T</b>", "description": "&#229;"}]}})",
         "assetAdditional.chapters[0].title",
         R"("T")"},
        {R"({"additional": {"chapters": [{"title": "<b>T</b>", "description": "&#x41;"}]}})",
         "assetAdditional.chapters[0].chapterDescription",
         R"("A")"},
        {R"({"images": {"main": 5, "front": "f:"}})", "images.main", "null"},
        {R"({"images": {"main": 5, "front": "f:"}})", "images.front", "<f:>"},
        {R"({"streamConfiguration": {"properties": ["a", 1, null]}})",
         "streamConfiguration.properties",
         R"(["a",1,null])"},
    };
    for (const auto& [text, path, shown] : rows)
        EXPECT_EQ(showAt(*assetFrom(text), path), shown) << text << ' ' << path;
}

TEST(Asset, foldsTheProtectionsOfItsStreamIntoFlags) {
    const struct {
        std::string_view properties, configuration;
    } rows[] = {
        {R"(["tokenSecured"])", "1"},
        {R"(["encrypted"])", "2"},
        {R"(["geoblocked"])", "4"},
        {R"(["playerVerified"])", "8"},
        {R"(["tokenSecured", "geoblocked"])", "5"},
        {R"(["playerVerified", "geoblocked", "encrypted", "tokenSecured"])", "15"},
        {R"(["encrypted", "other", "encrypted"])", "2"},
        {R"(["TokenSecured", "geo", "encrypted "])", "16"},
        {R"([["encrypted"], 2, null, {"encrypted": 1}])", "16"},
        {"[]", "16"},
        {"null", "16"},
        {R"("encrypted")", "16"},
    };
    for (const auto& [properties, configuration] : rows)
        EXPECT_EQ(
            showAt(*mapped<QELStreamConfiguration>(R"({"properties": )" + std::string(properties) + '}'),
                   "configuration"),
            configuration)
            << properties;
}

TEST(Asset, isEqualWhenWhatCountsIsEqual) {
    const struct {
        std::string_view a, b;
        bool equal;
    } rows[] = {
        {"{}", "{}", true},
        {R"({"displays": 1, "showDisplays": true, "created": 1, "updated": 2, "published": 3, "id": 7})",
         R"({"displays": 2, "showDisplays": false, "created": 4, "updated": 5, "id": 7})",
         true},
        {R"({"id": 1})", R"({"id": 1.0})", true},
        {R"({"id": 1})", R"({"id": true})", true},
        {R"({"id": 9007199254740993})", R"({"id": 9007199254740992.0})", false},
        {R"({"title": "&amp;"})", R"({"title": "<i>&</i>"})", true},
        {R"({"title": ""})", "{}", false},
        {R"({"title": null})", "{}", true},
        {R"({"title": "a"})", R"({"titleFront": "a"})", false},
        {R"({"title": "\ud83d\ude00"})", "{\"title\": \"\xF0\x9F\x98\x80\"}", true},
        {R"({"title": "\ud83d"})", R"({"title": "\ufffd"})", false},
        {R"({"articleUrl": "http://a/%7Eb"})", R"({"articleUrl": "http://a/~b"})", false},
        {R"({"images": {}})", R"({"images": {}})", false},
        {R"({"series": {}})", R"({"series": {}})", false},
        {R"({"flightTimes": {}})", R"({"flightTimes": {}})", false},
        {R"({"images": null})", "{}", true},
        {R"({"category": {"id": 1}})", R"({"category": {"id": 1}})", true},
        {R"({"category": {"id": 1}})", R"({"category": {"id": 2}})", false},
        {R"({"category": {}})", "{}", false},
        {R"({"streamUrls": {"hls": "a:", "hds": "b:"}})",
         R"({"streamUrls": {"hls": "a:", "hds": "b:", "mp4": "c:"}})",
         false},
        {R"({"streamUrls": {}})", R"({"streamUrls": {"hls": 1}})", true},
        {R"({"streamConfiguration": {"properties": ["encrypted", "geoblocked"]}})",
         R"({"streamConfiguration": {"properties": ["geoblocked", "encrypted"]}})",
         false},
        {R"({"additional": {"metadata": {"a": 1, "b": [2]}}})",
         R"({"additional": {"metadata": {"b": [2.0], "a": true}}})",
         true},
        {R"({"additional": {"barrels": [1, 2]}})", R"({"additional": {"barrels": [2, 1]}})", false},
        {R"({"additional": {"chapters": []}})", R"({"additional": {"chapters": []}})", true},
        {R"({"additional": {"chapters": []}})", R"({"additional": {}})", false},
        {R"({"additional": {"chapters": [{}]}})", R"({"additional": {"chapters": [{}]}})", false},
        {R"({"additional": {"cuePoints": [{}]}})", R"({"additional": {"cuePoints": [{}]}})", false},
        {R"({"additional": {"nextAsset": {"id": 1}}})", R"({"additional": {"nextAsset": {"id": 1}}})", false},
        {R"({"additional": {"subtitles": [{"url": "a:"}]}})",
         R"({"additional": {"subtitles": [{"url": "a:"}]}})",
         true},
        {R"({"additional": {"subtitles": [{"url": "a:"}, {}]}})",
         R"({"additional": {"subtitles": [{"url": "a:"}]}})",
         false},
        {R"({"additional": {"settings": {"notes": "a"}}})",
         R"({"additional": {"settings": {"notes": "b"}}})",
         false},
        {R"({"additional": {"settings": {}}})", R"({"additional": {"settings": {"showAds": 0}}})", true},
    };
    for (const auto& [textA, textB, equal] : rows) {
        const auto a = assetFrom(textA);
        const auto b = assetFrom(textB);
        EXPECT_EQ(a->isEqual(b.get()), equal) << textA << ' ' << textB;
        EXPECT_EQ(b->isEqualToAsset(a.get()), equal) << textA << ' ' << textB;
        EXPECT_TRUE(!equal || a->hash() == b->hash()) << textA << ' ' << textB;
        const auto copied = copy(*a);
        EXPECT_TRUE(a->isEqual(copied.get()) && copied->hash() == a->hash()) << textA;
    }
}

TEST(Asset, sortsItsCuePointsWithoutChangingThem) {
    const struct {
        std::string_view cuePoints, sorted;
    } rows[] = {
        {R"([{"timeline": 30}, {"timeline": 10}, {"timeline": 20}])", "10 20 30 "},
        {R"([{"timeline": 5}, {}, {"timeline": -1.5}, {"timeline": null}])", "null null -1.5 5 "},
        {R"([{"timeline": 1}, {"timeline": true}, {"timeline": 0}, {"timeline": 1.0}])", "0 1 true 1 "},
        {R"([{"timeline": 9007199254740993}, {"timeline": 9007199254740992}, {"timeline": 1e300}])",
         "9007199254740992 9007199254740993 1e+300 "},
        {"[]", ""},
        {"null", ""},
    };
    for (const auto& [cuePoints, expected] : rows) {
        const auto additional =
            mapped<QELAssetAdditional>(R"({"cuePoints": )" + std::string(cuePoints) + '}');
        const std::string before = additional->cuePoints() == nullptr || additional->cuePoints()->empty()
                                       ? ""
                                       : showAt(*additional, "cuePoints[0].timeline");
        const auto sorted = sortedAdCuePoints(*additional);
        ASSERT_TRUE(sorted);
        std::string shown;
        for (const QELAssetCuePoint& cuePoint : *sorted)
            shown += showAt(cuePoint, "timeline") + ' ';
        EXPECT_EQ(shown, expected) << cuePoints;
        if (!before.empty()) {
            EXPECT_EQ(showAt(*additional, "cuePoints[0].timeline"), before);
        }
    }
}

}  // namespace
}  // namespace QELModels::test
