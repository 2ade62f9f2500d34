#include "QELModels/Records/detail/Slots.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

bool areSame(const Color& a, const Color& b) noexcept {
    const double Color::*const components[] = {&Color::red, &Color::green, &Color::blue, &Color::alpha};
    return std::all_of(std::begin(components), std::end(components), [&](auto component) {
        return NumberBits::areSame(a.*component, b.*component);
    });
}

bool NumberSlot::assign(const Value& value, const ObjectClass*, BlockWriter&) {
    const auto number = value.number();
    if (!number) return false;
    *this = {NumberBits::of(*number), number->origin(), true};
    return true;
}

void TextSlot::throwTooLong() {
    throw std::length_error("a text of 4 GB or more");
}
bool TextSlot::assign(const Value& value, const ObjectClass*, BlockWriter& writer) {
    const auto text = value.text();
    if (!text) return false;
    writer.keeper().keep(ValueAccess::block(value));
    set(*text);
    return true;
}
bool TextSlot::store(void* slot, RepresentationView value, BlockWriter& writer) {
    if (!value.isString()) return false;
    static_cast<TextSlot*>(slot)->set(writer.keepTextOfBlock(RepresentationAccess::node(value)->string()));
    return true;
}

bool URLSlot::assign(const Value& value, const ObjectClass*, BlockWriter& writer) {
    const auto url = value.url();
    if (!url) return false;
    writer.keeper().keep(ValueAccess::block(value));
    set(url->text());
    return true;
}

bool DateSlot::assign(const Value& value, const ObjectClass*, BlockWriter&) {
    const auto date = value.date();
    if (!date) return false;
    set(*date);
    return true;
}

bool ColorSlot::assign(const Value& value, const ObjectClass*, BlockWriter&) {
    const auto assigned = value.color();
    if (!assigned) return false;
    *this = {*assigned, true};
    return true;
}
bool ColorSlot::equals(const ColorSlot& other) const noexcept {
    return filled && other.filled ? areSame(color, other.color) : filled == other.filled;
}

bool RawSlot::assignIf(bool fits, RepresentationView value, BlockWriter& writer) {
    if (!fits) return false;
    writer.keeper().keep(RepresentationAccess::block(value));
    node = RepresentationAccess::node(value);
    block = RepresentationAccess::block(value);
    return true;
}
bool RawSlot::storeIf(bool fits, RepresentationView value, BlockWriter& writer) {
    if (!fits) return false;
    node = RepresentationAccess::copy(value, writer);
    block = writer.block();
    return true;
}

bool ArraySlot::assign(const Value& value, const ObjectClass*, BlockWriter& writer) {
    const auto raw = value.representation();
    return raw && assignIf(raw->isArray(), *raw, writer);
}
bool ArraySlot::store(void* slot, RepresentationView value, BlockWriter& writer) {
    return static_cast<ArraySlot*>(slot)->storeIf(value.isArray(), value, writer);
}

bool DictionarySlot::assign(const Value& value, const ObjectClass*, BlockWriter& writer) {
    const auto raw = value.representation();
    return raw && assignIf(raw->isDictionary(), *raw, writer);
}
bool DictionarySlot::store(void* slot, RepresentationView value, BlockWriter& writer) {
    return static_cast<DictionarySlot*>(slot)->storeIf(value.isDictionary(), value, writer);
}

bool RecordSlot::assign(const Value& value, const ObjectClass* target, BlockWriter& writer) {
    const Object* assigned = value.record();
    if (assigned == nullptr || !assigned->isKindOf(*target)) return false;
    writer.keeper().keepBlock(assigned->block());
    record = assigned;
    return true;
}

bool ListSlot::assign(const Value& value, const ObjectClass* target, BlockWriter& writer) {
    const ListBase* assigned = value.list();
    if (assigned == nullptr) return false;
    for (const Object* element : assigned->objects())
        if (!element->isKindOf(*target)) return false;
    writer.keeper().keepBlock(assigned->block());
    list = assigned;
    return true;
}

bool BooleanSlot::assign(const Value& value, const ObjectClass*, BlockWriter&) {
    const auto number = value.number();
    if (!number) return false;
    boolean = number->boolValue();
    return true;
}

bool IntegerSlot::assign(const Value& value, const ObjectClass*, BlockWriter&) {
    const auto number = value.number();
    if (!number) return false;
    integer = number->int64Value();
    return true;
}

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
