// Categories and editorials find each other's keys, and a season knows which episode follows.

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>
#include <string>
#include <string_view>

#include "QELModels/Models/QELCategory+Utilities.h"
#include "QELModels/Models/QELEditorial+Utilities.h"
#include "QELModels/Models/QELSeason+Utilities.h"
#include "tests/JSONSupport.h"

namespace QELModels::test {
namespace {

TEST(Category, HasKeysAndADeviceRule) {
    const struct {
        std::string_view text, key, parentKey;
        bool allDevices;
    } rows[] = {
        {R"({"id": 42, "parentId": 7})", "category-42", "category-7", true},
        {"{}", "category-(null)", "category-(null)", true},
        {R"({"id": 42.5, "parentId": -1, "additional": {}})", "category-42.5", "category--1", false},
        {R"({"id": true, "additional": {"allowAllDevices": true}})", "category-1", "category-(null)", true},
    };
    for (const auto& row : rows) {
        const auto category = mapped<QELCategory>(row.text);
        EXPECT_EQ(editorialKey(*category), row.key);
        EXPECT_EQ(parentCategoryEditorialKey(*category), row.parentKey);
        EXPECT_EQ(allowAllDevices(*category), row.allDevices) << row.text;
    }
}

TEST(Editorial, ReadsTheCategoryFromItsKey) {
    constexpr std::int64_t kMost = std::numeric_limits<std::int64_t>::max();
    constexpr std::int64_t kLeast = std::numeric_limits<std::int64_t>::min();
    // clang-format off
    const struct {
        std::string_view key;
        std::int64_t identifier;
    } rows[] = {
        {"category-42", 42}, {"front", -1}, {"", -1}, {"category", -1}, {"Category-5", -1}, {"category-", 0},
        {"category-abc", 0}, {"category-(null)", 0}, {"news-category-7", 0}, {"category-12category-3", 123},
        {"1category-2x3", 12}, {"catecategory-gory-5", 0}, {"catecategory-gory-category-5", 0},
        {"category-category-6", 6}, {"7category-", 7}, {"category--42", -42}, {"-category-42", -42},
        {"category-+42", 42}, {"category-+-42", 0}, {"category- \\t\\r\\n\\u000b\\u000c 42", 42},
        {"category-\\u00a042", 0}, {"category-- 42", 0}, {"category-4 2", 4}, {"category-42.9", 42},
        {"category-0x10", 0}, {"category-007", 7}, {"category-\\uff14\\uff12", 0},
        {"category-4category- 2", 4}, {"category-\\u0000 4", 0}, {"category-9223372036854775806", kMost - 1},
        {"category-9223372036854775807", kMost}, {"category-9223372036854775808", kMost},
        {"category-99999999999999999999999", kMost}, {"category--9223372036854775807", kLeast + 1},
        {"category--9223372036854775808", kLeast}, {"category--9223372036854775809", kLeast},
        {"category--18446744073709551617", kLeast},
    };
    // clang-format on
    for (const auto& [key, identifier] : rows)
        EXPECT_EQ(categoryIdentifier(*mapped<QELEditorial>(R"({"key": ")" + std::string(key) + "\"}")),
                  identifier)
            << key;
    EXPECT_EQ(categoryIdentifier(*mapped<QELEditorial>("{}")), -1);
    EXPECT_EQ(categoryIdentifier(*mapped<QELEditorial>(R"({"key": 42})")), -1);
}

// Episodes by their numbers, each with ten times that as identifier; '.' has no number and '-' no series.
std::string episodes(const std::string& numbers) {
    if (numbers == "null") return numbers;
    std::string list;
    for (const char number : numbers) {
        list += list.empty() ? "" : ", ";
        if (number == '-' || number == '.')
            list += number == '-' ? "{}" : R"({"series": {}})";
        else
            list += R"({"id": )" + std::string{number} + R"(0, "series": {"episodeNumber": )" + number + "}}";
    }
    return '[' + list + ']';
}

TEST(Season, KnowsWhichEpisodeFollows) {
    // The season; the video that was played; the newest one of its category, the video itself being 5.
    // clang-format off
    const struct {
        std::string seasonNumber, listed, ofSeason, episode, newest, next;
    } rows[] = {
        {"2",    "1234",   "2",    "2",    "{}",        "30"},
        {"2",    "4321",   "2",    "2",    "{}",        "40"},
        {"2",    "1423",   "2",    "2.5",  "{}",        "40"},
        {"2",    "1234",   "2",    "4",    "{}",        "null"},
        {"2",    "1234",   "2.0",  "3",    "{}",        "40"},
        {"1",    "12",     "true", "1",    "{}",        "20"},
        {"2",    "1234",   "1",    "2",    "{}",        "null"},
        {"2",    "1234",   "2",    "null", "{}",        "null"},
        {"2",    "1234",   "null", "2",    "{}",        "null"},
        {"null", "1234",   "null", "2",    "{}",        "null"},
        {"null", "1234",   "2",    "2",    "{}",        "null"},
        {"2",    "null",   "2",    "2",    "{}",        "null"},
        {"2",    "",       "2",    "2",    "{}",        "null"},
        {"2",    "-.9",    "2",    "2",    "{}",        "90"},
        // The newest one goes back.
        {"2",    "1234",   "2",    "4",    R"({"id": 5})", "10"},
        {"2",    "1234",   "2",    "4",    R"({"id": 6})", "null"},
        {"2",    "4321",   "2",    "3",    R"({"id": 5})", "20"},
        {"2",    "3124",   "2",    "3",    R"({"id": 5})", "10"},
        {"2",    "1234",   "2",    "1",    R"({"id": 5})", "null"},
    };
    // clang-format on
    for (const auto& row : rows) {
        const auto season = mapped<QELSeason>(R"({"seasonNumber": )" + row.seasonNumber + R"(, "assets": )" +
                                              episodes(row.listed) + '}');
        const auto video = assetFrom(R"({"id": 5, "category": {"lastAsset": )" + row.newest +
                                     R"(}, "series": {"seasonNumber": )" + row.ofSeason +
                                     R"(, "episodeNumber": )" + row.episode + "}}");
        const QELAsset* next = nextVideoForVideo(*season, video.get());
        EXPECT_EQ(next == nullptr ? "null" : showAt(*next, "assetIdentifier"), row.next)
            << row.listed << ' ' << row.ofSeason << ' ' << row.episode << ' ' << row.newest;
        EXPECT_EQ(nextVideoForVideo(*season, nullptr), nullptr);
        EXPECT_EQ(nextVideoForVideo(*season, assetFrom("{}").get()), nullptr);
    }
}

}  // namespace
}  // namespace QELModels::test
