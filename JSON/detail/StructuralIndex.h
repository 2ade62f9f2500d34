#pragma once

#include <simdjson.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <new>
#include <string_view>

#include "QELModels/Platform/Export.h"

// Part of the reader's source alone.
namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {
namespace {

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

    std::unique_ptr<simdjson::internal::dom_parser_implementation> parser_;
    bool endsInText_ = false;
};

}  // namespace
}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
