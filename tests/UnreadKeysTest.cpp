// The keys of a document that no rule of an application reads are found, each once and in the document's
// order. What the library's own rules read is in ExplainTest.

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "QELModels/Mapping/FEMMapping.h"
#include "QELModels/Mapping/FEMUnreadKeys.h"
#include "QELModels/Models/QELAsset.h"
#include "tests/JSONSupport.h"

namespace QELModels::test {
namespace {

// The JSON Pointers of the unread keys, with "/" after that of a sub-tree.
std::string unread(const FEMRules& rules, std::string_view document, std::string_view keyPath = {}) {
    std::vector<std::pair<std::string, Representation>> found;
    FEMUnreadKeys::inObject(
        json(document), keyPath, rules, [&](const FEMPath& path, RepresentationView value) {
            found.emplace_back(path.pointer(), Representation(value));
        });
    std::string pointers;
    for (const auto& [pointer, kept] : found)  // longer than the document
        pointers += pointer + (kept->isDictionary() || kept->isArray() ? "/ " : " ");
    return pointers;
}

TEST(UnreadKeys, AreBesideKeyPaths) {
    const FEMRules& rules = QELAsset::defaultRules;
    EXPECT_EQ(unread(rules, R"({"a/b~c": 1, "a.b": 2, "": [], "id": {"x": 1}})"), "/a~1b~0c /a.b // ");
    EXPECT_EQ(unread(rules, R"({"additional": {"chapters": [[{"z": 3}], 5, {"y": 2}]}})", ""),
              "/additional/chapters/2/y ");
    EXPECT_EQ(unread(rules, R"({"a": {"b": {"x": 1}, "y": 2}, "id": 1})", "a.b"), "/a/b/x /a/y /id ");

    // Several rules may ask for one key, in whole, in part, or with different hopes for its kind.
    FEMMapping settings(QELAssetAdditionalSettings::objectClass);
    settings.addAttributeWithProperty("source", "deep.source");
    FEMMapping chapters(QELAssetChapter::objectClass);
    chapters.addAttributeWithProperty("title", "t");
    FEMMapping mapping(QELAssetAdditional::objectClass);
    mapping.addAttributesFromDictionary(
        {{"url", "a.b"}, {"imageCaption", "a.c.d"}, {"externalIdentifier", ".."}});
    mapping.addRelationshipMapping(settings, "settings", "s");
    FEMMapping both = mapping;
    mapping.addAttributeWithProperty("access", "s.extra.access");
    EXPECT_EQ(unread(mapping.rules(), R"({"a": {"b": {"x": 1}, "c": {"d": [], "x": 2}, "x": 3}})"),
              "/a/c/x /a/x ");
    EXPECT_EQ(unread(mapping.rules(), R"({"": {"": {"": 1, "x": 2}, "y": 3}})"), "///x //y ");
    const std::string_view document =
        R"({"s": {"deep": {"source": 1, "x": 2}, "extra": {"access": {"y": 1}, "z": 3}, "w": 4}, "a": [{"x": 1}], "v": 5})";
    EXPECT_EQ(unread(mapping.rules(), document), "/s/deep/x /s/extra/z /s/w /v ");

    // As a record and as a list, it is of the wrong kind for one of them, and read; as a raw value, too.
    both.addToManyRelationshipMapping(chapters, "chapters", "s");
    EXPECT_EQ(unread(both.rules(), document), "/v ");
    mapping.addAttributeWithProperty("metadata", "s");
    EXPECT_EQ(unread(mapping.rules(), document), "/v ");
}

}  // namespace
}  // namespace QELModels::test
