#include "tool/generate/Schema.h"

#include <fmt/format.h>

#include <algorithm>
#include <initializer_list>
#include <string_view>
#include <vector>

#include "JSON/JSONWriter.h"
#include "QELModels/Platform/KeyPath.h"
#include "tool/Members.h"

namespace QELModels::tool {

namespace {

// One key of a dictionary: the last one of a rule's key path, or one that key paths lead through.
struct Key {
    std::string_view name;
    const FEMRule* rule = nullptr;
    std::vector<Key> further = {};
};

void add(std::vector<Key>& keys, std::string_view keyPath, const FEMRule& rule) {
    const KeyPath path(keyPath);
    auto key =
        std::find_if(keys.begin(), keys.end(), [&path](const Key& one) { return one.name == path.first; });
    if (key == keys.end()) key = keys.insert(keys.end(), Key{path.first});
    if (path.isLast())
        key->rule = &rule;
    else
        add(key->further, path.rest, rule);
}

class SchemaWriter {
public:
    explicit SchemaWriter(JSONWriter& json) : json_(json) {}

    void document(const Kind& kind) {
        json_.beginDictionary();
        writeMember(json_, "$schema", "https://json-schema.org/draft/2020-12/schema");
        writeMember(json_,
                    "description",
                    fmt::format("What the apps read of a document of the kind {} ({})",
                                kind.name,
                                kind.rules->objectClass->name()));
        if (kind.isPage()) {
            type({"object", "null"});
            page(kind.keyPath, *kind.rules);
        } else {
            record(*kind.rules);
        }
        json_.endDictionary();
    }

private:
    // The list at the end of a key path.
    void page(std::string_view keyPath, const FEMRules& rules) {
        const KeyPath path(keyPath);
        json_.key("properties");
        json_.beginDictionary();
        json_.key(path.first);
        json_.beginDictionary();
        if (path.isLast())
            list(rules);
        else
            page(path.rest, rules);
        json_.endDictionary();
        json_.endDictionary();
    }

    void list(const FEMRules& rules) {
        type({"array", "null"});
        json_.key("items");
        json_.beginDictionary();
        record(rules);
        json_.endDictionary();
    }

    void record(const FEMRules& rules) {
        type({"object", "null"});
        std::vector<Key> keys;
        for (const FEMRule& rule : rules.attributes)
            add(keys, rule.keyPath, rule);
        for (const FEMRule& rule : rules.relationships)
            add(keys, rule.keyPath, rule);
        properties(keys);
    }

    void properties(const std::vector<Key>& keys) {
        json_.key("properties");
        json_.beginDictionary();
        for (const Key& key : keys) {
            json_.key(key.name);
            json_.beginDictionary();
            // Any value in the middle of a key path is right: what the path leads to is then missing.
            if (key.rule != nullptr) value(*key.rule);
            if (!key.further.empty()) properties(key.further);
            json_.endDictionary();
        }
        json_.endDictionary();
    }

    void value(const FEMRule& rule) {
        writeMember(json_, "title", rule.property->name);
        if (rule.isRelationship()) return rule.toMany ? list(rule.nestedRules()) : record(rule.nestedRules());
        switch (rule.accepts()) {
            case FEMAccepts::anything:
                return;
            case FEMAccepts::nothing:
                return type({"null"});
            case FEMAccepts::text:
                return type({"string", "null"});
            case FEMAccepts::reference:
                type({"string", "null"});
                return writeMember(json_, "format", "uri-reference");
            case FEMAccepts::color:
                type({"string", "null"});
                // Reading is lenient in all but the length.
                return writeMember(json_, "pattern", R"(^[\s\S]{7}$)");
            case FEMAccepts::word:
                return words(rule.map);
            case FEMAccepts::number:
                return type({"number", "boolean", "null"});
            case FEMAccepts::array:
                return type({"array", "null"});
            case FEMAccepts::dictionary:
                return type({"object", "null"});
        }
    }

    void words(const FEMMapRule& table) {
        json_.key("enum");
        json_.beginArray();
        for (std::size_t i = 0; i < table.size; ++i)
            json_.string(table.word(table, i));
        json_.null();
        json_.endArray();
    }

    void type(std::initializer_list<std::string_view> types) {
        json_.key("type");
        json_.beginArray();
        for (const std::string_view type : types)
            json_.string(type);
        json_.endArray();
    }

    JSONWriter& json_;
};

}  // namespace

std::string schemaOf(const Kind& kind) {
    std::string text;
    JSONWriter json(text, JSONWriter::Layout::indented);
    SchemaWriter(json).document(kind);
    return text;
}

}  // namespace QELModels::tool
