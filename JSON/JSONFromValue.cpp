#include "JSON/JSONFromValue.h"

#include <string_view>

#include "QELModels/Records/ObjectClass.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

namespace {

void writeColor(JSONWriter& writer, const Color& color) {
    writer.beginDictionary();
    writer.key("red");
    writer.number(color.red);
    writer.key("green");
    writer.number(color.green);
    writer.key("blue");
    writer.number(color.blue);
    writer.key("alpha");
    writer.number(color.alpha);
    writer.endDictionary();
}

}  // namespace

void writeJSON(JSONWriter& writer, const Value& value) {
    switch (value.kind()) {
        case Value::Kind::null:
            return writer.null();
        case Value::Kind::number:
            return writer.number(*value.number());
        case Value::Kind::text:
            return writer.string(*value.text());
        case Value::Kind::url:
            return writer.string(value.url()->text());
        case Value::Kind::date:
            return writer.number(secondsSince1970(*value.date()));
        case Value::Kind::color:
            return writeColor(writer, *value.color());
        case Value::Kind::representation:
            return writer.representation(*value.representation());
        case Value::Kind::record:
            return writeJSON(writer, *value.record());
        case Value::Kind::list:
            return writeJSON(writer, value.list());
    }
}

// Records nest as deep as the engine lets them, so recursion is bounded.
void writeJSON(JSONWriter& writer, const Object& record) {
    writer.beginDictionary();
    record.isa().forEachKeyedProperty([&](const Property& property) {
        writer.key(property.name);
        writeJSON(writer, property.value(record));
    });
    writer.endDictionary();
}

void writeJSON(JSONWriter& writer, const ListBase* list) {
    if (list == nullptr) return writer.null();
    writer.beginArray();
    for (const Object* element : list->objects())
        writeJSON(writer, *element);
    writer.endArray();
}

std::string jsonFromValue(const Value& value, JSONWriter::Layout layout) {
    std::string text;
    JSONWriter writer(text, layout);
    writeJSON(writer, value);
    return text;
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
