#include "QELModels/Records/Value.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

Value::Value(const Representation& representation) noexcept
    : Value(ValueAccess::keptRepresentation(representation)) {}

Value::Value(Kind kind, const Object* record) noexcept : is_(kind) {
    is_.record = record;
    is_.block = record->block();
    is_.block->retain();
}

Value::Value(Kind kind, const ListBase* list) noexcept : is_(kind) {
    is_.list = list;
    is_.block = list->block();
    is_.block->retain();
}

Value::Value(Kind kind, std::string_view text, const Block* block) noexcept : is_(kind) {
    is_.text = {text.data(), text.size()};
    is_.block = block;
    is_.block->retain();
}

Value Value::copied(Kind kind, std::string_view text) {
    BlockWriter writer(text.size());
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
    return is_.kind == Kind::number ? std::optional(is_.number) : std::nullopt;
}

std::optional<std::string_view> Value::text() const noexcept {
    if (is_.kind != Kind::text) return std::nullopt;
    return std::string_view(is_.text.data, is_.text.size);
}

std::optional<URLView> Value::url() const noexcept {
    if (is_.kind != Kind::url) return std::nullopt;
    return URLAccess::fromValidated({is_.text.data, is_.text.size});
}

std::optional<Date> Value::date() const noexcept {
    return is_.kind == Kind::date ? std::optional(is_.date) : std::nullopt;
}

std::optional<Color> Value::color() const noexcept {
    return is_.kind == Kind::color ? std::optional(is_.color) : std::nullopt;
}

std::optional<RepresentationView> Value::representation() const noexcept {
    if (is_.kind != Kind::representation) return std::nullopt;
    return RepresentationView::at(is_.node, is_.block);
}

const Object* Value::record() const noexcept {
    return is_.kind == Kind::record ? is_.record : nullptr;
}

const ListBase* Value::list() const noexcept {
    return is_.kind == Kind::list ? is_.list : nullptr;
}

bool operator==(const Value& a, const Value& b) {
    if (a.is_.kind != b.is_.kind) return false;
    switch (a.is_.kind) {
        case Value::Kind::null:
            return true;
        case Value::Kind::number:
            return a.is_.number == b.is_.number;
        case Value::Kind::text:
        case Value::Kind::url:
            return std::string_view(a.is_.text.data, a.is_.text.size) ==
                   std::string_view(b.is_.text.data, b.is_.text.size);
        case Value::Kind::date:
            return a.is_.date == b.is_.date;
        case Value::Kind::color:
            return a.is_.color == b.is_.color;
        case Value::Kind::representation:
            return *a.representation() == *b.representation();
        case Value::Kind::record:
            return a.is_.record->isEqual(b.is_.record);
        case Value::Kind::list:
            return a.is_.list->isEqual(b.is_.list);
    }
    return false;
}

Value ValueAccess::keptText(const Block* block, std::string_view text) noexcept {
    return Value(Value::Kind::text, text, block);
}

Value ValueAccess::keptURL(const Block* block, URLView url) noexcept {
    return Value(Value::Kind::url, url.text(), block);
}

Value ValueAccess::keptRepresentation(RepresentationView view) noexcept {
    Value value;
    value.is_.kind = Value::Kind::representation;
    value.is_.node = view.node();
    value.is_.block = view.block();
    if (value.is_.block != nullptr) value.is_.block->retain();
    return value;
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
