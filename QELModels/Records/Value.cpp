#include "QELModels/Records/Value.h"

#include "QELModels/Memory/detail/BlockWriter.h"
#include "QELModels/Records/detail/Slots.h"
#include "QELModels/Representation/detail/RepresentationAccess.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

Value::Value(RepresentationView raw) noexcept {
    if (const auto number = raw.number())
        *this = *number;
    else if (raw.isString())
        *this = detail::ValueAccess::keptText(detail::RepresentationAccess::block(raw),
                                              detail::RepresentationAccess::node(raw)->string());
    else if (!raw.isNull())
        *this = detail::ValueAccess::keptRepresentation(raw);
}

Value::Value(Kind kind, const Object* record) noexcept : content_(kind) {
    content_.record = record;
    content_.block = record->block();
    content_.block->retain();
}

Value::Value(Kind kind, const ListBase* list) noexcept : content_(kind) {
    content_.list = list;
    content_.block = list->block();
    content_.block->retain();
}

Value::Value(Kind kind, std::string_view text, const Block* block) noexcept : content_(kind) {
    content_.text = {text.data(), text.size()};
    content_.block = block;
    content_.block->retain();
}

Value Value::copied(Kind kind, std::string_view text) {
    detail::BlockWriter writer(text.size());
    const std::string_view copy = writer.copyText(text);
    return Value(kind, copy, writer.block());
}

Value Value::text(std::string_view text) {
    return copied(Kind::text, text);
}

Value Value::url(URLView url) {
    return copied(Kind::url, url.text());
}

std::optional<Number> Value::number() const noexcept {
    return content_.kind == Kind::number ? std::optional(content_.number) : std::nullopt;
}

std::optional<std::string_view> Value::text() const noexcept {
    if (content_.kind != Kind::text) return std::nullopt;
    return std::string_view(content_.text.data, content_.text.size);
}

std::optional<URLView> Value::url() const noexcept {
    if (content_.kind != Kind::url) return std::nullopt;
    return detail::URLAccess::fromValidated({content_.text.data, content_.text.size});
}

std::optional<Date> Value::date() const noexcept {
    return content_.kind == Kind::date ? std::optional(content_.date) : std::nullopt;
}

std::optional<Color> Value::color() const noexcept {
    return content_.kind == Kind::color ? std::optional(content_.color) : std::nullopt;
}

std::optional<RepresentationView> Value::representation() const noexcept {
    if (content_.kind != Kind::representation) return std::nullopt;
    return detail::RepresentationAccess::at(content_.node, content_.block);
}

const Object* Value::record() const noexcept {
    return content_.kind == Kind::record ? content_.record : nullptr;
}

const ListBase* Value::list() const noexcept {
    return content_.kind == Kind::list ? content_.list : nullptr;
}

bool operator==(const Value& a, const Value& b) {
    if (a.content_.kind != b.content_.kind) return false;
    switch (a.content_.kind) {
        case Value::Kind::null:
            return true;
        case Value::Kind::number:
            return detail::NumberBits::areSame(a.content_.number, b.content_.number);
        case Value::Kind::text:
        case Value::Kind::url:
            return std::string_view(a.content_.text.data, a.content_.text.size) ==
                   std::string_view(b.content_.text.data, b.content_.text.size);
        case Value::Kind::date:
            return detail::NumberBits::areSame(secondsSince1970(a.content_.date),
                                               secondsSince1970(b.content_.date));
        case Value::Kind::color:
            return detail::areSame(a.content_.color, b.content_.color);
        case Value::Kind::representation:
            return *a.representation() == *b.representation();
        case Value::Kind::record:
            return a.content_.record->isEqual(b.content_.record);
        case Value::Kind::list:
            return a.content_.list->isEqual(b.content_.list);
    }
    return false;
}

namespace detail {

Value ValueAccess::keptText(const Block* block, std::string_view text) noexcept {
    return Value(Value::Kind::text, text, block);
}

Value ValueAccess::keptURL(const Block* block, URLView url) noexcept {
    return Value(Value::Kind::url, url.text(), block);
}

Value ValueAccess::keptRepresentation(RepresentationView view) noexcept {
    Value value;
    value.content_.kind = Value::Kind::representation;
    value.content_.node = RepresentationAccess::node(view);
    value.content_.block = RepresentationAccess::block(view);
    if (value.content_.block != nullptr) value.content_.block->retain();
    return value;
}

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
