#include "QELModels/Records/ObjectClass.h"

#include <algorithm>
#include <cstddef>
#include <string>

#include "QELModels/Platform/detail/Hash.h"
#include "QELModels/Records/MappingFault.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

namespace {

void putText(TextSlot& slot, std::string_view text, const Value& value, BlockWriter& writer) {
    slot = TextSlot(text);
    writer.keep(ValueAccess::block(value));
}

[[noreturn]] void throwCannotBeSet(const Property& property, const Object& object) {
    throw MappingFault(std::string(object.isa().name()) + ": the property '" + std::string(property.name) +
                       "' cannot be set");
}

bool isOf(const ObjectClass* wanted, const Object& object) noexcept {
    for (const ObjectClass* isa = &object.isa(); isa != nullptr; isa = isa->superclass())
        if (isa == wanted) return true;
    return false;
}

}  // namespace

void Property::empty(Object& object) const {
    switch (kind) {
        case PropertyKind::number:
            slot<NumberSlot>(object) = {};
            return;
        case PropertyKind::text:
        case PropertyKind::url:
            slot<TextSlot>(object) = {};
            return;
        case PropertyKind::date:
            slot<DateSlot>(object) = {};
            return;
        case PropertyKind::color:
            slot<ColorSlot>(object) = {};
            return;
        case PropertyKind::array:
        case PropertyKind::dictionary:
            slot<RepresentationSlot>(object) = {};
            return;
        case PropertyKind::record:
            slot<const Object*>(object) = nullptr;
            return;
        case PropertyKind::list:
            slot<const ListBase*>(object) = nullptr;
            return;
        case PropertyKind::boolean:
        case PropertyKind::integer:
            return;  // null says nothing about a scalar
    }
}

Value Property::value(const Object& object) const {
    if (isComputed()) return compute(object);
    switch (kind) {
        case PropertyKind::number: {
            const auto& stored = slot<NumberSlot>(object);
            return stored.filled ? Value(NumberBits::number(stored.bits, stored.origin)) : Value();
        }
        case PropertyKind::text: {
            const auto& stored = slot<TextSlot>(object);
            return stored.data == nullptr ? Value() : ValueAccess::keptText(object.block(), stored.text());
        }
        case PropertyKind::url: {
            const auto& stored = slot<TextSlot>(object);
            if (stored.data == nullptr) return {};
            return ValueAccess::keptURL(object.block(), URLAccess::fromValidated(stored.text()));
        }
        case PropertyKind::date: {
            const auto& stored = slot<DateSlot>(object);
            return stored.filled ? Value(dateFromSecondsSince1970(stored.seconds)) : Value();
        }
        case PropertyKind::color: {
            const auto& stored = slot<ColorSlot>(object);
            return stored.filled ? Value(stored.color) : Value();
        }
        case PropertyKind::array:
        case PropertyKind::dictionary: {
            const auto& stored = slot<RepresentationSlot>(object);
            if (stored.node == nullptr) return {};
            return ValueAccess::keptRepresentation(RepresentationView::at(stored.node, stored.block));
        }
        case PropertyKind::record:
            return Value(slot<const Object*>(object));
        case PropertyKind::list:
            return Value(slot<const ListBase*>(object));
        case PropertyKind::boolean:
            return Value(Number(slot<bool>(object)));
        case PropertyKind::integer:
            return Value(Number(slot<std::int64_t>(object)));
    }
    return {};
}

bool Property::setValue(Object& object, const Value& value, BlockWriter& writer) const {
    if (isComputed()) throwCannotBeSet(*this, object);
    if (!value.isNull()) return put(object, value, writer);
    empty(object);
    return true;
}

bool Property::put(Object& object, const Value& value, BlockWriter& writer) const {
    switch (kind) {
        case PropertyKind::number: {
            const auto number = value.number();
            if (!number) return false;
            slot<NumberSlot>(object) = {NumberBits::of(*number), number->origin(), true};
            return true;
        }
        case PropertyKind::text: {
            const auto text = value.text();
            if (!text) return false;
            putText(slot<TextSlot>(object), *text, value, writer);
            return true;
        }
        case PropertyKind::url: {
            const auto url = value.url();
            if (!url) return false;
            putText(slot<TextSlot>(object), url->text(), value, writer);
            return true;
        }
        case PropertyKind::date: {
            const auto date = value.date();
            if (!date) return false;
            slot<DateSlot>(object) = {secondsSince1970(*date), true};
            return true;
        }
        case PropertyKind::color: {
            const auto color = value.color();
            if (!color) return false;
            slot<ColorSlot>(object) = {*color, true};
            return true;
        }
        case PropertyKind::array:
        case PropertyKind::dictionary: {
            const auto view = value.representation();
            if (!view || !(kind == PropertyKind::array ? view->isArray() : view->isDictionary()))
                return false;
            writer.keep(view->block());
            slot<RepresentationSlot>(object) = {view->node(), view->block()};
            return true;
        }
        case PropertyKind::record: {
            const Object* record = value.record();
            if (record == nullptr || !isOf(target, *record)) return false;
            writer.keepBlock(record->block());
            slot<const Object*>(object) = record;
            return true;
        }
        case PropertyKind::list: {
            const ListBase* list = value.list();
            if (list == nullptr) return false;
            for (const Object* element : list->objects())
                if (!isOf(target, *element)) return false;
            writer.keepBlock(list->block());
            slot<const ListBase*>(object) = list;
            return true;
        }
        case PropertyKind::boolean: {
            const auto number = value.number();
            if (!number) return false;
            slot<bool>(object) = number->boolValue();
            return true;
        }
        case PropertyKind::integer: {
            const auto number = value.number();
            if (!number) return false;
            slot<std::int64_t>(object) = number->int64Value();
            return true;
        }
    }
    return false;
}

namespace {

bool equal(bool a, bool b) noexcept {
    return a == b;
}
bool equal(std::int64_t a, std::int64_t b) noexcept {
    return a == b;
}
bool equal(const NumberSlot& a, const NumberSlot& b) noexcept {
    if (!a.filled || !b.filled) return a.filled == b.filled;
    return NumberBits::number(a.bits, a.origin) == NumberBits::number(b.bits, b.origin);
}
bool equal(const TextSlot& a, const TextSlot& b) noexcept {
    if (a.data == b.data) return a.size == b.size;
    return a.data != nullptr && b.data != nullptr && a.text() == b.text();
}
bool equal(const DateSlot& a, const DateSlot& b) noexcept {
    return a.filled && b.filled ? a.seconds == b.seconds : a.filled == b.filled;
}
bool equal(const ColorSlot& a, const ColorSlot& b) noexcept {
    return a.filled && b.filled ? a.color == b.color : a.filled == b.filled;
}
bool equal(const RepresentationSlot& a, const RepresentationSlot& b) {
    if (a.node == nullptr || b.node == nullptr) return a.node == b.node;
    return RepresentationView::at(a.node, a.block) == RepresentationView::at(b.node, b.block);
}
// Records and lists.
template <class T>
bool equal(const T* a, const T* b) {
    return a == nullptr ? b == nullptr : a->isEqual(b);
}

template <class Slot>
bool equalSlots(const Property& property, const Object& a, const Object& b) {
    return equal(property.slot<Slot>(a), property.slot<Slot>(b));
}

bool equalFields(const Property& property, const Object& a, const Object& b) {
    switch (property.kind) {
        case PropertyKind::number:
            return equalSlots<NumberSlot>(property, a, b);
        case PropertyKind::text:
        case PropertyKind::url:
            return equalSlots<TextSlot>(property, a, b);
        case PropertyKind::date:
            return equalSlots<DateSlot>(property, a, b);
        case PropertyKind::color:
            return equalSlots<ColorSlot>(property, a, b);
        case PropertyKind::array:
        case PropertyKind::dictionary:
            return equalSlots<RepresentationSlot>(property, a, b);
        case PropertyKind::record:
            return equalSlots<const Object*>(property, a, b);
        case PropertyKind::list:
            return equalSlots<const ListBase*>(property, a, b);
        case PropertyKind::boolean:
            return equalSlots<bool>(property, a, b);
        case PropertyKind::integer:
            return equalSlots<std::int64_t>(property, a, b);
    }
    return false;
}

std::uint64_t hashOfField(const Property& property, const Object& object) {
    switch (property.kind) {
        case PropertyKind::number: {
            const auto& stored = property.slot<NumberSlot>(object);
            return stored.filled ? NumberBits::number(stored.bits, stored.origin).hash() : 0;
        }
        case PropertyKind::text:
        case PropertyKind::url: {
            const auto& stored = property.slot<TextSlot>(object);
            return stored.data == nullptr ? 0 : detail::hashOfText(stored.text());
        }
        case PropertyKind::date: {
            const auto& stored = property.slot<DateSlot>(object);
            return stored.filled ? Number(static_cast<double>(stored.seconds)).hash() : 0;
        }
        case PropertyKind::color: {
            const auto& stored = property.slot<ColorSlot>(object);
            return stored.filled ? stored.color.hash() : 0;
        }
        case PropertyKind::array:
        case PropertyKind::dictionary: {
            const auto& stored = property.slot<RepresentationSlot>(object);
            return stored.node == nullptr ? 0 : RepresentationView::at(stored.node, stored.block).hash();
        }
        case PropertyKind::record: {
            const Object* record = property.slot<const Object*>(object);
            return record == nullptr ? 0 : record->hash();
        }
        case PropertyKind::list: {
            const ListBase* list = property.slot<const ListBase*>(object);
            return list == nullptr ? 0 : list->hash();
        }
        case PropertyKind::boolean:
            return property.slot<bool>(object) ? 1 : 0;
        case PropertyKind::integer:
            return static_cast<std::uint64_t>(property.slot<std::int64_t>(object));
    }
    return 0;
}

std::uint64_t identityHash(const Object& object) noexcept {
    return detail::hashOfWord(reinterpret_cast<std::uintptr_t>(&object));
}

}  // namespace

const Property* ObjectClass::property(std::string_view name) const noexcept {
    const auto found = std::find_if(is_.properties.begin(),
                                    is_.properties.end(),
                                    [name](const Property& property) { return property.name == name; });
    return found == is_.properties.end() ? nullptr : &*found;
}

bool Object::isEqual(const Object* other) const {
    if (other == this) return true;
    if (other == nullptr || other->isa_ != isa_) return false;
    return isEqualByFields(other);
}

bool Object::isEqualByFields(const Object* other) const {
    if (other == this) return true;
    const PropertyOrder& equality = isa_->equality();
    if (other == nullptr || !equality.declared || equality.identityFirst) return false;
    for (const Property* property : equality.properties)
        if (!equalFields(*property, *this, *other)) return false;
    return true;
}

std::uint64_t Object::hash() const {
    const PropertyOrder& order = isa_->hash();
    if (!order.declared) return identityHash(*this);
    std::uint64_t h = order.identityFirst ? identityHash(*this) : 0;
    for (const Property* property : order.properties)
        h = detail::hashCombine(h, hashOfField(*property, *this));
    return h;
}

bool ListBase::isEqual(const ListBase* other) const {
    if (other == this) return true;
    if (other == nullptr || other->size_ != size_) return false;
    return std::equal(elements_, elements_ + size_, other->elements_, [](const Object* a, const Object* b) {
        return a->isEqual(b);
    });
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
