#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <utility>

#include "QELModels/Memory/Zone.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Platform/detail/ByteBlock.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// Memory that is counted and freed at once: what was mapped (or read, or copied) together lives in one
/// block, and only blocks are counted. A block keeps the other blocks that its content points into. It is
/// written by one `BlockWriter` and never changed afterwards, so counting is all that threads share.
class QELMODELS_EXPORT Block {
public:
    /// Behind each text in a block so many bytes more may be read, whatever they are, and while it is written
    /// so many may be written behind the last one. So texts are looked at and copied in pieces of a fixed
    /// size, without branches on their lengths, which no processor can foretell.
    static constexpr std::size_t kSlack = 2 * detail::ByteBlock::kSize;

    Block(const Block&) = delete;
    Block& operator=(const Block&) = delete;

    /// Counts one use more or less; the last one frees the block. Any thread.
    void retain() const noexcept { uses_.fetch_add(1, std::memory_order_relaxed); }
    void release() const noexcept {
        if (uses_.fetch_sub(1, std::memory_order_acq_rel) == 1) free(this);
    }

    /// Whether it has more uses than one. To the holder of one, an answer of false stays true until it is
    /// used.
    bool isShared() const noexcept { return uses_.load(std::memory_order_acquire) != 1; }

    /// Bytes of memory that the block holds, without the blocks it keeps. Not for other threads while its
    /// writer lives.
    std::size_t size() const noexcept;

    /// Of a document: the block that holds its texts, if that is another one and from that zone; else null.
    const Block* textsFrom(const Zone* zone) const noexcept;

private:
    friend class BlockWriter;
    struct Chunk;
    struct KeptBlocks;

    Block(Zone* zone, std::size_t size, bool original) noexcept
        : zone_(zone), size_(size), original_(original) {}
    ~Block() = default;

    static void free(const Block* block) noexcept;

    mutable std::atomic<std::size_t> uses_{1};
    Zone* zone_;
    std::size_t size_;  // of the first piece, which the block itself begins
    // False for a copy: nobody keeps a copy's block, only the blocks that it keeps. So copies of copies do
    // not chain.
    bool original_;
    bool textsApart_ = false;  // in the first block that it kept
    Chunk* chunks_ = nullptr;  // what the first piece had no room for
    KeptBlocks* kept_ = nullptr;
};

/// Writes a new block. The writer holds one use of it: until `finish` hands that over, whatever is thrown
/// frees the block and all that it keeps.
class QELMODELS_EXPORT BlockWriter {
public:
    /// A copy's block is kept by nobody: those that it keeps are kept instead.
    enum class Origin : bool { original, copy };

    /// A new block with room for `capacity` bytes before it has to grow. Throws `std::bad_alloc`.
    explicit BlockWriter(std::size_t capacity, Zone* zone = nullptr, Origin origin = Origin::original);
    ~BlockWriter();
    BlockWriter(const BlockWriter&) = delete;
    BlockWriter& operator=(const BlockWriter&) = delete;

    /// The block that is written; null once it was handed over.
    Block* block() const noexcept { return block_; }
    /// Bytes of the block that are taken, in all its pieces.
    std::size_t used() const noexcept {
        return block_->size() - static_cast<std::size_t>(end_ - next_) - Block::kSlack;
    }

    /// Memory for `bytes` bytes, as long-lived as the block; `alignment` is a power of two, at most that of
    /// `std::max_align_t`. Throws `std::bad_alloc`.
    void* allocate(std::size_t bytes, std::size_t alignment) {
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

    /// Room for a text of at most `bytes` bytes, with slack behind it; `commit` says how many of them it
    /// took.
    char* reserve(std::size_t bytes) {
        if (bytes > static_cast<std::size_t>(end_ - next_)) grow(bytes);
        return next_;
    }
    /// Where `reserve` has made room.
    const char* reserved() const noexcept { return next_; }
    void commit(std::size_t bytes) noexcept { next_ += bytes; }
    /// Keeps a block whose texts the new one may point to.
    void borrowTexts(const Block& texts);
    /// Whether a text lies among borrowed texts, where it may stay.
    bool isBorrowed(std::string_view text) const noexcept {
        return reinterpret_cast<std::uintptr_t>(text.data()) - borrowed_ < borrowedSize_;
    }
    /// The text itself, if it may stay where it is; else a copy. Its data is never null.
    std::string_view keepText(std::string_view text) { return isBorrowed(text) ? text : copyText(text); }
    /// The same of a text that lies in a block.
    std::string_view keepTextOfBlock(std::string_view text) {
        return isBorrowed(text) ? text : copyTextOfBlock(text);
    }
    /// A copy of a text; its data is never null, also when the text is empty.
    std::string_view copyText(std::string_view text) {
        char* to = reserve(text.size());
        if (!text.empty()) std::memcpy(to, text.data(), text.size());
        commit(text.size());
        return {to, text.size()};
    }
    /// The same of a text that lies in a block.
    std::string_view copyTextOfBlock(std::string_view text) {
        char* const to = reserve(text.size());
        for (std::size_t at = 0; at < text.size(); at += Block::kSlack) {
            const detail::ByteBlock first(text.data() + at);
            const detail::ByteBlock second(text.data() + at + detail::ByteBlock::kSize);
            first.store(to + at);
            second.store(to + at + detail::ByteBlock::kSize);
        }
        commit(text.size());
        return {to, text.size()};
    }

    /// Memory for `bytes` bytes behind all that was allocated so far, for which the block itself is enlarged:
    /// of a large block that is one piece, the system's memory is kept for the next one instead of being
    /// given back and asked for page by page. The block may move, so nothing may point into it yet, and it
    /// has no further pieces and keeps nothing.
    void* extend(std::size_t bytes);

    /// One piece of memory whose length is not known before it is written: it is opened with a guess, may be
    /// grown (which moves its first `used` bytes) and is cut to what was used when it is closed (which may
    /// move it too). One piece is open at a time.
    void* openPiece(std::size_t bytes);
    void* growPiece(std::size_t used, std::size_t bytes);
    void* closePiece(std::size_t used) noexcept;

    /// Makes the block keep what a record in `other` holds: that block or, when it is a copy's, all that the
    /// copy keeps. Null and the block itself need no keeping.
    void keep(const Block* other);
    /// Makes the block keep what lies in `other` itself, a copy's block or not.
    void keepBlock(const Block* other);
    /// Bytes that a block needs to keep the first few others.
    static constexpr std::size_t kRoomToKeep = 64;
    /// Makes room at once for so many blocks that will be kept.
    void expectKept(std::size_t blocks);
    /// Finishes another block, in which the texts of this one lie, and keeps it: before any other.
    void takeTexts(BlockWriter& texts);

    /// Hands the writer's use of the block to the caller.
    Block* finish() noexcept { return std::exchange(block_, nullptr); }

private:
    void grow(std::size_t bytes);
    void openKept(std::size_t capacity);

    Block* block_;
    char* next_;
    char* end_;
    Block::Chunk* open_ = nullptr;
    std::uintptr_t borrowed_ = 0;
    std::size_t borrowedSize_ = 0;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
