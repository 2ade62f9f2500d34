#include "QELModels/Platform/Value.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace QELModels::inline QELMODELS_ABI {

// All that a value can hold is plain data; only the block behind it is counted.
static_assert(std::is_trivially_copyable_v<Number> && std::is_trivially_copyable_v<Date> &&
              std::is_trivially_copyable_v<Color>);

Value::Value(const Representation& representation) noexcept
    : Value(ValueAccess::keptRepresentation(representation)) {}

Value::Value(Kind kind, const Object* record) noexcept
    : kind_(kind), keeps_(true), block_(record->block()), record_(record) {
    block_->retain();
}

Value::Value(Kind kind, const ListBase* list) noexcept
    : kind_(kind), keeps_(true), block_(list->block()), list_(list) {
    block_->retain();
}

Value::Value(Kind kind, std::string_view text, const Block* block, bool keeps) noexcept
    : kind_(kind), keeps_(keeps && block != nullptr), block_(block), text_{text.data(), text.size()} {
    if (keeps_) block_->retain();
}

Value Value::copied(Kind kind, std::string_view text) {
    BlockWriter writer(text.size());
    char* to = writer.allocate<char>(text.size());
    std::copy(text.begin(), text.end(), to);
    Value value(kind, {to, text.size()}, writer.block(), false);
    value.keeps_ = true;
    writer.finish();
    return value;
}

Value Value::text(std::string_view text) {
    return copied(Kind::text, text);
}

Value Value::url(URLView url) {
    return copied(Kind::url, url.text());
}

Value::Value(const Value& other) noexcept {
    std::memcpy(static_cast<void*>(this), &other, sizeof(Value));
    if (keeps_) block_->retain();
}

Value::Value(Value&& other) noexcept {
    std::memcpy(static_cast<void*>(this), &other, sizeof(Value));
    other.keeps_ = false;
    other.kind_ = Kind::null;
}

Value& Value::operator=(Value other) noexcept {
    if (keeps_) block_->release();
    std::memcpy(static_cast<void*>(this), &other, sizeof(Value));
    other.keeps_ = false;
    return *this;
}

std::optional<Number> Value::number() const noexcept {
    return kind_ == Kind::number ? std::optional(number_) : std::nullopt;
}

std::optional<std::string_view> Value::text() const noexcept {
    if (kind_ != Kind::text) return std::nullopt;
    return std::string_view(text_.data, text_.size);
}

std::optional<URLView> Value::url() const noexcept {
    if (kind_ != Kind::url) return std::nullopt;
    return URLAccess::fromValidated({text_.data, text_.size});
}

std::optional<Date> Value::date() const noexcept {
    return kind_ == Kind::date ? std::optional(date_) : std::nullopt;
}

std::optional<Color> Value::color() const noexcept {
    return kind_ == Kind::color ? std::optional(color_) : std::nullopt;
}

std::optional<RepresentationView> Value::representation() const noexcept {
    if (kind_ != Kind::representation) return std::nullopt;
    return RepresentationView::at(node_, block_);
}

const Object* Value::record() const noexcept {
    return kind_ == Kind::record ? record_ : nullptr;
}

const ListBase* Value::list() const noexcept {
    return kind_ == Kind::list ? list_ : nullptr;
}

bool operator==(const Value& a, const Value& b) {
    if (a.kind_ != b.kind_) return false;
    switch (a.kind_) {
        case Value::Kind::null:
            return true;
        case Value::Kind::number:
            return a.number_ == b.number_;
        case Value::Kind::text:
        case Value::Kind::url:
            return std::string_view(a.text_.data, a.text_.size) ==
                   std::string_view(b.text_.data, b.text_.size);
        case Value::Kind::date:
            return a.date_ == b.date_;
        case Value::Kind::color:
            return a.color_ == b.color_;
        case Value::Kind::representation:
            return *a.representation() == *b.representation();
        case Value::Kind::record:
            return a.record_->isEqual(b.record_);
        case Value::Kind::list:
            return a.list_->isEqual(b.list_);
    }
    return false;
}

Value ValueAccess::lentText(std::string_view text) noexcept {
    return Value(Value::Kind::text, text, nullptr, false);
}

Value ValueAccess::lentURL(URLView url) noexcept {
    return Value(Value::Kind::url, url.text(), nullptr, false);
}

Value ValueAccess::textIn(const Block* block, std::string_view text) noexcept {
    return Value(Value::Kind::text, text, block, false);
}

Value ValueAccess::keptText(const Block* block, std::string_view text) noexcept {
    return Value(Value::Kind::text, text, block, true);
}

Value ValueAccess::keptURL(const Block* block, URLView url) noexcept {
    return Value(Value::Kind::url, url.text(), block, true);
}

Value ValueAccess::keptRepresentation(RepresentationView view) noexcept {
    Value value;
    value.kind_ = Value::Kind::representation;
    value.node_ = view.node();
    value.block_ = view.block();
    value.keeps_ = value.block_ != nullptr;
    if (value.keeps_) value.block_->retain();
    return value;
}

}  // namespace QELModels::inline QELMODELS_ABI
