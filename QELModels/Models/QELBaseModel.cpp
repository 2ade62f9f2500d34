#include "QELModels/Models/QELBaseModel.h"

#include <algorithm>

#include "QELModels/Records/Declaration.h"
#include "QELModels/Records/detail/PropertySlot.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

namespace {

// The properties that every record has, whatever its class.
Value hashOf(const Object& object) {
    return Number(object.hash());
}
Value superclassOf(const Object& object) {
    const ObjectClass* superclass = object.isa().superclass();
    return superclass == nullptr ? Value() : Value::text(superclass->name());
}
Value descriptionOf(const Object& object) {
    return static_cast<const QELBaseModel&>(object).description();
}
constexpr std::array<Property, 4> rootProperties{{
    {.name = "hash", .kind = PropertyKind::integer, .compute = &hashOf},
    {.name = "superclass", .kind = PropertyKind::text, .compute = &superclassOf},
    {.name = "description", .kind = PropertyKind::text, .compute = &descriptionOf},
    {.name = "debugDescription", .kind = PropertyKind::text, .compute = &descriptionOf},
}};
constexpr std::array<std::string_view, 4> rootKeys{
    rootProperties[0].name, rootProperties[1].name, rootProperties[2].name, rootProperties[3].name};

void appendNumber(std::string& text, Number number) {
    text += number.toString();
}

void append(std::string& text, const Value& value) {
    switch (value.kind()) {
        case Value::Kind::null:
            text += "(null)";
            return;
        case Value::Kind::number:
            appendNumber(text, *value.number());
            return;
        case Value::Kind::text:
            (text += '"').append(*value.text()) += '"';
            return;
        case Value::Kind::url:
            text += value.url()->text();
            return;
        case Value::Kind::date:
            appendNumber(text, secondsSince1970(*value.date()));
            return;
        case Value::Kind::color: {
            const Color color = *value.color();
            char separator = '(';
            for (const double component : {color.red, color.green, color.blue, color.alpha}) {
                text += separator;
                appendNumber(text, component);
                separator = ' ';
            }
            text += ')';
            return;
        }
        case Value::Kind::representation: {
            const auto raw = *value.representation();
            text += raw.isArray() ? '[' : '{';
            appendNumber(text, raw.size());
            text += raw.isArray() ? " elements]" : " members}";
            return;
        }
        case Value::Kind::record:
            text += static_cast<const QELBaseModel*>(value.record())->description();
            return;
        case Value::Kind::list:
            text += '[';
            appendNumber(text, value.list()->size());
            text += " records]";
            return;
    }
}

}  // namespace

constinit const ObjectClassOf<QELBaseModel> QELBaseModel::objectClass(
    detail::descriptionOf<QELBaseModel>("QELBaseModel", nullptr, rootProperties, rootKeys, false));

const Value* PropertyDictionary::find(std::string_view name) const noexcept {
    const auto found = std::find_if(
        entries_.begin(), entries_.end(), [name](const Entry& entry) { return entry.first == name; });
    return found == entries_.end() ? nullptr : &found->second;
}

PropertyDictionary QELBaseModel::dictionaryValue() const {
    std::vector<PropertyDictionary::Entry> entries;
    entries.reserve(isa().propertyKeys().size());
    isa().forEachKeyedProperty(
        [&](const Property& property) { entries.emplace_back(property.name, property.value(*this)); });
    return PropertyDictionary(std::move(entries));
}

Ref<QELBaseModel> QELBaseModel::copyWithZone(Zone* zone) const {
    detail::BlockWriter writer(
        detail::ObjectAccess::size(isa()) + detail::BlockKeeper::kBytesForFirst,
        zone,
        detail::BlockOrigin::copy);
    Object* copy = detail::ObjectAccess::construct(isa(), writer);
    isa().forEachKeyedProperty(
        [&](const Property& property) { detail::setValue(property, *copy, property.value(*this), writer); });
    writer.finish();
    return Ref<QELBaseModel>::adopt(static_cast<const QELBaseModel*>(copy));
}

std::string QELBaseModel::description() const {
    std::string text = "<";
    text += isa().name();
    std::string_view separator = " ";
    isa().forEachKeyedProperty([&](const Property& property) {
        if (property.compute == &descriptionOf) return;  // it is this text
        text += separator;
        text += property.name;
        text += ": ";
        append(text, property.value(*this));
        separator = ", ";
    });
    return text += '>';
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
