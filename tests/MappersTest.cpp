// Each mapper finds its part of a document, answers a record or a list and never null, and leaves the
// caller's error alone.

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <type_traits>

#include "JSON/JSONFromValue.h"
#include "JSON/JSONMapping.h"
#include "QELModels/Mappers/QELAssetMapper.h"
#include "QELModels/Mappers/QELAssetsMapper.h"
#include "QELModels/Mappers/QELCategoriesMapper.h"
#include "QELModels/Mappers/QELCategoryMapper.h"
#include "QELModels/Mappers/QELEditorialMapper.h"
#include "QELModels/Mappers/QELEditorialsMapper.h"
#include "QELModels/Mappers/QELResponse.h"
#include "QELModels/Mappers/QELSeasonMapper.h"
#include "QELModels/Mappers/QELSeasonsMapper.h"
#include "QELModels/Records/MappingFault.h"
#include "tests/DamagedDocuments.h"
#include "tests/JSONSupport.h"

namespace QELModels::test {
namespace {

// A document in which every mapper finds something of its own.
const Representation& everything() {
    static const Representation document = json(R"({
        "id": 1, "key": "2", "seasonNumber": 3,
        "_embedded": {"assets": [{"id": 11}, {"id": 12}, null], "categories": [{"id": 21}],
                      "editorial": [{"key": "31"}, {"key": "32"}], "editorials": [{"key": "wrong"}],
                      "seasons": [{"seasonNumber": 41}], "related": [{"id": 51}]},
        "assets": [{"id": 61}]})");
    return document;
}

template <class Model>
std::string shown(const Ref<Model>& record, std::string_view property) {
    return showAt(*record, property);
}
template <class Model>
std::string shown(const Ref<List<Model>>& list, std::string_view property) {
    std::string text = "[";
    for (const Model& record : *list)
        text += showAt(record, property) + ' ';
    return text + ']';
}

template <QELMapperProtocol Mapper>
std::string mappedBy(const Mapper& mapper, const Representation& document, std::string_view property) {
    Error error{"mine", 7, "as it was"};
    const auto result = mapper.mappedResponseFromJSONObject(document, &error);
    EXPECT_TRUE(result) << "null";
    EXPECT_EQ(error, (Error{"mine", 7, "as it was"}));
    return shown(result, property);
}

// What each of the eight mappers finds.
std::string mappedByEach(const Representation& document) {
    return mappedBy(QELAssetMapper(), document, "assetIdentifier") + ' ' +
           mappedBy(QELCategoryMapper(), document, "categoryIdentifier") + ' ' +
           mappedBy(QELEditorialMapper(), document, "key") + ' ' +
           mappedBy(QELSeasonMapper(), document, "seasonNumber") + ' ' +
           mappedBy(QELAssetsMapper(), document, "assetIdentifier") + ' ' +
           mappedBy(QELCategoriesMapper(), document, "categoryIdentifier") + ' ' +
           mappedBy(QELEditorialsMapper(), document, "key") + ' ' +
           mappedBy(QELSeasonsMapper(), document, "seasonNumber");
}

TEST(Mappers, FindTheirPartOfADocumentAndNothingElse) {
    EXPECT_EQ(mappedByEach(everything()), R"(1 1 "2" 3 [11 12 null ] [21 ] ["31" "32" ] [41 ])");
    for (const char* text :
         {"{}",
          "null",
          "5",
          R"([{"id": 1}])",
          R"({"_embedded": null})",
          R"({"_embedded": {"assets": null, "categories": {}, "editorial": 1, "seasons": "x"}})",
          R"({"_embedded": [{"assets": [1]}], "assets": [1]})"})
        EXPECT_EQ(mappedByEach(json(text)), "null null null null [] [] [] []") << text;
}

TEST(AssetsMapper, ReadsFromTheKeyPathOfTheMoment) {
    QELAssetsMapper mapper;
    EXPECT_EQ(mapper.assetsKeyPath(), "_embedded.assets");
    std::string keyPath = "_embedded.related";
    mapper.setAssetsKeyPath(keyPath);
    keyPath = "assets";
    EXPECT_EQ(mappedBy(mapper, everything(), "assetIdentifier"), "[51 ]");
    mapper.setAssetsKeyPath(keyPath);
    EXPECT_EQ(mappedBy(mapper, everything(), "assetIdentifier"), "[61 ]");
    mapper.setAssetsKeyPath("_embedded.none");
    EXPECT_EQ(mappedBy(mapper, everything(), "assetIdentifier"), "[]");
    mapper.setAssetsKeyPath({});
    EXPECT_EQ(mapper.assetsKeyPath(), "_embedded.assets");
    EXPECT_EQ(mappedBy(QELAssetsMapper(mapper), everything(), "assetIdentifier"), "[11 12 null ]");
}

// What became of a mapping: its models, or the fault.
template <class Map>
std::string outcomeOf(const Map& map) {
    try {
        const auto result = map();
        return result ? jsonFromValue(result) : "nothing";
    } catch (const MappingFault& fault) {
        return "fault " + std::string(fault.pointer()) + ' ' + fault.what();
    }
}

// The document with much before and after it that nobody reads, so that its elements are mapped while it is
// read, and not with its last part.
std::string enlarged(const std::string& document) {
    std::string padding = "[0";
    while (padding.size() < JSONReader::kUsualWindow)
        padding += ",0";
    const std::string inside = document.substr(1, document.size() - 2);
    return "{\"before\":" + padding + "]," + inside + ",\"after\":" + padding + "]}";
}

template <class Mapper>
void expectSameOnEveryRoad(std::string_view kind) {
    const bool isPage = tool::kindNamed(kind).isPage();
    JSONReader reader;
    Bystander bystander;
    const auto expectSame = [&](const std::string& document) {
        FEMOptions options{nullptr, nullptr, "response.body"};
        const auto fromTree = [&] {
            return outcomeOf(
                [&] { return Mapper().mappedResponseFromJSONObject(json(document), nullptr, options); });
        };
        const auto fromBytes = [&](const std::string& bytes) {
            return outcomeOf(
                [&] { return mappedResponseFromJSON(reader, bytes, Mapper(), nullptr, options); });
        };
        const std::string expected = fromTree();
        EXPECT_EQ(fromBytes(document), expected) << document;
        if (isPage && document.starts_with("{\"")) {
            EXPECT_EQ(fromBytes(enlarged(document)), expected) << document;
        }
        options.observer = &bystander;
        EXPECT_EQ(fromTree(), expected) << document;
    };
    const WholeDocument whole(tool::kindNamed(kind));
    expectSame(whole.json());
    std::size_t damages = 0;
    for (const Place& place : whole.places)
        for (const Damage& damage : allDamages())
            if (applies(damage, place) && (place.what != Place::What::rule || damages++ % 5 == 0))
                expectSame(whole.damagedJSON(place, damage));
}

TEST(Mappers, MakeTheSameFromBytesAndForObservers) {
    const LogLines hushed;
    expectSameOnEveryRoad<QELAssetMapper>("asset");
    expectSameOnEveryRoad<QELAssetsMapper>("assets");
    expectSameOnEveryRoad<QELCategoryMapper>("category");
    expectSameOnEveryRoad<QELCategoriesMapper>("categories");
    expectSameOnEveryRoad<QELEditorialMapper>("editorial");
    expectSameOnEveryRoad<QELEditorialsMapper>("editorials");
    expectSameOnEveryRoad<QELSeasonMapper>("season");
    expectSameOnEveryRoad<QELSeasonsMapper>("seasons");
}

// A mapper that derives from one of a page may do something else, so its own function is asked.
struct Derived : QELSeasonsMapper {};
static_assert(!QELPageMapperProtocol<Derived> && QELMapperProtocol<Derived>);

// A fault is one of a document that is well formed, and of a list that counts.
TEST(Mappers, TellMistakesOfTheDocumentBeforeFaults) {
    const std::string faulty =
        R"("assets": [{"id": 1}, {"category": {"additional": {"backgroundColor": 5}}}])";
    const std::string good = R"("assets": [{"id": 2}])";
    JSONReader reader;
    JSONError error;
    const auto map = [&](const std::string& members, const FEMOptions& options = {}) {
        const std::string document = enlarged("{\"_embedded\": {" + members + "}}");
        return mappedResponseFromJSON(reader, document, QELAssetsMapper(), &error, options);
    };
    EXPECT_THROW(map(faulty), MappingFault);
    EXPECT_FALSE(map(faulty + ", \"x\": tru"));
    EXPECT_EQ(error.line, 1u);
    EXPECT_GT(error.column, JSONReader::kUsualWindow);
    EXPECT_THROW(map(good + "," + faulty), MappingFault);
    EXPECT_EQ(shown(map(faulty + "," + good), "assetIdentifier"), "[2 ]");
    EXPECT_EQ(shown(map(good + R"(, "assets": null)"), "assetIdentifier"), "[]");

    struct Counting final : FEMObserver {
        void ruleApplied(const FEMEvent&) override { ++events; }
        int events = 0;
    } observer;
    CountingZone zone;
    {
        const auto page = map(good, {&observer, &zone, {}});
        EXPECT_GT(observer.events, 0);
        EXPECT_EQ(shown(page, "assetIdentifier"), "[2 ]");
        const std::size_t pieces = zone.pieces();
        EXPECT_EQ(shown(map(good, {nullptr, &zone, {}}), "assetIdentifier"), "[2 ]");
        EXPECT_EQ(zone.pieces(), pieces);
    }
    EXPECT_EQ(zone.pieces(), 0u);
}

TEST(Response, KeepsWhatItWasGiven) {
    const auto page = QELAssetsMapper().mappedResponseFromJSONObject(everything());
    const QELResponse response(Number(2), page, Error{"d", 3, "m"});
    EXPECT_EQ(response.nextPage(), Number(2));
    EXPECT_EQ(response.result().list(), page.get()) << "the result was copied";
    EXPECT_EQ(response.error(), (Error{"d", 3, "m"}));
    const QELResponse empty(std::nullopt, {}, std::nullopt);
    EXPECT_TRUE(!empty.nextPage() && empty.result().isNull() && !empty.error());
    const QELResponse outliving(
        std::nullopt, QELAssetMapper().mappedResponseFromJSONObject(everything()), {});
    EXPECT_EQ(showAt(*outliving.result().record(), "assetIdentifier"), "1");
}

}  // namespace
}  // namespace QELModels::test
