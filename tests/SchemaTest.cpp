// Promise: the schema of a kind lists every key that its mapping reads, where it stands, with the kinds of
// values that it takes and the property that it fills. (What validators make of it is tested beside it, in
// schema/.)

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "tests/DamagedDocuments.h"
#include "tests/TestSupport.h"
#include "tool/generate/Schema.h"

namespace QELModels::test {
namespace {

// The schema of the value at a pointer; an index stands for every element.
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
    const struct {
        std::string_view kind, pointer, schema;
    } rows[] = {
        {"asset", "/id", R"({"title":"assetIdentifier","type":["number","boolean","null"]})"},
        {"asset", "/showDisplays", R"({"title":"showDisplays","type":["number","boolean","null"]})"},
        {"asset", "/created", R"({"title":"createdAt","type":["number","boolean","null"]})"},
        {"asset", "/title", R"({"title":"title","type":["string","null"]})"},
        {"asset", "/status", R"({"title":"status","type":["string","null"]})"},
        {"asset", "/streamType", R"({"title":"streamType","enum":["vod","wasLive","live",null]})"},
        {"asset",
         "/articleUrl",
         R"({"title":"articleUrl","type":["string","null"],"format":"uri-reference"})"},
        {"asset", "/additional/metadata", R"({"title":"metadata","type":["object","null"]})"},
        {"asset", "/additional/barrels", R"({"title":"barrels","type":["array","null"]})"},
        {"category",
         "/additional/backgroundColor",
         R"({"title":"backgroundColor","type":["string","null"],"pattern":"^[\\s\\S]{7}$"})"},
        {"categories",
         "/_embedded/categories/0/lastAsset",
         R"({"title":"lastAsset","type":["object","null"],"properties":{"id":{"title":"lastAssetIdentifier",)"
         R"("type":["number","boolean","null"]}}})"},
        {"asset",
         "/additional/cuePoints",
         R"({"title":"cuePoints","type":["array","null"],"items":{"type":["object","null"],"properties":)"
         R"({"timeline":{"title":"timeline","type":["number","boolean","null"]}}}})"},
    };
    for (const auto& [kind, pointer, schema] : rows)
        EXPECT_EQ(jsonFromRepresentation(schemaAt(json(tool::schemaOf(tool::kindNamed(kind))), pointer)),
                  schema)
            << pointer;
    const std::string editorials = tool::schemaOf(tool::kindNamed("editorials"));
    EXPECT_TRUE(
        editorials.starts_with("{\n  \"$schema\": \"https://json-schema.org/draft/2020-12/schema\",\n"))
        << editorials;
    EXPECT_EQ(schemaAt(json(editorials), "/_embedded").size(), 1u);  // properties alone
}

}  // namespace
}  // namespace QELModels::test
