#pragma once

// simdjson's portable kernel, which is all that there is for some processors, is good enough for the reader.
#define SIMDJSON_NO_PORTABILITY_WARNING
#include <simdjson.h>

#include <algorithm>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>

#include "QELModels/Platform/Export.h"

// Part of the reader's source alone, and the only part that names simdjson. The structural characters are
// found by an interface that simdjson has for itself, the same from version 3.0.1 to 4.6: where another
// version differs, one of the assertions says in what.
namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {
namespace {

template <class Implementation, class Parser>
concept MakesParsers = requires(const Implementation& implementation, std::unique_ptr<Parser>& parser,
                                std::size_t capacity, std::size_t maxDepth) {
    {
        implementation.create_dom_parser_implementation(capacity, maxDepth, parser)
        } -> std::same_as<simdjson::error_code>;
    { implementation.supported_by_runtime_system() } -> std::same_as<bool>;
};
template <class Parser>
concept HasCapacity = requires(Parser& parser, std::size_t capacity) {
    { parser.capacity() } -> std::same_as<std::size_t>;
    { parser.set_capacity(capacity) } -> std::same_as<simdjson::error_code>;
};
template <class Parser, class Mode>
concept FindsStructurals = requires(Parser& parser, const std::uint8_t* text, std::size_t size) {
    { parser.stage1(text, size, Mode::regular) } -> std::same_as<simdjson::error_code>;
};
template <class Parser>
concept KeepsStructurals = requires(const Parser& parser) {
    { parser.structural_indexes.get() } -> std::same_as<std::uint32_t*>;
    { parser.n_structural_indexes } -> std::same_as<const std::uint32_t&>;
};

using SimdjsonParser = simdjson::internal::dom_parser_implementation;
static_assert(
    MakesParsers<simdjson::implementation, SimdjsonParser>,
    "simdjson: this version has no implementation::create_dom_parser_implementation(capacity, depth, "
    "parser), or no supported_by_runtime_system()");
static_assert(HasCapacity<SimdjsonParser>,
              "simdjson: this version's parsers have no capacity(), or no set_capacity(capacity)");
static_assert(FindsStructurals<SimdjsonParser, simdjson::stage1_mode>,
              "simdjson: this version's parsers have no stage1(text, size, stage1_mode::regular)");
static_assert(
    KeepsStructurals<SimdjsonParser>,
    "simdjson: this version's parsers have no structural_indexes of 32 bits each, or do not count them in "
    "n_structural_indexes");

/// How reading ends.
enum class Outcome : unsigned char { done, malformed, tooLarge };

inline constexpr std::size_t kMostBytes = simdjson::SIMDJSON_MAXSIZE_BYTES;
/// How many blanks simdjson asks for after a text.
inline constexpr std::size_t kPadding = simdjson::SIMDJSON_PADDING;

/// The structural characters of a document, or of a part of it that begins and ends outside of all texts:
/// simdjson finds them, and sees on the way that the text is UTF-8, that every string ends, and that none
/// holds a control character.
class StructuralIndex {
public:
    /// Finds those of a text and, when it is well formed, copies it, with the padding after it. Where at
    /// least that much of the document comes after the text (`following` bytes), simdjson looks at the text
    /// itself: reading it from memory takes no time of its own beside that, and copying it afterwards takes
    /// little.
    Outcome find(std::string_view text, std::size_t following, char* copy) {
        if (parser_ == nullptr || parser_->capacity() < text.size()) grow(text.size());
        const bool isPadded = following >= kPadding;
        if (!isPadded) copyPadded(text, copy);
        const simdjson::error_code error =
            parser_->stage1(reinterpret_cast<const std::uint8_t*>(isPadded ? text.data() : copy),
                            text.size(),
                            simdjson::stage1_mode::regular);
        endsInText_ = error == simdjson::UNCLOSED_STRING;
        if (error != simdjson::SUCCESS) return Outcome::malformed;
        if (isPadded) copyPadded(text, copy);
        return size() < kMostStructurals ? Outcome::done : Outcome::tooLarge;
    }
    /// Whether the last text was malformed because a string in it does not end.
    bool endsInText() const noexcept { return endsInText_; }

    /// simdjson's implementations are static objects that exist from their first use to the end of the
    /// process: this is one.
    static void useImplementations() { simdjson::get_active_implementation()->supported_by_runtime_system(); }

    std::size_t size() const noexcept { return parser_->n_structural_indexes; }
    const std::uint32_t* first() const noexcept { return parser_->structural_indexes.get(); }
    const std::uint32_t* end() const noexcept { return first() + size(); }

private:
    // Every node has a structural character of its own, and nodes are counted in 32 bits with room for
    // indexes.
    static constexpr std::size_t kMostStructurals = std::size_t{1} << 31;

    static void copyPadded(std::string_view text, char* copy) noexcept {
        text.copy(copy, text.size());
        std::memset(copy + text.size(), ' ', kPadding);
    }

    void grow(std::size_t size) {
        constexpr std::size_t kStages = 1;  // the depth that only simdjson's second stage needs
        const std::size_t before = parser_ == nullptr ? 0 : parser_->capacity();
        const std::size_t capacity = std::min(std::max(size, before + before / 2), kMostBytes);
        const auto error = parser_ == nullptr
                               ? simdjson::get_active_implementation()->create_dom_parser_implementation(
                                     capacity, kStages, parser_)
                               : parser_->set_capacity(capacity);
        if (error != simdjson::SUCCESS) throw std::bad_alloc();
    }

    std::unique_ptr<SimdjsonParser> parser_;
    bool endsInText_ = false;
};

}  // namespace
}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
