// Promise: the keys of a document that no rule of a mapping reads are found, each once and in the document's
// order, and nothing that a rule asks for is among them.

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "QELModels/Mapping/FEMMapping.h"
#include "QELModels/Mapping/FEMUnreadKeys.h"
#include "QELModels/Models/QELAsset.h"
#include "QELModels/Models/QELEditorial.h"
#include "QELModels/Models/QELSeason.h"
#include "QELModels/Representation/RepresentationBuilder.h"
#include "tests/TestSupport.h"

namespace QELModels::test {
namespace {

using Pointers = std::vector<std::string>;
using Find = void (*)(RepresentationView, std::string_view, const FEMRules&, const FEMUnreadKeys::Visit&);

Pointers found(Find find, RepresentationView document, std::string_view keyPath, const FEMRules& rules) {
    Pointers pointers;
    find(document, keyPath, rules, [&](const FEMPath& path, RepresentationView value) {
        EXPECT_NE(value.block(), nullptr);  // whoever wants to keep the value can
        pointers.push_back(path.pointer() + (value.isDictionary() || value.isArray() ? "/" : ""));
    });
    return pointers;
}

struct Row {
    std::string_view document;
    Pointers unread;  // with "/" behind a sub-tree
};

void expect(const FEMRules& rules, const std::vector<Row>& rows) {
    for (const auto& [document, unread] : rows)
        EXPECT_EQ(found(&FEMUnreadKeys::inObject, json(document), {}, rules), unread) << document;
}

TEST(UnreadKeys, AreThoseThatTheLibrarysRulesDoNotAskFor) {
    expect(QELAsset::defaultRules,
           {{"{}", {}},
            {"[{\"x\": 1}]", {}},
            {"null", {}},
            // Read, whatever the kind.
            {R"({"id": {"x": 1}, "category": [{"x": 1}], "images": "x", "streamUrls": null})", {}},
            {R"({"ID": 1, "id": 2, "Id": {"id": 3}, "": []})", {"/ID", "/Id/", "//"}},
            {R"({"category": {"id": 1, "x": 2, "additional": {"playerBranding": {"y": [1]}}}})",
             {"/category/x", "/category/additional/playerBranding/y/"}},
            // Raw sub-trees are kept whole.
            {R"({"additional": {"metadata": {"x": {"y": 1}}, "barrels": [{"z": 1}], "timeline": 1}})",
             {"/additional/timeline"}},
            {R"({"additional": {"chapters": [{"x": 1}, 5, null, {"title": "t", "y": 2}, [{"z": 3}]]}})",
             {"/additional/chapters/0/x", "/additional/chapters/3/y"}},
            // Places are escaped, and a dot in a key is no step.
            {R"({"a/b~c": 1, "a.b": 2})", {"/a~1b~0c", "/a.b"}}});
}

TEST(UnreadKeys, StandBesideKeyPaths) {
    expect(
        QELEditorial::defaultRules,
        {{R"({"_embedded": {"x": 1, "assets": [{"id": 1, "y": {}}], "z": 2}, "_embedded.assets": [], "assets": 1})",
          {"/_embedded/x", "/_embedded/assets/0/y/", "/_embedded/z", "/_embedded.assets/", "/assets"}},
         {R"({"_embedded": 5})", {}},
         {R"({"_embedded": [{"x": 1}]})", {}}});

    // Several rules may ask for one key, in whole, in part, or with different hopes for its kind.
    FEMMapping settings(QELAssetAdditionalSettings::objectClass);
    settings.addAttributeWithProperty("source", "deep.source");
    FEMMapping chapters(QELAssetChapter::objectClass);
    chapters.addAttributeWithProperty("title", "t");
    FEMMapping mapping(QELAssetAdditional::objectClass);
    mapping.addAttributesFromDictionary(
        {{"url", "a.b"}, {"imageCaption", "a.c.d"}, {"externalIdentifier", ".."}});
    mapping.addRelationshipMapping(settings, "settings", "s");
    mapping.addToManyRelationshipMapping(chapters, "chapters", "s");
    mapping.addAttributeWithProperty("access", "s.extra.access");
    expect(mapping.rules(),
           {{R"({"a": {"b": {"x": 1}, "c": {"d": [], "x": 2}, "x": 3}})", {"/a/c/x", "/a/x"}},
            {R"({"": {"": {"": 1, "x": 2}, "y": 3}})", {"///x", "//y"}},
            // Hoped for as a record and as a list, it is of the wrong kind for one of them, and read.
            {R"({"s": {"x": 1}, "z": 1})", {"/z"}}});

    FEMMapping more(QELAssetAdditional::objectClass);
    more.addRelationshipMapping(settings, "settings", "s");
    more.addAttributeWithProperty("access", "s.extra.access");
    expect(more.rules(),
           {{R"({"s": {"deep": {"source": 1, "x": 2}, "extra": {"access": {"y": 1}, "z": 3}, "w": 4}})",
             {"/s/deep/x", "/s/extra/z", "/s/w"}}});
    more.addAttributeWithProperty("metadata", "s");
    expect(more.rules(), {{R"({"s": {"w": 4}, "v": 5})", {"/v"}}});
}

TEST(UnreadKeys, OfPagesStandBesideTheirLists) {
    const FEMRules& rules = QELSeason::defaultRules;
    const struct {
        std::string_view document, keyPath;
        Pointers unread;
    } rows[] = {
        {R"({"_links": {}, "_embedded": {"seasons": [{"x": 1}, null, {"assets": [{}, {"y": 1}]}], "next": 1}})",
         "_embedded.seasons",
         {"/_links/", "/_embedded/seasons/0/x", "/_embedded/seasons/2/assets/1/y", "/_embedded/next"}},
        {R"({"_embedded": {"seasons": {"x": 1}}})", "_embedded.seasons", {}},
        {R"({"_embedded": [], "x": 1})", "_embedded.seasons", {"/x"}},
        {R"([{"x": 1}, 2, {"title": 3}])", "", {"/0/x"}},
    };
    for (const auto& [document, keyPath, unread] : rows)
        EXPECT_EQ(found(&FEMUnreadKeys::inCollection, json(document), keyPath, rules), unread) << document;
    EXPECT_EQ(found(&FEMUnreadKeys::inObject, json(R"({"a": {"b": {"x": 1}, "y": 2}})"), "a.b", rules),
              (Pointers{"/a/b/x", "/a/y"}));
}

TEST(UnreadKeys, AreFoundInLargeAndInLinkedDictionaries) {
    RepresentationBuilder builder;
    builder.beginDictionary();
    Pointers expected;
    for (int i = 0; i < 300; ++i) {
        const std::string key = "key" + std::to_string(i);
        builder.key(key);
        builder.number(Number(i));
        expected.push_back("/category/" + key);
    }
    builder.key("title");
    builder.string("read");
    builder.endDictionary();
    // A large value that is put into another document is not copied.
    const Representation document{{"category", builder.finish()}};
    EXPECT_EQ(found(&FEMUnreadKeys::inObject, document, {}, QELAsset::defaultRules), expected);
}

}  // namespace
}  // namespace QELModels::test
