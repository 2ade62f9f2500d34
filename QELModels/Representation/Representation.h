#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "QELModels/Memory/Block.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Representation/detail/RepresentationNode.h"
#include "QELModels/Values/Number.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

namespace detail {

struct RepresentationAccess;

template <class T>
concept NumberLike = std::is_arithmetic_v<T> && std::constructible_from<Number, T>;
// clang-format off
template <class T>
concept TextView = std::same_as<std::remove_cvref_t<T>, std::string_view> ||
                   std::same_as<std::decay_t<T>, const char*>;
// clang-format on

}  // namespace detail

class RepresentationView;
struct RepresentationMember;
template <class Item>
class RepresentationRange;
using RepresentationElements = RepresentationRange<RepresentationView>;
using RepresentationMembers = RepresentationRange<RepresentationMember>;

/// A borrowed JSON value of one of five kinds: valid as long as what it was looked up in. Lookups answer
/// nothing when there is no value, which is not the same as a value that is null.
class QELMODELS_EXPORT RepresentationView {
public:
    /// The kinds of JSON values; booleans are numbers.
    enum class Kind : std::uint8_t { dictionary, array, string, number, null };

    /// Which kind it is.
    Kind kind() const noexcept;
    bool isDictionary() const noexcept { return node_->tag == detail::RepresentationNode::Tag::dictionary; }
    bool isArray() const noexcept { return node_->tag == detail::RepresentationNode::Tag::array; }
    bool isString() const noexcept { return node_->tag == detail::RepresentationNode::Tag::string; }
    bool isNumber() const noexcept { return node_->isNumber(); }
    bool isNull() const noexcept { return node_->tag == detail::RepresentationNode::Tag::null; }

    /// A string's text (WTF-8); nothing for another kind.
    std::optional<std::string_view> text() const noexcept;
    /// A number, booleans included; nothing for another kind.
    std::optional<Number> number() const noexcept;

    /// Elements of an array or members of a dictionary; 0 for another kind.
    std::size_t size() const noexcept { return node_->isContainer() ? node_->size : 0; }
    /// An array's elements in order; empty for another kind.
    RepresentationElements elements() const noexcept;
    /// A dictionary's members in the document's order; empty for another kind.
    RepresentationMembers members() const noexcept;

    /// The value at a key; nothing when it is missing or this is not a dictionary. Quick in large
    /// dictionaries too.
    std::optional<RepresentationView> valueForKey(std::string_view key) const noexcept;
    /// The value at the end of dot-joined keys, looked up one dictionary at a time; nothing when a step is
    /// missing or what it yields is not a dictionary.
    std::optional<RepresentationView> valueForKeyPath(std::string_view keyPath) const noexcept;

    /// Equality by value: numbers whatever their width, strings by code unit, arrays in order, dictionaries
    /// in any order. Nesting costs no stack. May throw `std::bad_alloc`.
    QELMODELS_EXPORT friend bool operator==(RepresentationView a, RepresentationView b);
    /// Consistent with equality; a container contributes its number of elements.
    std::uint64_t hash() const noexcept;

    /// About how large the value is with all that is in it, at no cost: values and keys, and bytes of strings
    /// that are not keys. For those who make room for it.
    std::size_t nodeCount() const noexcept { return node_->extent(); }
    std::size_t textBytes() const noexcept { return node_->textBytes(); }

private:
    friend class Representation;
    friend struct detail::RepresentationAccess;
    template <class Item>
    friend class RepresentationRange;
    using Node = detail::RepresentationNode;

    static RepresentationView at(const Node* node, const Block* block) noexcept {
        if (node->tag == Node::Tag::link) [[unlikely]]
            return {node->target, (node + 1)->block};
        return {node, block};
    }
    RepresentationView(const Node* node, const Block* block) noexcept : node_(node), block_(block) {}

    const Node* node_;
    const Block* block_;
};

/// A member of a dictionary.
struct RepresentationMember {
    std::string_view key;
    RepresentationView value;
};

/// What is in a container, in the document's order: the elements of an array or the members of a dictionary.
template <class Item>
class RepresentationRange {
    static constexpr bool kHasKeys = std::is_same_v<Item, RepresentationMember>;

public:
    /// Goes through what is in the container; valid as long as the document.
    class Iterator {
    public:
        using value_type = Item;
        using difference_type = std::ptrdiff_t;
        using iterator_category = std::input_iterator_tag;
        using iterator_concept = std::forward_iterator_tag;
        using pointer = void;
        using reference = Item;

        Iterator() noexcept = default;
        Iterator(const detail::RepresentationNode* node, const Block* block, std::size_t left) noexcept
            : node_(node), block_(block), left_(left) {}
        Item operator*() const noexcept {
            if constexpr (kHasKeys)
                return {node_->string(), RepresentationView::at(node_->value(), block_)};
            else
                return RepresentationView::at(node_, block_);
        }
        Iterator& operator++() noexcept {
            node_ = kHasKeys ? node_->nextMember() : node_->next();
            --left_;
            return *this;
        }
        Iterator operator++(int) noexcept {
            Iterator before = *this;
            ++*this;
            return before;
        }
        /// Of iterators of the same range.
        bool operator==(const Iterator& other) const noexcept { return left_ == other.left_; }

    private:
        const detail::RepresentationNode* node_ = nullptr;
        const Block* block_ = nullptr;
        std::size_t left_ = 0;
    };

    RepresentationRange(const detail::RepresentationNode* first, const Block* block,
                        std::size_t size) noexcept
        : first_(first), block_(block), size_(size) {}
    Iterator begin() const noexcept { return {first_, block_, size_}; }
    Iterator end() const noexcept { return {nullptr, nullptr, 0}; }
    std::size_t size() const noexcept { return size_; }
    bool empty() const noexcept { return size_ == 0; }

private:
    const detail::RepresentationNode* first_;
    const Block* block_;
    std::size_t size_;
};

inline RepresentationElements RepresentationView::elements() const noexcept {
    return {node_ + 1, block_, isArray() ? node_->size : std::size_t{0}};
}

inline RepresentationMembers RepresentationView::members() const noexcept {
    return {node_ + 1, block_, isDictionary() ? node_->size : std::size_t{0}};
}

/// A JSON value that is kept: an owning handle on a document and a value in it, cheap to copy. It never
/// changes and may be read from any thread.
class QELMODELS_EXPORT Representation {
public:
    struct Member;

    /// Null. So is a value that is written `{}`, as in `Representation{{"key", {}}}`.
    Representation() noexcept;
    Representation(std::nullptr_t) noexcept : Representation() {}
    /// A number. A character is not one, and not every `long double` is one that a `Number` holds.
    Representation(Number number);
    template <detail::NumberLike T>
    Representation(T number) : Representation(Number(number)) {}
    template <class CharacterOrTooWideForANumber>
    requires(std::is_arithmetic_v<CharacterOrTooWideForANumber> &&
             !detail::NumberLike<CharacterOrTooWideForANumber>) Representation(CharacterOrTooWideForANumber)
    = delete;
    /// A string; throws `std::invalid_argument` when the text is not UTF-8 (it may hold lone surrogates in
    /// their three-byte form; split pairs are joined).
    Representation(std::string_view text);
    Representation(const std::string& text) : Representation(std::string_view(text)) {}
    Representation(const char* text) : Representation(std::string_view(text)) {}
    /// A dictionary. A repeated key keeps its first place and its last value.
    Representation(std::initializer_list<Member> members);
    static Representation dictionary(std::initializer_list<Member> members);
    /// The same of any range of pairs, such as a map.
    template <class Range>
    static Representation dictionary(const Range& range);
    /// An array of these elements.
    static Representation array(std::initializer_list<Representation> elements) {
        return arrayOf(elements.begin(), elements.size());
    }
    /// The same of any range whose elements a representation can be made of.
    template <class Range>
    static Representation array(const Range& range) {
        const std::vector<Representation> elements(std::begin(range), std::end(range));
        return arrayOf(elements.data(), elements.size());
    }
    /// An array without elements.
    static RepresentationView emptyArray() noexcept;

    /// Keeps the document that a borrowed value lies in.
    explicit Representation(RepresentationView view) noexcept;

    Representation(const Representation& other) noexcept;
    Representation(Representation&& other) noexcept;
    Representation& operator=(Representation other) noexcept {
        std::swap(view_, other.view_);
        return *this;
    }
    ~Representation() {
        if (view_.block_ != nullptr) view_.block_->release();
    }

    /// The value, lent for as long as this keeps it.
    RepresentationView view() const noexcept QELMODELS_LENT { return view_; }
    operator RepresentationView() const noexcept QELMODELS_LENT { return view_; }
    const RepresentationView* operator->() const noexcept QELMODELS_LENT { return &view_; }

    friend bool operator==(const Representation& a, const Representation& b) { return a.view_ == b.view_; }

private:
    friend struct detail::RepresentationAccess;
    struct Adopt {};
    Representation(Adopt, RepresentationView view) noexcept : view_(view) {}
    static Representation arrayOf(const Representation* elements, std::size_t size);
    static Representation dictionaryOf(const Member* members, std::size_t size);

    RepresentationView view_;
};

/// A key and its value, for a dictionary that is written down in code.
struct Representation::Member {
    std::string_view key;
    Representation value;
};

inline Representation Representation::dictionary(std::initializer_list<Member> members) {
    return dictionaryOf(members.begin(), members.size());
}

template <class Range>
Representation Representation::dictionary(const Range& range) {
    std::vector<Member> members;
    for (const auto& [key, value] : range) {
        static_assert(
            std::is_reference_v<decltype(*std::begin(range))> || detail::TextView<decltype(key)>,
            "the keys of the range live no longer than its elements, which are made when asked for");
        members.push_back({key, Representation(value)});
    }
    return dictionaryOf(members.data(), members.size());
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
