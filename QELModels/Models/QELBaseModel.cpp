#include "QELModels/Models/QELBaseModel.h"

#include <algorithm>

#include "QELModels/Records/Declaration.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

namespace {

// What the root object protocol declares. The two descriptions are names alone here: they are made of the
// values of all properties, so no property can be made of them.
Value hashOf(const Object& object) {
    return Number(object.hash());
}
Value superclassOf(const Object& object) {
    const ObjectClass* superclass = object.isa().superclass();
    return superclass == nullptr ? Value() : Value::text(superclass->name());
}
Value nothing(const Object&) {
    return {};
}
constexpr std::array<Property, 4> rootProperties{{
    {.name = "hash", .kind = PropertyKind::integer, .compute = &hashOf},
    {.name = "superclass", .kind = PropertyKind::text, .compute = &superclassOf},
    {.name = "description", .kind = PropertyKind::text, .compute = &nothing},
    {.name = "debugDescription", .kind = PropertyKind::text, .compute = &nothing},
}};
constexpr std::array<std::string_view, 4> rootKeys{
    rootProperties[0].name, rootProperties[1].name, rootProperties[2].name, rootProperties[3].name};

// Calls `visit(property)` for each property that has a key. Keys stand in the order of the properties, so
// each is found in a step or two.
template <class Visitor>
void forEachKeyedProperty(const ObjectClass& isa, Visitor&& visit) {
    const Property* property = isa.properties().data();
    for (const std::string_view key : isa.propertyKeys()) {
        while (property->name != key)
            ++property;
        visit(*property++);
    }
}

void append(std::string& text, Number number) {
    text += number.toString();
}

void append(std::string& text, const Value& value) {
    switch (value.kind()) {
        case Value::Kind::null:
            text += "(null)";
            return;
        case Value::Kind::number:
            append(text, *value.number());
            return;
        case Value::Kind::text:
            (text += '"').append(*value.text()) += '"';
            return;
        case Value::Kind::url:
            text += value.url()->text();
            return;
        case Value::Kind::date:
            append(text, secondsSince1970(*value.date()));
            return;
        case Value::Kind::color: {
            const Color color = *value.color();
            char separator = '(';
            for (const double component : {color.red, color.green, color.blue, color.alpha}) {
                text += separator;
                append(text, component);
                separator = ' ';
            }
            text += ')';
            return;
        }
        case Value::Kind::representation: {
            const auto raw = *value.representation();
            text += raw.isArray() ? '[' : '{';
            append(text, raw.size());
            text += raw.isArray() ? " elements]" : " members}";
            return;
        }
        case Value::Kind::record:
            text += static_cast<const QELBaseModel*>(value.record())->description();
            return;
        case Value::Kind::list:
            text += '[';
            append(text, value.list()->size());
            text += " records]";
            return;
    }
}

}  // namespace

constinit const ObjectClass QELBaseModel::objectClass(
    {"QELBaseModel",
     nullptr,
     rootProperties,
     rootKeys,
     sizeof(QELBaseModel),
     alignof(QELBaseModel),
     &ObjectAccess::constructObject<QELBaseModel>,
     &ObjectAccess::constructList<QELBaseModel>,
     false,
     {},
     {}});

const Value* PropertyDictionary::find(std::string_view name) const noexcept {
    const auto found = std::find_if(
        entries_.begin(), entries_.end(), [name](const Entry& entry) { return entry.first == name; });
    return found == entries_.end() ? nullptr : &found->second;
}

PropertyDictionary QELBaseModel::dictionaryValue() const {
    std::vector<PropertyDictionary::Entry> entries;
    entries.reserve(isa().propertyKeys().size());
    forEachKeyedProperty(
        isa(), [&](const Property& property) { entries.emplace_back(property.name, property.value(*this)); });
    return PropertyDictionary(std::move(entries));
}

Ref<QELBaseModel> QELBaseModel::copyWithZone(Zone* zone) const {
    BlockWriter writer(ObjectAccess::size(isa()) + BlockWriter::kRoomToKeep, zone, BlockWriter::Origin::copy);
    Object* copy = ObjectAccess::construct(isa(), writer);
    forEachKeyedProperty(
        isa(), [&](const Property& property) { property.setValue(*copy, property.value(*this), writer); });
    writer.finish();
    return Ref<QELBaseModel>::adopt(static_cast<const QELBaseModel*>(copy));
}

std::string QELBaseModel::description() const {
    std::string text = "<";
    text += isa().name();
    std::string_view separator = " ";
    for (const auto& [key, value] : dictionaryValue()) {
        text += separator;
        text += key;
        text += ": ";
        append(text, value);
        separator = ", ";
    }
    return text += '>';
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
