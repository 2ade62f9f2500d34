#pragma once

#include <bit>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#include "QELModels/Memory/Block.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Platform/detail/ByteBlock.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

/// After each text in a block this many bytes more may be read, whatever they are, and while the block is
/// written this many may be written after the last text. So texts are read and copied in pieces of a fixed
/// size, without branches on their lengths, which no processor can predict.
inline constexpr std::size_t kSlack = 2 * ByteBlock::kSize;

/// Hands out the memory of a block that is being written, from its start on.
class QELMODELS_EXPORT BlockArena {
public:
    BlockArena(const BlockArena&) = delete;
    BlockArena& operator=(const BlockArena&) = delete;

    /// The block that is written; null once it was handed over.
    Block* block() const noexcept { return block_; }
    /// Bytes of the block that are taken, in all its pieces.
    std::size_t used() const noexcept {
        return block_->size() - static_cast<std::size_t>(end_ - next_) - kSlack;
    }

    /// Memory for `bytes` bytes, as long-lived as the block. Throws `std::bad_alloc`. Requires: `alignment`
    /// is a power of two, at most that of `std::max_align_t`.
    void* allocate(std::size_t bytes, std::size_t alignment) {
        assert(std::has_single_bit(alignment) && alignment <= alignof(std::max_align_t));
        const std::size_t padding = (0 - reinterpret_cast<std::uintptr_t>(next_)) & (alignment - 1);
        if (bytes + padding > static_cast<std::size_t>(end_ - next_) || bytes > bytes + padding)
            grow(bytes);
        else
            next_ += padding;
        char* memory = next_;
        next_ += bytes;
        return memory;
    }
    template <class T>
    T* allocate(std::size_t count) {
        return static_cast<T*>(allocate(count * sizeof(T), alignof(T)));
    }

    /// Room for a text of at most `bytes` bytes, with slack after it. The first `used` of them are taken with
    /// `commit(used)`; without it, the next one to ask is given the same room.
    char* reserve(std::size_t bytes) {
        if (bytes > static_cast<std::size_t>(end_ - next_)) grow(bytes);
        return next_;
    }
    /// Where `reserve` has made room.
    const char* reserved() const noexcept { return next_; }
    void commit(std::size_t used) noexcept { next_ += used; }

    /// A copy of a text; its data is never null, also when the text is empty.
    std::string_view copyText(std::string_view text) {
        char* to = reserve(text.size());
        if (!text.empty()) std::memcpy(to, text.data(), text.size());
        commit(text.size());
        return {to, text.size()};
    }
    /// The same of a text with `kSlack` readable bytes after it.
    std::string_view copyTextOfBlock(std::string_view text) {
        char* const to = reserve(text.size());
        for (std::size_t at = 0; at < text.size(); at += kSlack) {
            const ByteBlock first(text.data() + at);
            const ByteBlock second(text.data() + at + ByteBlock::kSize);
            first.store(to + at);
            second.store(to + at + ByteBlock::kSize);
        }
        commit(text.size());
        return {to, text.size()};
    }

    /// Memory for `bytes` bytes after all that was allocated so far, in the same piece, which may move for
    /// it. So a large document is one piece, and the system keeps its memory for the next one instead of
    /// handing new pages out. Requires: nothing points into the block; it has no further pieces and keeps
    /// nothing.
    void* extend(std::size_t bytes);

protected:
    BlockArena(std::size_t capacity, Zone* zone, bool original);
    ~BlockArena() = default;

    Block* block_;

private:
    void grow(std::size_t bytes);

    char* next_;
    char* end_;  // the slack of the piece begins here
};

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
