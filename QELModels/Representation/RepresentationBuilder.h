#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "QELModels/Memory/Zone.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Representation/Representation.h"
#include "QELModels/Representation/detail/RepresentationNodes.h"
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
    RepresentationBuilder(std::size_t nodes, std::size_t textBytes, Zone* zone = nullptr)
        : nodes_(nodes, textBytes, zone) {}

    /// Begins a container, which is a value of the innermost one that has not ended.
    void beginDictionary() { open(Tag::dictionary); }
    void beginArray() { open(Tag::array); }
    /// Ends the innermost dictionary. Of a repeated key the first place and the last value are kept.
    void endDictionary();
    void endArray();

    /// The key of the member that follows. Keys and strings are copied; they throw `std::invalid_argument`
    /// when they are not UTF-8 (they may hold lone surrogates in their three-byte form; split pairs are
    /// joined).
    void key(std::string_view key);
    void string(std::string_view text);
    void number(Number number);
    void null();
    /// A value of another document: copied when small, else linked, so that wrapping costs the same at any
    /// size.
    void representation(RepresentationView view);

    /// The finished representation. No event may follow.
    Representation finish();

private:
    using Node = detail::RepresentationNode;
    using Tag = Node::Tag;

    static constexpr std::size_t kUsualNodes = 32;
    static constexpr std::size_t kNowhere = UINT32_MAX;

    Node& append();
    Node& value();
    Node& memberKey();
    void open(Tag tag);
    std::size_t close(Tag tag);
    void setExtent(std::size_t container) noexcept;
    void setText(Node& node, std::string_view text);

    detail::RepresentationNodes nodes_;
    std::size_t count_ = 0;
    std::size_t open_ = kNowhere;  // the innermost container that has not ended
    std::uint32_t textBytes_ = 0;  // so far, in strings that are not keys; an estimate, so it may wrap around
    bool isKeyGiven_ = false;
    bool isFinished_ = false;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
