// Promise: the schema of a kind lists every key that its mapping reads, where it is, with the kinds of
// values that it takes and the property that it fills. (What validators make of it is tested beside it, in
// schema/.)

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "tests/DamagedDocuments.h"
#include "tests/JSONSupport.h"
#include "tool/generate/Schema.h"

namespace QELModels::test {
namespace {

// The schema of the value at a pointer; any index leads to the elements.
RepresentationView schemaAt(RepresentationView schema, std::string_view pointer) {
    while (!pointer.empty()) {
        pointer.remove_prefix(1);
        const std::string_view token = pointer.substr(0, pointer.find('/'));
        pointer.remove_prefix(token.size());
        const auto properties = schema.valueForKey("properties");
        const auto next = properties ? properties->valueForKey(token) : schema.valueForKey("items");
        if (!next) throw std::invalid_argument("nothing at " + std::string(token));
        schema = *next;
    }
    return schema;
}

std::size_t countOfTitles(RepresentationView schema) {
    std::size_t count = 0;
    for (const auto& [key, value] : schema.members())
        count += value.isDictionary() ? countOfTitles(value) : std::size_t{key == "title"};
    return count;
}

TEST(Schema, HasEveryKeyThatIsRead) {
    for (const tool::Kind& kind : tool::kinds()) {
        SCOPED_TRACE(kind.name);
        const Representation schema = json(tool::schemaOf(kind));
        const WholeDocument document(kind);
        std::size_t count = 0;
        for (const Place& place : document.places) {
            if (place.what != Place::What::rule) continue;
            const auto title = schemaAt(schema, place.path).valueForKey("title");
            ASSERT_TRUE(title) << place.path;
            EXPECT_EQ(title->text(), place.rule->property->name) << place.path;
            ++count;
        }
        EXPECT_EQ(countOfTitles(schema), count);
    }
}

TEST(Schema, SaysWhatEachKeyTakes) {
    // A key of a kind, the property that it fills, and what it takes.
    const struct {
        std::string kind, pointer, property, schema;
    } rows[] = {
        {"asset", "/id", "assetIdentifier", R"("type":["number","boolean","null"])"},
        {"asset", "/showDisplays", "showDisplays", R"("type":["number","boolean","null"])"},
        {"asset", "/created", "createdAt", R"("type":["number","boolean","null"])"},
        {"asset", "/title", "title", R"("type":["string","null"])"},
        {"asset", "/status", "status", R"("type":["string","null"])"},
        {"asset", "/streamType", "streamType", R"("enum":["vod","wasLive","live",null])"},
        {"asset", "/articleUrl", "articleUrl", R"("type":["string","null"],"format":"uri-reference")"},
        {"asset", "/additional/metadata", "metadata", R"("type":["object","null"])"},
        {"asset", "/additional/barrels", "barrels", R"("type":["array","null"])"},
        {"category",
         "/additional/backgroundColor",
         "backgroundColor",
         R"("type":["string","null"],"pattern":"^[\\s\\S]{7}$")"},
        {"categories",
         "/_embedded/categories/0/lastAsset",
         "lastAsset",
         R"("type":["object","null"],"properties":{"id":{"title":"lastAssetIdentifier",)"
         R"("type":["number","boolean","null"]}})"},
        {"asset",
         "/additional/cuePoints",
         "cuePoints",
         R"("type":["array","null"],"items":{"type":["object","null"],"properties":)"
         R"({"timeline":{"title":"timeline","type":["number","boolean","null"]}}})"},
    };
    for (const auto& [kind, pointer, property, schema] : rows)
        EXPECT_EQ(jsonFromRepresentation(schemaAt(json(tool::schemaOf(tool::kindNamed(kind))), pointer)),
                  "{\"title\":\"" + property + "\"," + schema + "}")
            << pointer;
    const std::string editorials = tool::schemaOf(tool::kindNamed("editorials"));
    EXPECT_TRUE(
        editorials.starts_with("{\n  \"$schema\": \"https://json-schema.org/draft/2020-12/schema\",\n"))
        << editorials;
    EXPECT_EQ(schemaAt(json(editorials), "/_embedded").size(), 1u);  // properties alone
}

}  // namespace
}  // namespace QELModels::test
