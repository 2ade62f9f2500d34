#include "QELModels/Records/detail/Slots.h"

#include <algorithm>
#include <stdexcept>

#include "QELModels/Platform/detail/Hash.h"
#include "QELModels/Records/List.h"
#include "QELModels/Records/Object.h"
#include "QELModels/Records/Value.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

bool areSame(const Color& a, const Color& b) noexcept {
    const double Color::*const components[] = {&Color::red, &Color::green, &Color::blue, &Color::alpha};
    return std::all_of(std::begin(components), std::end(components), [&](auto component) {
        return NumberBits::areSame(a.*component, b.*component);
    });
}

Value NumberSlot::value(const Object&) const {
    return filled ? Value(number()) : Value();
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
Value TextSlot::value(const Object& owner) const {
    return isEmpty() ? Value() : ValueAccess::keptText(owner.block(), text());
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
std::uint64_t TextSlot::hash() const noexcept {
    return isEmpty() ? 0 : hashOfText(text());
}

Value URLSlot::value(const Object& owner) const {
    return isEmpty() ? Value() : ValueAccess::keptURL(owner.block(), URLAccess::fromValidated(text()));
}
bool URLSlot::assign(const Value& value, const ObjectClass*, BlockWriter& writer) {
    const auto url = value.url();
    if (!url) return false;
    writer.keeper().keep(ValueAccess::block(value));
    set(url->text());
    return true;
}

Value DateSlot::value(const Object&) const {
    return filled ? Value(date()) : Value();
}
bool DateSlot::assign(const Value& value, const ObjectClass*, BlockWriter&) {
    const auto date = value.date();
    if (!date) return false;
    set(*date);
    return true;
}

Value ColorSlot::value(const Object&) const {
    return filled ? Value(color) : Value();
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

Value RawSlot::value(const Object&) const {
    return isEmpty() ? Value() : ValueAccess::keptRepresentation(view());
}
bool RawSlot::equals(const RawSlot& other) const {
    if (isEmpty() || other.isEmpty()) return isEmpty() == other.isEmpty();
    return view() == other.view();
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

Value RecordSlot::value(const Object&) const {
    return Value(record);
}
bool RecordSlot::assign(const Value& value, const ObjectClass* target, BlockWriter& writer) {
    const Object* assigned = value.record();
    if (assigned == nullptr || !assigned->isKindOf(*target)) return false;
    writer.keeper().keepBlock(assigned->block());
    record = assigned;
    return true;
}
bool RecordSlot::equals(const RecordSlot& other) const {
    return record == nullptr ? other.record == nullptr : record->isEqual(other.record);
}
std::uint64_t RecordSlot::hash() const {
    return record == nullptr ? 0 : record->hash();
}

Value ListSlot::value(const Object&) const {
    return Value(list);
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
bool ListSlot::equals(const ListSlot& other) const {
    return list == nullptr ? other.list == nullptr : list->isEqual(other.list);
}
std::uint64_t ListSlot::hash() const {
    return list == nullptr ? 0 : list->hash();
}

Value BooleanSlot::value(const Object&) const {
    return Value(Number(boolean));
}
bool BooleanSlot::assign(const Value& value, const ObjectClass*, BlockWriter&) {
    const auto number = value.number();
    if (!number) return false;
    boolean = number->boolValue();
    return true;
}

Value IntegerSlot::value(const Object&) const {
    return Value(Number(integer));
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
