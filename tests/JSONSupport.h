#pragma once

// What the tests share, with documents as JSON, and records and values as short texts.

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "JSON/JSONReader.h"
#include "JSON/JSONWriter.h"
#include "QELModels/Mappers/QELMapperProtocol.h"
#include "QELModels/Models/QELAsset.h"
#include "tests/TestSupport.h"

namespace QELModels::test {

inline Representation json(std::string_view text) {
    JSONError error;
    auto read = representationFromJSON(text, &error);
    if (!read) throw std::invalid_argument(std::string(text) + ": " + error.reason);
    return *read;
}

template <class Model>
Ref<Model> mapped(std::string_view text, const FEMOptions& options = {}) {
    return mappedObject<Model>(json(text), options);
}
inline Ref<QELAsset> assetFrom(std::string_view text) {
    return mapped<QELAsset>(text);
}

/// A value as a short text, in which every kind looks different: 1, true, "text", <url>, @date, #(colour),
/// raw JSON, `QELAsset` for a record and `[2]` for a list of two.
inline std::string show(const Value& value) {
    switch (value.kind()) {
        case Value::Kind::null:
            return "null";
        case Value::Kind::number:
            if (value.number()->isBoolean()) return value.number()->boolValue() ? "true" : "false";
            return value.number()->toString();
        case Value::Kind::text:
            return '"' + std::string(*value.text()) + '"';
        case Value::Kind::url:
            return '<' + std::string(value.url()->text()) + '>';
        case Value::Kind::date:
            return '@' + Number(secondsSince1970(*value.date())).toString();
        case Value::Kind::color: {
            const Color color = *value.color();
            const auto part = [](double component) { return Number(component * 255).toString(); };
            return "#(" + part(color.red) + ' ' + part(color.green) + ' ' + part(color.blue) + ' ' +
                   Number(color.alpha).toString() + ')';
        }
        case Value::Kind::representation:
            return jsonFromRepresentation(*value.representation());
        case Value::Kind::record:
            return std::string(value.record()->isa().name());
        case Value::Kind::list:
            return '[' + std::to_string(value.list()->size()) + ']';
    }
    return "?";
}

inline std::string showAt(const Object& record, std::string_view path) {
    return show(at(record, path));
}

}  // namespace QELModels::test
