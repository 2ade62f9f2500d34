#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
#include <string_view>

#include "QELModels/Memory/Block.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Platform/detail/KeyHash.h"
#include "QELModels/Representation/Representation.h"
#include "QELModels/Values/Number.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// Builds a representation from a parser's events, in document order: the road from any JSON library to the
/// mappers. A document nested a million deep costs no more stack than a flat one. Events out of order throw
/// `std::logic_error`; a text or container of 2^32 bytes or nodes throws `std::length_error`; after an
/// exception the builder can only be destroyed.
class QELMODELS_EXPORT RepresentationBuilder {
public:
    /// With room for a small document. The memory comes from `zone`; null: from the system.
    explicit RepresentationBuilder(Zone* zone = nullptr) : RepresentationBuilder(kUsualNodes, 0, zone) {}
    /// With room for that many values and keys, and for that many bytes of text: a good guess saves growing.
    RepresentationBuilder(std::size_t nodes, std::size_t textBytes, Zone* zone = nullptr);

    /// Begins a container, which is a value of the innermost one that has not ended.
    void beginDictionary() { open(RepresentationNode::Tag::dictionary); }
    void beginArray() { open(RepresentationNode::Tag::array); }
    /// Ends the innermost dictionary. Of a repeated key the first place and the last value are kept.
    void endDictionary();
    void endArray();

    /// The key of the member that follows. Keys and strings are copied; they throw `std::invalid_argument`
    /// when they are not UTF-8 (lone surrogates may stand in them as their three-byte form; split pairs are
    /// joined).
    void key(std::string_view key);
    void string(std::string_view text);
    void number(Number number);
    void null() { value().tag = RepresentationNode::Tag::null; }
    /// A value that stands elsewhere: copied when small, else linked, so that wrapping costs the same at any
    /// size.
    void representation(RepresentationView view);

    /// Memory for texts that lives as long as the representation: for parsers that unescape in place.
    char* reserveText(std::size_t bytes) { return static_cast<char*>(writer_.allocate(bytes, 1)); }
    /// Room for that many values and keys, in one piece with the text reserved so far. The text may move, and
    /// nothing may point into it yet; returns its new place.
    char* reserveNodesBehind(char* text, std::size_t nodes);
    /// Takes over a block in which texts lie, so that what is mapped from the document may keep them without
    /// the rest of it. Before any value, and instead of `reserveNodesBehind`.
    void takeTexts(BlockWriter& texts) { writer_.takeTexts(texts); }
    /// As `key` and `string`, for texts that lie in memory from `reserveText`, or in a block taken over, and
    /// are known to be well formed. Both have `Block::kSlack` bytes behind them, as texts elsewhere have not.
    void keyInPlace(std::string_view key) {
        RepresentationNode& node = memberKey();
        node.keyHash = detail::keyHash(key);
        setText(node, key);
    }
    void stringInPlace(std::string_view text) {
        setText(value(), text);
        textBytes_ += static_cast<std::uint32_t>(text.size());
    }

    /// The finished representation; the builder is spent.
    Representation finish();

    /// The quick road for readers that keep to JSON's grammar themselves: no events, the reader writes the
    /// nodes. A container has its `size` and `bits` set, a key its hash; texts lie where `keyInPlace` takes
    /// them from, empty ones too. The pointer holds until more room is asked for.
    RepresentationNode* nodes() noexcept { return nodes_; }
    std::size_t nodeCapacity() const noexcept { return capacity_; }
    /// Room for `capacity` nodes, of which `count` are written.
    void growNodes(std::size_t count, std::size_t capacity) {
        count_ = count;
        grow(capacity);
    }
    /// What has to be done at the end of a dictionary with more members than `kMostMembersScanned` or with a
    /// key that may be repeated. It is the last thing in `count` nodes and its `size` is set. Returns where
    /// the next node goes; no less room is left behind it than before.
    RepresentationNode* closeDictionary(std::size_t dictionary, std::size_t count);
    static RepresentationNode node(Number number) noexcept {
        // The tags of numbers stand in the order of their origins.
        constexpr auto kFirst = static_cast<int>(RepresentationNode::Tag::int64);
        RepresentationNode node;
        node.tag = static_cast<RepresentationNode::Tag>(kFirst + static_cast<int>(number.origin()));
        node.bits = NumberBits::of(number);
        return node;
    }
    /// Of `count` nodes, which are one value.
    Representation finishNodes(std::size_t count) {
        count_ = count;
        return finish();
    }

    /// Lends the value in `count` nodes instead of finishing it: whoever keeps it keeps the builder's memory,
    /// and while nobody does, the next value is written over it. A builder that lends does nothing else, and
    /// begins anew after an exception too.
    RepresentationView lendNodes(std::size_t count) noexcept;
    /// Whether somebody keeps a value that was lent.
    bool isKept() const noexcept { return writer_.block()->isShared(); }

    /// Up to here a dictionary is searched by looking at every key's hash, which is quicker than any index.
    static constexpr std::uint32_t kMostMembersScanned = 32;

private:
    static constexpr std::size_t kUsualNodes = 32;
    static constexpr std::size_t kNowhere = UINT32_MAX;

    void setText(RepresentationNode& node, std::string_view text) const {
        if (text.size() > UINT32_MAX) throwTooLong();
        node.tag = RepresentationNode::Tag::string;
        node.size = static_cast<std::uint32_t>(text.size());
        // An empty one may lie anywhere, but what is behind it may be read.
        node.text = text.empty() ? writer_.reserved() : text.data();
    }

    // A new node for a value: the next element, or what belongs to the key just given.
    RepresentationNode& value() {
        if (open_ != kNowhere) {
            RepresentationNode& container = nodes_[open_];
            if (container.tag == RepresentationNode::Tag::array)
                ++container.size;
            else if (!keyGiven_)
                throwOutOfOrder();
            keyGiven_ = false;
        } else if (count_ != 0) {
            throwOutOfOrder();
        }
        return append();
    }
    RepresentationNode& memberKey() {
        if (open_ == kNowhere || keyGiven_) throwOutOfOrder();
        RepresentationNode& container = nodes_[open_];
        if (container.tag != RepresentationNode::Tag::dictionary) throwOutOfOrder();
        ++container.size;
        keyGiven_ = true;
        return append();
    }
    RepresentationNode& append() {
        if (count_ == capacity_) grow(2 * capacity_);
        return *new (nodes_ + count_++) RepresentationNode;
    }
    void open(RepresentationNode::Tag tag) {
        RepresentationNode& node = value();
        node.tag = tag;
        // Until it is closed, a container remembers the one around it and the text that came before it.
        node.bits = open_ | std::uint64_t{textBytes_} << 32;
        open_ = count_ - 1;
    }
    std::size_t close(RepresentationNode::Tag tag);
    void setExtent(std::size_t container) noexcept;
    void grow(std::size_t capacity);
    std::string_view copied(std::string_view text);
    void settleKeys(std::size_t dictionary);
    bool repeatsKeys(std::size_t dictionary) const noexcept;
    void mergeRepeatedKeys(std::size_t dictionary);
    void index(std::size_t dictionary);
    [[noreturn]] static void throwOutOfOrder();
    [[noreturn]] static void throwTooLong();

    BlockWriter writer_;
    RepresentationNode* nodes_ = nullptr;
    std::size_t count_ = 0;
    std::size_t capacity_ = 0;
    std::size_t open_ = kNowhere;  // the innermost container that is not ended
    std::uint32_t textBytes_ = 0;  // so far, in strings that are no keys; an estimate, so it may wrap around
    bool keyGiven_ = false;
    bool finished_ = false;
    bool nodesArePiece_ = false;  // of their own
};

/// Copies a value, all that is in it and its texts into a block that is being written; what the value links
/// to is kept instead. Returns the copy.
QELMODELS_EXPORT const RepresentationNode* copyRepresentation(RepresentationView view, BlockWriter& writer);

}  // namespace QELMODELS_ABI
}  // namespace QELModels
