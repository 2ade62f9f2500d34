// What is kept stays whole, whatever else is dropped, and keeps nothing that it does not need.

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <thread>
#include <utility>

#include "QELModels/Mappers/QELAssetsMapper.h"
#include "QELModels/Models/QELAssetAdditional+Utils.h"
#include "QELModels/Models/QELEditorial.h"
#include "QELModels/Models/QELSeason.h"
#include "QELModels/Representation/RepresentationBuilder.h"
#include "tests/JSONSupport.h"

namespace QELModels::test {
namespace {

// An asset with a text, a list, a raw sub-tree and nested records; texts differ by `name`.
std::string assetText(const std::string& name) {
    return R"({"title": "<b>title &amp; )" + name + R"(</b>", "status": "status )" + name +
           R"(", "articleUrl": "https://a.example/)" + name + R"(", "category": {"title": "category )" +
           name + R"(", "lastAsset": {"id": 77}}, "additional": {"metadata": {"raw": [")" + name +
           R"(", {"deep": true}]}, "chapters": [{"title": "first"}, {"title": "chapter &lt; )" + name +
           R"("}], "cuePoints": [{"timeline": 20}, {"timeline": 10}]}})";
}

std::string pageOf(int count, const std::string& filling = "") {
    std::string assets;
    for (int i = 0; i < count; ++i)
        assets += (i == 0 ? "" : ", ") + assetText(std::to_string(i) + filling);
    return R"({"_embedded": {"assets": [)" + assets + "]}, \"unread\": [1, 2, 3]}";
}

Representation readIn(CountingZone& zone, std::string_view text) {
    return *JSONReader(JSONReader::kDefaultMaxDepth, &zone).read(text);
}

using Reading = std::function<std::string()>;

// Keeps a record, a list or a value, and reads from it when asked.
template <class Kept>
Reading reads(Ref<Kept> kept, std::string_view path) {
    return [kept, path] { return showAt(*kept, path); };
}
template <class Model>
Reading reads(Ref<List<Model>> kept, std::string_view path) {
    return [kept, path] { return showAt(kept->front(), path) + ' ' + showAt(kept->back(), path); };
}
Reading reads(Value kept) {
    return [kept] { return show(kept); };
}

TEST(Lifetime, LastsAsLongAsAnyPartIsKept) {
    using Asset = const QELAsset&;
    const auto chaptersOf = [](Asset asset) { return asset.assetAdditional()->chapters(); };
    const auto sorted = [](Asset asset) { return sortedAdCuePoints(*asset.assetAdditional()); };
    // clang-format off
    const struct {
        const char* name;
        std::function<Reading(Asset)> keep;
        std::string read;
    } rows[] = {
        {"record", [](Asset asset) { return reads(Ref(asset.category()), "title"); }, R"("category x")"},
        {"record in a record",
         [](Asset asset) { return reads(Ref(asset.category()->lastAsset()), "lastAssetIdentifier"); }, "77"},
        {"element", [&](Asset asset) { return reads(Ref(&chaptersOf(asset)->back()), "title"); }, R"("chapter < x")"},
        {"list", [&](Asset asset) { return reads(Ref(chaptersOf(asset)), "title"); }, R"("first" "chapter < x")"},
        {"sorted list", [&](Asset asset) { return reads(sorted(asset), "timeline"); }, "10 20"},
        {"sorted element", [&](Asset asset) { return reads(Ref(&sorted(asset)->back()), "timeline"); }, "20"},
        {"text", [](Asset asset) { return reads(at(asset, "title")); }, R"("title & x")"},
        {"URL", [](Asset asset) { return reads(at(asset, "articleUrl")); }, "<https://a.example/x>"},
        {"raw sub-tree", [](Asset asset) { return reads(at(asset, "assetAdditional.metadata")); },
         R"({"raw":["x",{"deep":true}]})"},
        {"part of a raw sub-tree",
         [](Asset asset) {
             return reads(Value(Representation(*asset.assetAdditional()->metadata()->valueForKey("raw"))));
         },
         R"(["x",{"deep":true}])"},
        {"all values",
         [](Asset asset) -> Reading {
             return [kept = std::make_shared<PropertyDictionary>(asset.category()->dictionaryValue())] {
                 return show(*kept->find("title"));
             };
         },
         R"("category x")"},
        {"copy", [](Asset asset) { return reads(copy(asset), "status"); }, R"("status x")"},
        {"copy's text", [](Asset asset) { return reads(at(*copy(*copy(asset)), "status")); }, R"("status x")"},
        {"copy's list", [&](Asset asset) { return reads(Ref(chaptersOf(*copy(*copy(asset)))), "title"); },
         R"("first" "chapter < x")"},
    };
    // clang-format on
    for (const auto& row : rows) {
        Reading reading;
        CountingZone zone;
        const FEMOptions options{nullptr, &zone, {}};
        {
            const auto asset = mapped<QELAsset>(assetText("x"), options);
            reading = row.keep(*asset);
        }
        EXPECT_GT(zone.pieces(), 0U) << row.name;
        EXPECT_EQ(reading(), row.read) << row.name;
        reading = {};
        EXPECT_EQ(zone.pieces(), 0U) << row.name << " was leaked";
    }
}

template <class Model>
void expectCopyKeeps(bool anything, std::string_view text, std::string_view path, std::string_view shown) {
    CountingZone zone;
    Ref<Model> copied = copy(*mapped<Model>(text, {nullptr, &zone, {}}));
    EXPECT_EQ(zone.pieces() != 0, anything) << text;
    EXPECT_EQ(showAt(*copied, path), shown) << text;
    copied = nullptr;
    EXPECT_EQ(zone.pieces(), 0U) << text;
}

TEST(Lifetime, OfASourceGoesOnAsLongAsACopySharesAnythingWithIt) {
    expectCopyKeeps<QELAsset>(true, R"({"status": "s"})", "status", R"("s")");
    expectCopyKeeps<QELAsset>(true, R"({"articleUrl": "u:"})", "articleUrl", "<u:>");
    expectCopyKeeps<QELAsset>(true, R"({"series": {"seasonNumber": 3}})", "series.seasonNumber", "3");
    expectCopyKeeps<QELAsset>(false, R"({"id": 5})", "assetIdentifier", "5");
    expectCopyKeeps<QELAssetAdditional>(
        true, R"({"chapters": [{"timeline": 6}]})", "chapters[0].timeline", "6");
    expectCopyKeeps<QELAssetAdditional>(true, R"({"barrels": [7]})", "barrels", "[7]");
}

TEST(Lifetime, OfAnEpisodeKeepsNeitherItsSiblingsNorThePage) {
    CountingZone alone;
    const auto lone = mapped<QELAsset>(assetText("57"), {nullptr, &alone, {}});
    const std::string page = pageOf(100);
    const std::string list = page.substr(page.find('['), page.find("]}, \"unread") - page.find('[') + 1);
    const struct {
        const char* name;
        std::string text;
        Ref<QELAsset> (*keep)(const Representation&, const FEMOptions&);
    } rows[] = {
        {"a page",
         page,
         [](const Representation& document, const FEMOptions& options) {
             return Ref(&(*QELAssetsMapper().mappedResponseFromJSONObject(document, nullptr, options))[57]);
         }},
        {"a season",
         R"({"title": "s", "assets": )" + list + "}",
         [](const Representation& document, const FEMOptions& options) {
             return Ref(&(*mappedObject<QELSeason>(document, options)->assets())[57]);
         }},
        {"an editorial on a page",
         R"({"_embedded": {"editorial": [{"key": "k", "assetsIds": [1, 2], )" + page.substr(1) + "]}}",
         [](const Representation& document, const FEMOptions& options) {
             const auto editorials = mappedPage<QELEditorial>(document, "_embedded.editorial", options);
             return Ref(&(*editorials->front().assets())[57]);
         }},
    };
    for (const auto& row : rows) {
        CountingZone documents;
        CountingZone models;
        const Ref<QELAsset> kept = row.keep(readIn(documents, row.text), {nullptr, &models, {}});
        EXPECT_EQ(documents.pieces(), 0U) << row.name << ": the document is kept";
        EXPECT_LE(models.bytes(), alone.bytes()) << row.name << ": more than the episode is kept";
        EXPECT_EQ(showAt(*kept, "title"), R"("title & 57")") << row.name;
        EXPECT_EQ(showAt(*kept, "category.title"), R"("category 57")") << row.name;
    }
}

// A lone record keeps its document's texts instead of copying them, unless little of them is read, or they
// are in another zone than its own. All else of the document is freed in any case.
TEST(Lifetime, OfALoneRecordIncludesItsDocumentsTextsWhereTheyAreWorthIt) {
    const std::string text = "plain, \u00e5 and " + std::string(1000, 'x');
    const std::string read = R"("title": ")" + text + R"(", "titleFront": "<b>bold</b>", "status": ")" +
                             text + R"(", "additional": {"metadata": {"raw": [")" + text + R"("]}})";
    const std::string unread = R"(, "unread": ")" + std::string(9000, 'u') + '"';
    const std::string large = R"(, "status": ")" + std::string(20000, 's') + '"';
    // clang-format off
    const struct {
        const char* name;
        std::string document;
        bool sameZone, keepsTexts;
        std::size_t bytesAtMost;
    } rows[] = {
        {"all of it read",    '{' + read + '}',          true,  true,  read.size() + 4000},
        {"another zone",      '{' + read + '}',          false, false, read.size() + 4000},
        {"most of it unread", '{' + read + unread + '}', true,  false, read.size() + 4000},
        {"a large one",       '{' + read + large + '}',  true,  false, read.size() + 24000},
    };
    // clang-format on
    for (const auto& row : rows) {
        CountingZone documents;
        CountingZone models;
        Ref<QELAssetAdditional> kept;
        {
            const Representation document = readIn(documents, row.document);
            const auto asset =
                mappedObject<QELAsset>(document, {nullptr, row.sameZone ? &documents : &models, {}});
            EXPECT_EQ(showAt(*asset, "titleFront"), "\"bold\"") << row.name;
            const auto inDocument = document.view().valueForKey("title")->text();
            EXPECT_EQ(asset->title(), inDocument) << row.name;
            EXPECT_EQ(asset->title()->data() == inDocument->data(), row.keepsTexts) << row.name;
            kept = Ref(asset->assetAdditional());
        }
        EXPECT_TRUE(row.sameZone || documents.pieces() == 0) << row.name;
        EXPECT_LT(documents.bytes() + models.bytes(), row.bytesAtMost) << row.name;
        EXPECT_EQ(show(at(*kept, "metadata")), R"({"raw":["plain, å and )" + std::string(1000, 'x') + "\"]}");
        kept = nullptr;
        EXPECT_EQ(documents.pieces() + models.pieces(), 0U) << row.name;
    }
}

TEST(Lifetime, OfAMillionCopiesOfCopiesTakesNoMoreMemory) {
    CountingZone originals;
    CountingZone copies;
    Ref<QELAssetChapter> latest(
        &mapped<QELAsset>(assetText("y"), {nullptr, &originals, {}})->assetAdditional()->chapters()->back());
    const std::size_t held = originals.bytes();
    latest = copy(*latest, &copies);
    const std::size_t heldByOne = copies.bytes();
    EXPECT_LT(heldByOne, held);
    for (int i = 0; i < 1'000'000; ++i)
        latest = copy(*latest, &copies);
    EXPECT_EQ(copies.bytes(), heldByOne);
    EXPECT_EQ(originals.bytes(), held);
    EXPECT_EQ(showAt(*latest, "title"), R"("chapter < y")");
    latest = nullptr;
    EXPECT_EQ(copies.pieces() + originals.pieces(), 0U);
}

TEST(Lifetime, MayEndOnAnotherThread) {
    CountingZone zone;
    auto page =
        QELAssetsMapper().mappedResponseFromJSONObject(json(pageOf(30)), nullptr, {nullptr, &zone, {}});
    Ref<QELAssetChapter> kept(&(*page)[7].assetAdditional()->chapters()->back());
    std::thread([page = std::exchange(page, nullptr)]() mutable {
        EXPECT_EQ(showAt((*page)[29], "status"), R"("status 29")");
        page = nullptr;
    }).join();
    EXPECT_EQ(showAt(*kept, "title"), R"("chapter < 7")");
    std::thread([kept = std::exchange(kept, nullptr)] {}).join();
    EXPECT_EQ(zone.pieces(), 0U);
}

TEST(Lifetime, OfLinkedDocumentsIsThatOfWhatLinksToThem) {
    // Large values that are wrapped are linked, not copied; so are the raw sub-trees that hold them.
    CountingZone zone;
    Representation large =
        readIn(zone, R"(["text", 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17])");
    const std::string shown = jsonFromRepresentation(large);
    Ref<QELAsset> asset;
    {
        const Representation document{
            {"additional", {{"metadata", {{"in", {{"it", large}}}}}, {"barrels", large}}}};
        large = nullptr;
        ASSERT_NE(zone.pieces(), 0U) << "a document lost what it links to";
        asset = mappedObject<QELAsset>(document);
    }
    ASSERT_NE(zone.pieces(), 0U) << "a raw sub-tree lost what it links to";
    EXPECT_EQ(showAt(*asset, "assetAdditional.barrels"), shown);
    EXPECT_EQ(showAt(*asset, "assetAdditional.metadata"), R"({"in":{"it":)" + shown + "}}");

    // A document that is nothing but a link.
    CountingZone links;
    {
        RepresentationBuilder builder(&links);
        builder.representation(*asset->assetAdditional()->barrels());
        const Representation link = builder.finish();
        asset = nullptr;
        EXPECT_EQ(jsonFromRepresentation(link), shown);
    }
    EXPECT_EQ(zone.pieces() + links.pieces(), 0U);
}

TEST(Lifetime, OfACopyGoesOnInTheRecordThatItIsPutInto) {
    const auto asset =
        recordWith<QELAsset>("category", Value(copy(*mapped<QELCategory>(R"({"title": "Nyheter"})"))));
    EXPECT_EQ(asset->category()->title(), "Nyheter");
}

}  // namespace
}  // namespace QELModels::test
