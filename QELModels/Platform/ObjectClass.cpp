#include "QELModels/Platform/ObjectClass.h"

#include <algorithm>
#include <cstring>
#include <string>

#include "QELModels/Platform/Hash.h"
#include "QELModels/Platform/MappingFault.h"
#include "QELModels/Platform/RepresentationBuilder.h"

namespace QELModels::inline QELMODELS_ABI {

namespace {

template <class Slot>
Slot& at(const Property& property, Object& object) {
    return *static_cast<Slot*>(property.place(object));
}

// Slots are found in mutable objects; those who only read them say so here, once.
template <class Slot>
const Slot& at(const Property& property, const Object& object) {
    return *static_cast<const Slot*>(property.place(const_cast<Object&>(object)));
}

std::string_view textOf(const TextSlot& slot) noexcept {
    return {slot.data, slot.size};
}

void putText(TextSlot& slot, std::string_view text, BlockWriter& writer) {
    char* to = writer.reserve(text.size());
    std::copy(text.begin(), text.end(), to);
    writer.commit(text.size());
    slot = {to, text.size()};
}

void putText(TextSlot& slot, std::string_view text, const Value& value, BlockWriter& writer) {
    const Block* block = ValueAccess::block(value);
    if (block == nullptr) return putText(slot, text, writer);  // lent by somebody who will not wait
    writer.keep(block);
    slot = {text.data(), text.size()};
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
            at<NumberSlot>(*this, object) = {};
            return;
        case PropertyKind::text:
        case PropertyKind::url:
            at<TextSlot>(*this, object) = {};
            return;
        case PropertyKind::date:
            at<DateSlot>(*this, object) = {};
            return;
        case PropertyKind::color:
            at<ColorSlot>(*this, object) = {};
            return;
        case PropertyKind::array:
        case PropertyKind::dictionary:
            at<RepresentationSlot>(*this, object) = {};
            return;
        case PropertyKind::record:
            at<const Object*>(*this, object) = nullptr;
            return;
        case PropertyKind::list:
            at<const ListBase*>(*this, object) = nullptr;
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
            const auto& slot = at<NumberSlot>(*this, object);
            return slot.filled ? Value(NumberBits::number(slot.bits, slot.origin)) : Value();
        }
        case PropertyKind::text: {
            const auto& slot = at<TextSlot>(*this, object);
            return slot.data == nullptr ? Value() : ValueAccess::keptText(object.block(), textOf(slot));
        }
        case PropertyKind::url: {
            const auto& slot = at<TextSlot>(*this, object);
            if (slot.data == nullptr) return {};
            return ValueAccess::keptURL(object.block(), URLAccess::fromValidated(textOf(slot)));
        }
        case PropertyKind::date: {
            const auto& slot = at<DateSlot>(*this, object);
            return slot.filled ? Value(dateFromSecondsSince1970(slot.seconds)) : Value();
        }
        case PropertyKind::color: {
            const auto& slot = at<ColorSlot>(*this, object);
            return slot.filled ? Value(slot.color) : Value();
        }
        case PropertyKind::array:
        case PropertyKind::dictionary: {
            const auto& slot = at<RepresentationSlot>(*this, object);
            if (slot.node == nullptr) return {};
            return ValueAccess::keptRepresentation(RepresentationView::at(slot.node, slot.block));
        }
        case PropertyKind::record:
            return Value(at<const Object*>(*this, object));
        case PropertyKind::list:
            return Value(at<const ListBase*>(*this, object));
        case PropertyKind::boolean:
            return Value(Number(at<bool>(*this, object)));
        case PropertyKind::integer:
            return Value(Number(at<std::int64_t>(*this, object)));
    }
    return {};
}

bool Property::setValue(Object& object, const Value& value, BlockWriter& writer) const {
    if (isComputed()) throwCannotBeSet(*this, object);
    if (!value.isNull()) return put(object, value, writer);
    empty(object);
    return true;
}

void Property::setRecord(Object& object, const Object* record) const {
    at<const Object*>(*this, object) = record;
}

void Property::setList(Object& object, const ListBase* list) const {
    at<const ListBase*>(*this, object) = list;
}

bool Property::put(Object& object, const Value& value, BlockWriter& writer) const {
    switch (kind) {
        case PropertyKind::number: {
            const auto number = value.number();
            if (!number) return false;
            at<NumberSlot>(*this, object) = {NumberBits::of(*number), number->origin(), true};
            return true;
        }
        case PropertyKind::text: {
            const auto text = value.text();
            if (!text) return false;
            putText(at<TextSlot>(*this, object), *text, value, writer);
            return true;
        }
        case PropertyKind::url: {
            const auto url = value.url();
            if (!url) return false;
            putText(at<TextSlot>(*this, object), url->text(), value, writer);
            return true;
        }
        case PropertyKind::date: {
            const auto date = value.date();
            if (!date) return false;
            at<DateSlot>(*this, object) = {secondsSince1970(*date), true};
            return true;
        }
        case PropertyKind::color: {
            const auto color = value.color();
            if (!color) return false;
            at<ColorSlot>(*this, object) = {*color, true};
            return true;
        }
        case PropertyKind::array:
        case PropertyKind::dictionary: {
            const auto view = value.representation();
            if (!view || !(kind == PropertyKind::array ? view->isArray() : view->isDictionary()))
                return false;
            writer.keep(view->block());
            at<RepresentationSlot>(*this, object) = {view->node(), view->block()};
            return true;
        }
        case PropertyKind::record: {
            const Object* record = value.record();
            if (record == nullptr || !isOf(target, *record)) return false;
            writer.keep(record->block());
            at<const Object*>(*this, object) = record;
            return true;
        }
        case PropertyKind::list: {
            const ListBase* list = value.list();
            if (list == nullptr) return false;
            for (const Object* element : list->objects())
                if (!isOf(target, *element)) return false;
            writer.keep(list->block());
            at<const ListBase*>(*this, object) = list;
            return true;
        }
        case PropertyKind::boolean: {
            const auto number = value.number();
            if (!number) return false;
            at<bool>(*this, object) = number->boolValue();
            return true;
        }
        case PropertyKind::integer: {
            const auto number = value.number();
            if (!number) return false;
            at<std::int64_t>(*this, object) = number->int64Value();
            return true;
        }
    }
    return false;
}

bool Property::setValue(Object& object, RepresentationView value, BlockWriter& writer) const {
    switch (kind) {
        case PropertyKind::number: {
            const auto number = value.number();
            if (!number) return false;
            at<NumberSlot>(*this, object) = {NumberBits::of(*number), number->origin(), true};
            return true;
        }
        case PropertyKind::text:
            if (!value.isString()) return false;
            putText(at<TextSlot>(*this, object), value.node()->string(), writer);
            return true;
        case PropertyKind::array:
        case PropertyKind::dictionary: {
            if (!(kind == PropertyKind::array ? value.isArray() : value.isDictionary())) return false;
            const RepresentationNode* copy = copyRepresentation(value, writer);
            at<RepresentationSlot>(*this, object) = {copy, writer.block()};
            return true;
        }
        case PropertyKind::boolean: {
            const auto number = value.number();
            if (!number) return false;
            at<bool>(*this, object) = number->boolValue();
            return true;
        }
        case PropertyKind::integer: {
            const auto number = value.number();
            if (!number) return false;
            at<std::int64_t>(*this, object) = number->int64Value();
            return true;
        }
        default:
            return false;  // no JSON value is a URL, a date, a colour or a record by itself
    }
}

namespace {

bool equalFields(const Property& property, const Object& a, const Object& b) {
    switch (property.kind) {
        case PropertyKind::record: {
            const Object* first = at<const Object*>(property, a);
            const Object* second = at<const Object*>(property, b);
            return first == nullptr ? second == nullptr : first->isEqual(second);
        }
        case PropertyKind::list: {
            const ListBase* first = at<const ListBase*>(property, a);
            const ListBase* second = at<const ListBase*>(property, b);
            return first == nullptr ? second == nullptr : first->isEqual(second);
        }
        case PropertyKind::text:
        case PropertyKind::url: {
            const auto& first = at<TextSlot>(property, a);
            const auto& second = at<TextSlot>(property, b);
            if (first.data == second.data) return first.size == second.size;
            return first.data != nullptr && second.data != nullptr && textOf(first) == textOf(second);
        }
        case PropertyKind::number: {
            const auto& first = at<NumberSlot>(property, a);
            const auto& second = at<NumberSlot>(property, b);
            if (!first.filled || !second.filled) return first.filled == second.filled;
            return NumberBits::number(first.bits, first.origin) ==
                   NumberBits::number(second.bits, second.origin);
        }
        case PropertyKind::boolean:
            return at<bool>(property, a) == at<bool>(property, b);
        case PropertyKind::integer:
            return at<std::int64_t>(property, a) == at<std::int64_t>(property, b);
        default:
            return property.value(a) == property.value(b);
    }
}

std::uint64_t hashOfField(const Property& property, const Object& object) {
    switch (property.kind) {
        case PropertyKind::number: {
            const auto& slot = at<NumberSlot>(property, object);
            return slot.filled ? NumberBits::number(slot.bits, slot.origin).hash() : 0;
        }
        case PropertyKind::text:
        case PropertyKind::url: {
            const auto& slot = at<TextSlot>(property, object);
            return slot.data == nullptr ? 0 : hashOfText(textOf(slot));
        }
        case PropertyKind::date: {
            const auto& slot = at<DateSlot>(property, object);
            return slot.filled ? Number(slot.seconds).hash() : 0;
        }
        case PropertyKind::color: {
            const auto& slot = at<ColorSlot>(property, object);
            return slot.filled ? slot.color.hash() : 0;
        }
        case PropertyKind::array:
        case PropertyKind::dictionary: {
            const auto& slot = at<RepresentationSlot>(property, object);
            return slot.node == nullptr ? 0 : RepresentationView::at(slot.node, slot.block).hash();
        }
        case PropertyKind::record: {
            const Object* record = at<const Object*>(property, object);
            return record == nullptr ? 0 : record->hash();
        }
        case PropertyKind::list: {
            const ListBase* list = at<const ListBase*>(property, object);
            return list == nullptr ? 0 : list->hash();
        }
        case PropertyKind::boolean:
            return at<bool>(property, object) ? 1 : 0;
        case PropertyKind::integer:
            return static_cast<std::uint64_t>(at<std::int64_t>(property, object));
    }
    return 0;
}

std::uint64_t identityHash(const Object& object) noexcept {
    return hashOfWord(reinterpret_cast<std::uintptr_t>(&object));
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
    return std::all_of(equality.properties.begin(), equality.properties.end(), [&](const Property* property) {
        return equalFields(*property, *this, *other);
    });
}

std::uint64_t Object::hash() const {
    const PropertyOrder& order = isa_->hash();
    if (!order.declared) return identityHash(*this);
    std::uint64_t h = order.identityFirst ? identityHash(*this) : 0;
    for (const Property* property : order.properties)
        h = hashCombine(h, hashOfField(*property, *this));
    return h;
}

bool ListBase::isEqual(const ListBase* other) const {
    if (other == this) return true;
    if (other == nullptr || other->size_ != size_) return false;
    return std::equal(elements_, elements_ + size_, other->elements_, [](const Object* a, const Object* b) {
        return a->isEqual(b);
    });
}

}  // namespace QELModels::inline QELMODELS_ABI
