// The questions that players and listings ask of an asset have an answer for every asset, and what is missing
// has the default that belongs to the question.

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "QELModels/Mapping/FEMDeserializer.h"
#include "QELModels/Models/QELAsset+Utilities.h"
#include "tests/TestSupport.h"

namespace QELModels::test {
namespace {

using Question = bool (*)(const QELAsset&);

TEST(AssetFacts, answerEveryQuestionAlsoWhereRecordsAreMissing) {
    struct Row {
        std::string_view text;
        bool answer;
    };
    const struct {
        const char* name;
        Question ask;
        std::vector<Row> rows;
    } questions[] = {
        {"isLive",
         [](const QELAsset& a) { return isLive(a); },
         {{"{}", false},
          {R"({"flightTimes": {}})", false},
          {R"({"flightTimes": {"end": 1}})", false},
          {R"({"flightTimes": {"start": 99.5}})", true},
          {R"({"flightTimes": {"start": 100}})", false},
          {R"({"flightTimes": {"start": 100.5}})", false},
          {R"({"flightTimes": {"start": 10, "end": 20}})", true},
          {R"({"streamType": "live"})", false}}},
        {"wasLive",
         [](const QELAsset& a) { return wasLive(a); },
         {{"{}", false},
          {R"({"flightTimes": {"start": 10}})", false},
          {R"({"flightTimes": {"end": 99.5}})", true},
          {R"({"flightTimes": {"end": 100}})", false},
          {R"({"flightTimes": {"start": 10, "end": 20}})", true},
          {R"({"streamType": "wasLive"})", false}}},
        {"hasLiveStreamType",
         hasLiveStreamType,
         {{"{}", false}, {R"({"streamType": "wasLive"})", false}, {R"({"streamType": "live"})", true}}},
        {"isLastAssetInCategory",
         isLastAssetInCategory,
         {{R"({"id": 7, "category": {"lastAsset": {"id": 7}}})", true},
          {R"({"id": 7, "category": {"lastAsset": {"id": 7.0}}})", true},
          {R"({"id": 7, "category": {"lastAsset": {"id": 8}}})", false},
          {R"({"id": 7, "category": {"id": 7, "lastAsset": {}}})", false},
          {R"({"category": {"lastAsset": {}}})", false},
          {R"({"id": 7, "category": {}})", false},
          {R"({"id": 7})", false}}},
        {"remotePlaybackAllowed",
         remotePlaybackAllowed,
         {{"{}", false},
          {R"({"streamType": "live"})", true},
          {R"({"streamType": "live", "category": {"additional": {"allowAllDevices": false}}})", true},
          {R"({"category": {}})", false},
          {R"({"category": {"additional": {}}})", false},
          {R"({"category": {"additional": {"allowAllDevices": true}}})", true}}},
        {"showAds",
         showAds,
         {{"{}", true},
          {R"({"additional": {}})", true},
          {R"({"additional": {"settings": {}}})", false},
          {R"({"additional": {"settings": {"showAds": true}}})", true}}},
        {"settingsShowComments",
         settingsShowComments,
         {{"{}", true},
          {R"({"additional": {}})", true},
          {R"({"additional": {"settings": {"showAds": true}}})", false},
          {R"({"additional": {"settings": {"showComments": true}}})", true}}},
        {"isSeries",
         isSeries,
         {{R"({"series": {}})", false},
          {R"({"category": {}})", false},
          {R"({"category": {"isSeries": true}})", true}}},
        {"showCategory",
         showCategory,
         {{"{}", false},
          {R"({"category": {"showCategory": true}})", false},
          {R"({"category": {"showCategory": true, "additional": {}}})", true},
          {R"({"category": {"additional": {"showCategory": true}}})", false}}},
        {"categoryShowComments",
         categoryShowComments,
         {{"{}", true},
          {R"({"category": {}})", true},
          {R"({"category": {"additional": {}}})", false},
          {R"({"category": {"additional": {"showComments": true}}})", true}}},
        {"showPlayerLogo",
         showPlayerLogo,
         {{"{}", false},
          {R"({"category": {}})", false},
          {R"({"category": {"additional": {"showPlayerLogo": true}}})", false}}},
        {"isInvalidObject",
         isInvalidObject,
         {{"{}", true},
          {R"({"additional": {"cuePoints": []}})", true},
          {R"({"additional": {}, "category": {"additional": {}}})", true},
          {R"({"additional": {"cuePoints": []}, "category": {}})", true},
          {R"({"additional": {"cuePoints": []}, "category": {"additional": {}}})", false}}},
        {"isSecured",
         isSecured,
         {{"{}", false},
          {R"({"streamConfiguration": {}})", false},
          {R"({"streamConfiguration": {"properties": ["encrypted", "geoblocked"]}})", false},
          {R"({"streamConfiguration": {"properties": ["geoblocked", "tokenSecured"]}})", true}}},
    };
    const StoppedClock clock(100);
    for (const auto& question : questions)
        for (const Row& row : question.rows)
            EXPECT_EQ(question.ask(*assetFrom(row.text)), row.answer) << question.name << ' ' << row.text;
}

TEST(AssetFacts, showThePlayersLogoWhenAnApplicationsRuleFillsTheFlag) {
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

TEST(AssetFacts, countTheSecondsUntilLive) {
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

TEST(AssetFacts, linkToTheAsset) {
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

TEST(AssetFacts, measureInSecondsAndChooseChapters) {
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
