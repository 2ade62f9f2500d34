// Each mapper finds its part of a document, answers a record or a list and never null, and leaves the
// caller's error alone.

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <type_traits>

#include "QELModels/Mappers/QELAssetMapper.h"
#include "QELModels/Mappers/QELAssetsMapper.h"
#include "QELModels/Mappers/QELCategoriesMapper.h"
#include "QELModels/Mappers/QELCategoryMapper.h"
#include "QELModels/Mappers/QELEditorialMapper.h"
#include "QELModels/Mappers/QELEditorialsMapper.h"
#include "QELModels/Mappers/QELResponse.h"
#include "QELModels/Mappers/QELSeasonMapper.h"
#include "QELModels/Mappers/QELSeasonsMapper.h"
#include "tests/TestSupport.h"

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

TEST(Mappers, findTheirPartOfADocument) {
    EXPECT_EQ(mappedBy(QELAssetMapper(), everything(), "assetIdentifier"), "1");
    EXPECT_EQ(mappedBy(QELCategoryMapper(), everything(), "categoryIdentifier"), "1");
    EXPECT_EQ(mappedBy(QELEditorialMapper(), everything(), "key"), R"("2")");
    EXPECT_EQ(mappedBy(QELSeasonMapper(), everything(), "seasonNumber"), "3");
    EXPECT_EQ(mappedBy(QELAssetsMapper(), everything(), "assetIdentifier"), "[11 12 null ]");
    EXPECT_EQ(mappedBy(QELCategoriesMapper(), everything(), "categoryIdentifier"), "[21 ]");
    EXPECT_EQ(mappedBy(QELEditorialsMapper(), everything(), "key"), R"(["31" "32" ])");
    EXPECT_EQ(mappedBy(QELSeasonsMapper(), everything(), "seasonNumber"), "[41 ]");
}

TEST(Mappers, answerEmptyRecordsAndListsForWhatIsNotThere) {
    for (const char* text :
         {"{}",
          "null",
          "[]",
          "5",
          R"([{"id": 1}])",
          R"({"_embedded": null})",
          R"({"_embedded": {"assets": null, "categories": {}, "editorial": 1, "seasons": "x"}})",
          R"({"_embedded": [{"assets": [1]}], "assets": [1]})"}) {
        const Representation document = json(text);
        EXPECT_EQ(mappedBy(QELAssetMapper(), document, "assetIdentifier"), "null") << text;
        EXPECT_EQ(mappedBy(QELCategoryMapper(), document, "title"), "null") << text;
        EXPECT_EQ(mappedBy(QELEditorialMapper(), document, "key"), "null") << text;
        EXPECT_EQ(mappedBy(QELSeasonMapper(), document, "title"), "null") << text;
        EXPECT_EQ(mappedBy(QELAssetsMapper(), document, "title"), "[]") << text;
        EXPECT_EQ(mappedBy(QELCategoriesMapper(), document, "title"), "[]") << text;
        EXPECT_EQ(mappedBy(QELEditorialsMapper(), document, "key"), "[]") << text;
        EXPECT_EQ(mappedBy(QELSeasonsMapper(), document, "title"), "[]") << text;
    }
}

TEST(AssetsMapper, readsFromTheKeyPathOfTheMoment) {
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

TEST(Response, keepsWhatItWasGiven) {
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
