// The questions that players and listings ask of an asset have an answer for every asset, and what is missing
// has the default that belongs to the question.

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "QELModels/Mapping/FEMDeserializer.h"
#include "QELModels/Models/QELAsset+Utilities.h"
#include "tests/JSONSupport.h"

namespace QELModels::test {
namespace {

TEST(AssetFacts, AnswerEveryQuestionAlsoWhereRecordsAreMissing) {
    // clang-format off
    const struct {
        const char* name;
        bool (*ask)(const QELAsset&);
        std::vector<std::string_view> yes, no;
    } questions[] = {
        {"isLive", [](const QELAsset& asset) { return isLive(asset); },
         {R"({"flightTimes": {"start": 99.5}})", R"({"flightTimes": {"start": 10, "end": 20}})"},
         {"{}", R"({"flightTimes": {}})", R"({"flightTimes": {"end": 1}})", R"({"flightTimes": {"start": 100}})",
          R"({"flightTimes": {"start": 100.5}})", R"({"streamType": "live"})"}},
        {"wasLive", [](const QELAsset& asset) { return wasLive(asset); },
         {R"({"flightTimes": {"end": 99.5}})", R"({"flightTimes": {"start": 10, "end": 20}})"},
         {"{}", R"({"flightTimes": {"start": 10}})", R"({"flightTimes": {"end": 100}})",
          R"({"streamType": "wasLive"})"}},
        {"hasLiveStreamType", hasLiveStreamType,
         {R"({"streamType": "live"})"}, {"{}", R"({"streamType": "wasLive"})"}},
        {"isLastAssetInCategory", isLastAssetInCategory,
         {R"({"id": 7, "category": {"lastAsset": {"id": 7}}})", R"({"id": 7, "category": {"lastAsset": {"id": 7.0}}})"},
         {R"({"id": 7, "category": {"lastAsset": {"id": 8}}})", R"({"id": 7, "category": {"id": 7, "lastAsset": {}}})",
          R"({"category": {"lastAsset": {}}})", R"({"id": 7, "category": {}})", R"({"id": 7})"}},
        {"remotePlaybackAllowed", remotePlaybackAllowed,
         {R"({"streamType": "live"})", R"({"category": {"additional": {"allowAllDevices": true}}})",
          R"({"streamType": "live", "category": {"additional": {"allowAllDevices": false}}})"},
         {"{}", R"({"category": {}})", R"({"category": {"additional": {}}})"}},
        {"showAds", showAds,
         {"{}", R"({"additional": {}})", R"({"additional": {"settings": {"showAds": true}}})"},
         {R"({"additional": {"settings": {"showComments": true}}})"}},
        {"settingsShowComments", settingsShowComments,
         {"{}", R"({"additional": {}})", R"({"additional": {"settings": {"showComments": true}}})"},
         {R"({"additional": {"settings": {"showAds": true}}})"}},
        {"isSeries", isSeries,
         {R"({"category": {"isSeries": true}})"}, {R"({"series": {}})", R"({"category": {}})"}},
        {"showCategory", showCategory,
         {R"({"category": {"showCategory": true, "additional": {}}})"},
         {"{}", R"({"category": {"showCategory": true}})", R"({"category": {"additional": {"showCategory": true}}})"}},
        {"categoryShowComments", categoryShowComments,
         {"{}", R"({"category": {}})", R"({"category": {"additional": {"showComments": true}}})"},
         {R"({"category": {"additional": {}}})"}},
        {"showPlayerLogo", showPlayerLogo,
         {}, {"{}", R"({"category": {}})", R"({"category": {"additional": {"showPlayerLogo": true}}})"}},
        {"isInvalidObject", isInvalidObject,
         {"{}", R"({"additional": {"cuePoints": []}})", R"({"additional": {}, "category": {"additional": {}}})",
          R"({"additional": {"cuePoints": []}, "category": {}})"},
         {R"({"additional": {"cuePoints": []}, "category": {"additional": {}}})"}},
        {"isSecured", isSecured,
         {R"({"streamConfiguration": {"properties": ["geoblocked", "tokenSecured"]}})"},
         {"{}", R"({"streamConfiguration": {}})",
          R"({"streamConfiguration": {"properties": ["encrypted", "geoblocked"]}})"}},
    };
    // clang-format on
    const StoppedClock clock(100);
    for (const auto& question : questions) {
        for (const std::string_view text : question.yes)
            EXPECT_TRUE(question.ask(*assetFrom(text))) << question.name << ' ' << text;
        for (const std::string_view text : question.no)
            EXPECT_FALSE(question.ask(*assetFrom(text))) << question.name << ' ' << text;
    }
}

TEST(AssetFacts, ShowThePlayersLogoWhenAnApplicationsRuleFillsTheFlag) {
    FEMMapping additional = QELCategoryAdditional::defaultMapping();
    additional.addAttributeWithProperty(kQELCategoryAdditionalShowPlayerLogo, "showPlayerLogo");
    FEMMapping category(QELCategory::objectClass);
    category.addRelationshipMapping(additional, kQELCategoryAdditional, "additional");
    FEMMapping asset(QELAsset::objectClass);
    asset.addRelationshipMapping(category, kQELAssetCategory, "category");
    const auto object = FEMDeserializer::objectFromRepresentation(
        json(R"({"category": {"additional": {"showPlayerLogo": true}}})"), asset);
    EXPECT_TRUE(showPlayerLogo(static_cast<const QELAsset&>(*object)));
}

TEST(AssetFacts, AreSeenFromAnyDate) {
    const StoppedClock clock(1000);
    const auto date = [](double seconds) { return dateFromSecondsSince1970(seconds); };
    const auto asset = assetFrom(R"({"flightTimes": {"start": 100, "end": 200}})");
    EXPECT_TRUE(!isLive(*asset, date(100)) && isLive(*asset, date(100.5)));
    EXPECT_TRUE(!wasLive(*asset, date(200)) && wasLive(*asset, date(200.5)));
    EXPECT_FALSE(isLive(*assetFrom("{}"), date(1e9)) || wasLive(*assetFrom("{}"), date(1e9)));
}

TEST(AssetFacts, CountTheSecondsUntilLive) {
    const auto date = [](double seconds) { return dateFromSecondsSince1970(seconds); };
    const StoppedClock clock(1000.5);
    const struct {
        std::string_view text;
        double now, at900, atNothing;
    } rows[] = {
        {R"({"flightTimes": {"start": 1300}})", 299.5, 400, 1300},
        {R"({"flightTimes": {"start": 300}})", -700.5, -600, 300},
        {R"({"flightTimes": {"end": 300}})", -1000.5, -900, 0},
        {"{}", -1000.5, -900, 0},
    };
    for (const auto& row : rows) {
        const auto asset = assetFrom(row.text);
        EXPECT_EQ(secondsUntilLive(*asset), row.now) << row.text;
        EXPECT_EQ(secondsUntilLive(*asset, date(900)), row.at900) << row.text;
        EXPECT_EQ(secondsUntilLive(*asset, std::nullopt), row.atNothing) << row.text;
    }
}

TEST(AssetFacts, LinkToTheAsset) {
    const struct {
        std::string_view text, identifier;
    } rows[] = {{R"({"id": 1234})", "1234"},
                {R"({"id": 42.5})", "42.5"},
                {R"({"id": true})", "1"},
                {R"({"id": 100000.0})", "100000"},
                {"{}", "(null)"}};
    for (const auto& [text, identifier] : rows) {
        const auto asset = assetFrom(text);
        const std::string id(identifier);
        EXPECT_EQ(shareURLString(*asset), "https://tv.example/#!/" + id);
        EXPECT_EQ(commentsShareURLString(*asset), "https://tv.example/?id=" + id);
        const auto url = shareURLFromPlayhead(*asset, 123);
        ASSERT_TRUE(url);
        EXPECT_EQ(url->text(), "https://tv.example/#!/" + id + "/02m03s");
    }
}

TEST(AssetFacts, MeasureInSecondsAndChooseChapters) {
    EXPECT_EQ(durationInSeconds(*assetFrom(R"({"duration": 500})")), 0.5);
    EXPECT_EQ(durationInSeconds(*assetFrom(R"({"duration": 1234567})")), 1234.567);
    EXPECT_EQ(durationInSeconds(*assetFrom("{}")), 0);
    const struct {
        std::string_view additional, timeline;
    } rows[] = {{R"({"chapters": [{"timeline": 1}], "featuredChapters": [{"timeline": 2}]})", "2"},
                {R"({"chapters": [{"timeline": 1}], "featuredChapters": []})", "empty"},
                {R"({"chapters": [{"timeline": 1}], "featuredChapters": null})", "1"},
                {R"({"chapters": [{"timeline": 1, "featured": true}]})", "1"},
                {"{}", "null"},
                {"null", "null"}};
    for (const auto& [additional, timeline] : rows) {
        const auto asset = assetFrom(R"({"additional": )" + std::string(additional) + '}');
        const auto* chapters = featuredChaptersOrDefaultChapters(*asset);
        EXPECT_EQ(chapters == nullptr ? "null"
                  : chapters->empty() ? "empty"
                                      : showAt(chapters->front(), "timeline"),
                  timeline)
            << additional;
    }
}

}  // namespace
}  // namespace QELModels::test
