#include "QELModels/Representation/RepresentationBuilder.h"

#include <stdexcept>
#include <string>
#include <utility>

#include "QELModels/Platform/detail/KeyHash.h"
#include "QELModels/Representation/detail/RepresentationAccess.h"
#include "QELModels/Values/Text.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

using detail::RepresentationAccess;

namespace {

// A value of up to this many nodes is copied into what wraps it; a larger one is linked.
constexpr std::size_t kMostNodesCopied = 16;

std::string withPairsJoined(std::string_view text) {
    std::string joined;
    std::size_t from = 0;
    for (std::size_t i = Text::kHalfBytes; i < text.size(); ++i) {
        if (!Text::endsInHighHalf(text.substr(0, i)) || !Text::beginsWithLowHalf(text.substr(i))) continue;
        Text::append(joined, text.substr(from, i - from));
        from = i;
    }
    Text::append(joined, text.substr(from));
    return joined;
}

// A copy of a text in the block that is written, with pairs joined.
std::string_view wellFormedCopy(std::string_view text, detail::BlockWriter& writer) {
    if (Text::isWellFormed(text)) return writer.copyText(text);
    const std::string joined = withPairsJoined(text);
    if (const std::size_t at = Text::firstMalformedByte(joined); at != joined.size())
        throw std::invalid_argument("a text is not UTF-8 at its byte " + std::to_string(at));
    return writer.copyText(joined);
}

[[noreturn]] void throwOutOfOrder() {
    throw std::logic_error("the events of a representation are out of order");
}

}  // namespace

RepresentationBuilder::Node& RepresentationBuilder::append() {
    if (count_ == nodes_.capacity()) nodes_.grow(count_, 2 * nodes_.capacity());
    return *new (nodes_.first() + count_++) Node;
}

// A new node for a value: the next element, or what belongs to the key just given.
RepresentationBuilder::Node& RepresentationBuilder::value() {
    if (open_ != kNowhere) {
        Node& container = nodes_.first()[open_];
        if (container.tag == Tag::array)
            ++container.size;
        else if (!isKeyGiven_)
            throwOutOfOrder();
        isKeyGiven_ = false;
    } else if (count_ != 0) {
        throwOutOfOrder();
    }
    return append();
}

RepresentationBuilder::Node& RepresentationBuilder::memberKey() {
    if (open_ == kNowhere || isKeyGiven_) throwOutOfOrder();
    Node& container = nodes_.first()[open_];
    if (container.tag != Tag::dictionary) throwOutOfOrder();
    ++container.size;
    isKeyGiven_ = true;
    return append();
}

void RepresentationBuilder::open(Tag tag) {
    Node& node = value();
    node.tag = tag;
    // Until it is closed, a container remembers the one around it and the text that came before it.
    node.bits = open_ | std::uint64_t{textBytes_} << 32;
    open_ = count_ - 1;
}

// Returns the container that ends.
std::size_t RepresentationBuilder::close(Tag tag) {
    if (open_ == kNowhere || isKeyGiven_ || nodes_.first()[open_].tag != tag) throwOutOfOrder();
    return std::exchange(open_, static_cast<std::uint32_t>(nodes_.first()[open_].bits));
}

void RepresentationBuilder::setExtent(std::size_t container) noexcept {
    Node& node = nodes_.first()[container];
    const auto before = static_cast<std::uint32_t>(node.bits >> 32);
    node.bits = (count_ - container) | std::uint64_t{textBytes_ - before} << 32;
}

void RepresentationBuilder::endArray() {
    setExtent(close(Tag::array));
}

void RepresentationBuilder::endDictionary() {
    const std::size_t dictionary = close(Tag::dictionary);
    count_ = nodes_.closeDictionary(dictionary, count_);
    setExtent(dictionary);
}

void RepresentationBuilder::setText(Node& node, std::string_view text) {
    if (text.size() > UINT32_MAX) detail::RepresentationNodes::throwTooLong();
    node.tag = Tag::string;
    node.size = static_cast<std::uint32_t>(text.size());
    node.text = text.data();
}

void RepresentationBuilder::key(std::string_view key) {
    if (isFinished_) throwOutOfOrder();
    const std::string_view copy = wellFormedCopy(key, nodes_.writer());
    Node& node = memberKey();
    node.keyHash = detail::keyHash(copy);
    setText(node, copy);
}

void RepresentationBuilder::string(std::string_view text) {
    if (isFinished_) throwOutOfOrder();
    const std::string_view copy = wellFormedCopy(text, nodes_.writer());
    setText(value(), copy);
    textBytes_ += static_cast<std::uint32_t>(copy.size());
}

void RepresentationBuilder::number(Number number) {
    value() = detail::RepresentationNodes::node(number);
}

void RepresentationBuilder::null() {
    value();
}

void RepresentationBuilder::representation(RepresentationView view) {
    const Node* const from = RepresentationAccess::node(view);
    const std::size_t extent = from->extent();
    textBytes_ += static_cast<std::uint32_t>(from->textBytes());
    if (extent > kMostNodesCopied) {
        Node& link = value();
        link.tag = Tag::link;
        link.target = from;
        append().block = RepresentationAccess::block(view);
        nodes_.writer().keeper().keep(RepresentationAccess::block(view));
        return;
    }
    value();
    for (std::size_t i = 1; i < extent; ++i)
        append();
    RepresentationAccess::copyNodes(from, extent, nodes_.first() + count_ - extent, nodes_.writer());
}

Representation RepresentationBuilder::finish() {
    if (isFinished_ || count_ == 0 || open_ != kNowhere) throwOutOfOrder();
    isFinished_ = true;
    return nodes_.finish(count_);
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
