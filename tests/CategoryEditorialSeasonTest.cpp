// Categories, editorials and seasons are filled from their documents, find each other's keys, and a season
// knows which episode follows.

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include "QELModels/Models/QELCategory+Utilities.h"
#include "QELModels/Models/QELEditorial+Utilities.h"
#include "QELModels/Models/QELSeason+Utilities.h"
#include "tests/TestSupport.h"

namespace QELModels::test {
namespace {

struct Row {
    std::string_view text, path, shown;
};

TEST(Category, isFilledFromItsDocument) {
    const Row rows[] = {
        {R"({"title": "<b>N&aring;</b>"})", "title", "\"N\xC3\xA5\""},
        {R"({"title": 5})", "title", "null"},
        {R"({"stats": "<b>"})", "stats", R"("<b>")"},
        {R"({"additional": {"assets": [1], "showPlayerLogo": true}})", "additional.assets", "null"},
        {R"({"additional": {"assets": [1], "showPlayerLogo": true}})", "additional.showPlayerLogo", "false"},
        {R"({"additional": {"description": "<p>a</p>"}})", "additional.categoryDescription", R"("a")"},
        {R"({"additional": {"description": ["a"]}})", "additional.categoryDescription", "null"},
        {R"({"additional": {"image": 1, "logo": "l:"}})", "additional.image", "null"},
        {R"({"additional": {"image": 1, "logo": "l:"}})", "additional.logo", "<l:>"},
        {R"({"additional": {"playerLogoImage": "a b"}})", "additional.playerLogoImage", R"("a b")"},
        {R"({"additional": {"backgroundColor": "#FF8000"}})", "additional.backgroundColor", "#(255 128 0 1)"},
        {R"({"additional": {"backgroundColor": "FF8000"}})", "additional.backgroundColor", "null"},
        {R"({"additional": {"backgroundColor": "#zz0000"}})", "additional.backgroundColor", "#(0 0 0 1)"},
        {R"({"additional": {"backgroundColor": null}})", "additional.backgroundColor", "null"},
        {R"({"additional": {"playerBranding": {"id": 9}}})",
         "additional.playerBranding.playerBrandingIdentifier",
         "9"},
    };
    for (const auto& [text, path, shown] : rows)
        EXPECT_EQ(showAt(*mapped<QELCategory>(text), path), shown) << text << ' ' << path;
}

TEST(Category, tellsNullFromEmptyWhenCompared) {
    const struct {
        std::string_view a, b;
        bool equal;
    } rows[] = {
        {R"({"additional": {}})", "{}", false},
        {R"({"additional": {"playerBranding": {}}})", R"({"additional": {}})", false},
        {R"({"additional": {"assets": [1], "showPlayerLogo": true}})", R"({"additional": {}})", true},
        {R"({"additional": {"backgroundColor": "#00000a"}})",
         R"({"additional": {"backgroundColor": "#00000A"}})",
         true},
        {R"({"additional": {"backgroundColor": "#00000a"}})",
         R"({"additional": {"backgroundColor": "#00000b"}})",
         false},
        {R"({"lastAsset": {}})", R"({"lastAsset": {"id": null}})", true},
        {R"({"lastAsset": {"id": 1}})", R"({"lastAsset": {"id": 1.0}})", true},
        {R"({"lastAsset": {}})", "{}", false},
    };
    for (const auto& [a, b, equal] : rows) {
        EXPECT_EQ(mapped<QELCategory>(a)->isEqual(mapped<QELCategory>(b).get()), equal) << a << ' ' << b;
        EXPECT_EQ(mapped<QELCategory>(b)->isEqual(mapped<QELCategory>(a).get()), equal) << a << ' ' << b;
    }
    LogLines log;
    EXPECT_EQ(*mapped<QELCategoryAdditionalPlayerBranding>(R"({"link": "no url"})"),
              *mapped<QELCategoryAdditionalPlayerBranding>("{}"));
    EXPECT_EQ(log.lines, std::vector<std::string>{"Unable to transform URL no url"});
}

TEST(Category, hasKeysAndADeviceRule) {
    const struct {
        std::string_view text, key, parentKey;
        bool allDevices;
    } rows[] = {
        {R"({"id": 42, "parentId": 7})", "category-42", "category-7", true},
        {"{}", "category-(null)", "category-(null)", true},
        {R"({"id": 42.5, "parentId": -1, "additional": {}})", "category-42.5", "category--1", false},
        {R"({"id": true, "parentId": 1e21, "additional": {"allowAllDevices": true}})",
         "category-1",
         "category-1e+21",
         true},
        {R"({"id": 18446744073709551615, "parentId": 100000.0})",
         "category-18446744073709551615",
         "category-100000",
         true},
    };
    for (const auto& row : rows) {
        const auto category = mapped<QELCategory>(row.text);
        EXPECT_EQ(editorialKey(*category), row.key);
        EXPECT_EQ(parentCategoryEditorialKey(*category), row.parentKey);
        EXPECT_EQ(allowAllDevices(*category), row.allDevices) << row.text;
    }
}

TEST(Editorial, isFilledFromItsDocument) {
    const Row rows[] = {
        {R"({"key": "<b>", "assetsIds": [1, "2", null]})", "key", R"("<b>")"},
        {R"({"key": "k", "assetsIds": [1, "2", null]})", "assetsIdentifiers", R"([1,"2",null])"},
        {R"({"_embedded": {"assets": [{"id": 1}, {"id": 2}]}})", "assets[1].assetIdentifier", "2"},
        {R"({"assets": [{"id": 1}]})", "assets", "null"},
        {R"({"_embedded": {"assets": []}, "assetsIds": []})", "assets", "[0]"},
        {R"({"_embedded": {}})", "assets", "null"},
        {R"({"_embedded": [{"assets": []}]})", "assets", "null"},
    };
    for (const auto& [text, path, shown] : rows)
        EXPECT_EQ(showAt(*mapped<QELEditorial>(text), path), shown) << text << ' ' << path;
    const auto editorial = [](std::string_view text) { return mapped<QELEditorial>(text); };
    EXPECT_NE(*editorial(R"({"assetsIds": []})"), *editorial("{}"));
    EXPECT_EQ(*editorial(R"({"_embedded": {"assets": [{"id": 1}]}})"),
              *editorial(R"({"_embedded": {"assets": [{"id": 1, "displays": 9}]}})"));
    EXPECT_NE(*editorial(R"({"_embedded": {"assets": [{"id": 1}]}})"),
              *editorial(R"({"_embedded": {"assets": [{"id": 1}, {"id": 1}]}})"));
}

TEST(Editorial, readsTheCategoryFromItsKey) {
    constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
    constexpr std::int64_t kLeast = std::numeric_limits<std::int64_t>::min();
    const struct {
        std::string_view key;
        std::int64_t identifier;
    } rows[] = {
        {"category-42", 42},
        {"front", -1},
        {"", -1},
        {"category", -1},
        {"Category-5", -1},
        {"category-", 0},
        {"category-abc", 0},
        {"category-(null)", 0},
        {"news-category-7", 0},
        {"category-12category-3", 123},
        {"1category-2x3", 12},
        {"catecategory-gory-5", 0},
        {"catecategory-gory-category-5", 0},
        {"category-category-6", 6},
        {"7category-", 7},
        {"category--42", -42},
        {"-category-42", -42},
        {"category-+42", 42},
        {"category-+-42", 0},
        {"category- \\t\\r\\n\\u000b\\u000c 42", 42},
        {"category-\\u00a042", 0},
        {"category-- 42", 0},
        {"category-4 2", 4},
        {"category-42.9", 42},
        {"category-0x10", 0},
        {"category-007", 7},
        {"category-\\uff14\\uff12", 0},
        {"category-4category- 2", 4},
        {"category-\\u0000 4", 0},
        {"category-9223372036854775806", kMost - 1},
        {"category-9223372036854775807", kMost},
        {"category-9223372036854775808", kMost},
        {"category-99999999999999999999999", kMost},
        {"category--9223372036854775807", kLeast + 1},
        {"category--9223372036854775808", kLeast},
        {"category--9223372036854775809", kLeast},
        {"category--18446744073709551617", kLeast},
    };
    for (const auto& [key, identifier] : rows)
        EXPECT_EQ(categoryIdentifier(*mapped<QELEditorial>(R"({"key": ")" + std::string(key) + "\"}")),
                  identifier)
            << key;
    EXPECT_EQ(categoryIdentifier(*mapped<QELEditorial>("{}")), -1);
    EXPECT_EQ(categoryIdentifier(*mapped<QELEditorial>(R"({"key": 42})")), -1);
}

std::string episodes(std::string_view numbers) {
    std::string list;
    for (const char number : numbers)
        list += (list.empty() ? R"({"id": )" : R"(, {"id": )") + std::string{number} +
                R"(0, "series": {"episodeNumber": )" + number + "}}";
    return "[" + list + "]";
}

TEST(Season, knowsWhichEpisodeFollows) {
    const struct {
        std::string season, video, next;
    } rows[] = {
        {R"({"seasonNumber": 2, "assets": )" + episodes("1234") + "}",
         R"({"seasonNumber": 2, "episodeNumber": 2})",
         "30"},
        {R"({"seasonNumber": 2, "assets": )" + episodes("4321") + "}",
         R"({"seasonNumber": 2, "episodeNumber": 2})",
         "40"},
        {R"({"seasonNumber": 2, "assets": )" + episodes("1423") + "}",
         R"({"seasonNumber": 2, "episodeNumber": 2.5})",
         "40"},
        {R"({"seasonNumber": 2, "assets": )" + episodes("1234") + "}",
         R"({"seasonNumber": 2, "episodeNumber": 4})",
         "null"},
        {R"({"seasonNumber": 2, "assets": )" + episodes("1234") + "}",
         R"({"seasonNumber": 2.0, "episodeNumber": 3})",
         "40"},
        {R"({"seasonNumber": 1, "assets": )" + episodes("12") + "}",
         R"({"seasonNumber": true, "episodeNumber": 1})",
         "20"},
        {R"({"seasonNumber": 2, "assets": )" + episodes("1234") + "}",
         R"({"seasonNumber": 1, "episodeNumber": 2})",
         "null"},
        {R"({"seasonNumber": 2, "assets": )" + episodes("1234") + "}", R"({"seasonNumber": 2})", "null"},
        {R"({"seasonNumber": 2, "assets": )" + episodes("1234") + "}", R"({"episodeNumber": 2})", "null"},
        {R"({"assets": )" + episodes("1234") + "}", R"({"episodeNumber": 2})", "null"},
        {R"({"assets": )" + episodes("1234") + "}", R"({"seasonNumber": 2, "episodeNumber": 2})", "null"},
        {R"({"seasonNumber": 2})", R"({"seasonNumber": 2, "episodeNumber": 2})", "null"},
        {R"({"seasonNumber": 2, "assets": []})", R"({"seasonNumber": 2, "episodeNumber": 2})", "null"},
        {R"({"seasonNumber": 2, "assets": [{"id": 1}, {"id": 2, "series": {}},
            {"id": 3, "series": {"episodeNumber": 9}}]})",
         R"({"seasonNumber": 2, "episodeNumber": 2})",
         "3"},
    };
    for (const auto& row : rows) {
        const auto season = mapped<QELSeason>(row.season);
        const auto video = assetFrom(R"({"id": 5, "series": )" + row.video + '}');
        const QELAsset* next = nextVideoForVideo(*season, video.get());
        EXPECT_EQ(next == nullptr ? "null" : showAt(*next, "assetIdentifier"), row.next)
            << row.season << row.video;
    }
    const auto season = mapped<QELSeason>(R"({"seasonNumber": 2, "assets": )" + episodes("1234") + "}");
    EXPECT_EQ(nextVideoForVideo(*season, nullptr), nullptr);
    EXPECT_EQ(nextVideoForVideo(*season, assetFrom("{}").get()), nullptr);
}

TEST(Season, goesBackFromTheNewestEpisodeOfTheCategory) {
    const struct {
        std::string_view listed, episode, newest, next;
    } rows[] = {{"1234", "4", "5", "10"},
                {"1234", "4", "6", "null"},
                {"4321", "3", "5", "20"},
                {"3124", "3", "5", "10"},
                {"1234", "1", "5", "null"},
                {"1234", "1", "null", "20"}};
    for (const auto& [listed, episode, newest, expected] : rows) {
        const auto season = mapped<QELSeason>(R"({"seasonNumber": 2, "assets": )" + episodes(listed) + "}");
        const auto video =
            assetFrom(R"({"id": 5, "category": {"lastAsset": {"id": )" + std::string(newest) +
                      R"(}}, "series": {"seasonNumber": 2, "episodeNumber": )" + std::string(episode) + "}}");
        const QELAsset* next = nextVideoForVideo(*season, video.get());
        EXPECT_EQ(next == nullptr ? "null" : showAt(*next, "assetIdentifier"), expected)
            << listed << ' ' << episode;
    }
}

TEST(Season, isFilledAndComparedByItsFields) {
    EXPECT_EQ(showAt(*mapped<QELSeason>(R"({"title": "<b>S&amp;</b>"})"), "title"), R"("S&")");
    EXPECT_EQ(showAt(*mapped<QELSeason>(R"({"title": null})"), "title"), "null");
    EXPECT_EQ(showAt(*mapped<QELSeason>(R"({"_embedded": {"assets": [1]}})"), "assets"), "null");
    EXPECT_EQ(*mapped<QELSeason>(R"({"assets": [{"id": 1}], "seasonNumber": 2})"),
              *mapped<QELSeason>(R"({"assets": [{"id": true}], "seasonNumber": 2.0})"));
    EXPECT_NE(*mapped<QELSeason>(R"({"assets": [{"series": {}}]})"),
              *mapped<QELSeason>(R"({"assets": [{"series": {}}]})"));
}

}  // namespace
}  // namespace QELModels::test
