#include "QELModels/Memory/Block.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>

namespace QELModels {
inline namespace QELMODELS_ABI {

namespace {

constexpr std::size_t kAlignment = alignof(std::max_align_t);
constexpr std::size_t aligned(std::size_t bytes) noexcept {
    return (bytes + kAlignment - 1) / kAlignment * kAlignment;
}
constexpr std::size_t kChunkHeader = aligned(2 * sizeof(void*));
// How large further pieces are, unless more is asked for.
constexpr std::size_t kLeastChunk = 1024;
constexpr std::size_t kMostChunk = std::size_t{64} << 10;
constexpr std::size_t kWorthCutting = 1024;
constexpr std::size_t kFirstKeptBlocks = 4;
constexpr std::size_t kMostKeptBlocksAtOnce = 256;

void* allocateFrom(Zone* zone, std::size_t bytes) {
    if (zone != nullptr) return zone->allocate(bytes);
    void* memory = std::malloc(bytes);
    if (memory == nullptr) throw std::bad_alloc();
    return memory;
}

void deallocateTo(Zone* zone, void* memory, std::size_t bytes) noexcept {
    if (zone != nullptr) return zone->deallocate(memory, bytes);
    std::free(memory);
}

std::size_t sizeOfChunk(std::size_t bytes) {
    if (bytes > SIZE_MAX / 2) throw std::bad_alloc();
    return aligned(kChunkHeader + bytes);
}

}  // namespace

struct alignas(std::max_align_t) Block::Chunk {
    Chunk* next;
    std::size_t size;
};

struct Block::KeptBlocks {
    KeptBlocks* next;
    std::size_t count;
    std::size_t capacity;
    const Block** blocks() noexcept { return reinterpret_cast<const Block**>(this + 1); }
};

std::size_t Block::size() const noexcept {
    std::size_t bytes = size_;
    for (const Chunk* chunk = chunks_; chunk != nullptr; chunk = chunk->next)
        bytes += chunk->size;
    return bytes;
}

const Block* Block::textsFrom(const Zone* zone) const noexcept {
    if (!textsApart_) return nullptr;
    KeptBlocks* first = kept_;
    while (first->next != nullptr)
        first = first->next;
    const Block* texts = first->blocks()[0];
    return texts->zone_ == zone ? texts : nullptr;
}

// Blocks that keep blocks that keep blocks may be a million deep, so the dead ones wait in a list, threaded
// through the counts that nobody needs any more, instead of on the stack.
void Block::free(const Block* block) noexcept {
    auto* dead = const_cast<Block*>(block);
    Block* waiting = nullptr;
    while (dead != nullptr) {
        for (KeptBlocks* kept = dead->kept_; kept != nullptr; kept = kept->next) {
            for (std::size_t i = 0; i < kept->count; ++i) {
                auto* other = const_cast<Block*>(kept->blocks()[i]);
                if (other->uses_.fetch_sub(1, std::memory_order_acq_rel) != 1) continue;
                other->uses_.store(reinterpret_cast<std::uintptr_t>(waiting), std::memory_order_relaxed);
                waiting = other;
            }
        }
        Zone* zone = dead->zone_;
        for (Chunk* chunk = dead->chunks_; chunk != nullptr;) {
            Chunk* next = chunk->next;
            deallocateTo(zone, chunk, chunk->size);
            chunk = next;
        }
        const std::size_t size = dead->size_;
        dead->~Block();
        deallocateTo(zone, dead, size);
        dead = waiting;
        if (dead != nullptr) waiting = reinterpret_cast<Block*>(dead->uses_.load(std::memory_order_relaxed));
    }
}

BlockWriter::BlockWriter(std::size_t capacity, Zone* zone, Origin origin) {
    if (capacity > SIZE_MAX / 2) throw std::bad_alloc();
    const std::size_t size = aligned(sizeof(Block) + capacity + Block::kSlack);
    void* memory = allocateFrom(zone, size);
    block_ = new (memory) Block(zone, size, origin == Origin::original);
    next_ = static_cast<char*>(memory) + sizeof(Block);
    end_ = static_cast<char*>(memory) + size - Block::kSlack;
}

void BlockWriter::grow(std::size_t bytes) {
    static_assert(sizeof(Block::Chunk) == kChunkHeader);
    // Pieces double up to a limit, so that a block grows in few steps and wastes little.
    const std::size_t before = block_->chunks_ == nullptr ? 0 : block_->chunks_->size;
    const std::size_t size =
        sizeOfChunk(std::max(bytes, std::clamp(2 * before, kLeastChunk, kMostChunk))) + Block::kSlack;
    auto* memory = static_cast<char*>(allocateFrom(block_->zone_, size));
    block_->chunks_ = new (memory) Block::Chunk{block_->chunks_, size};
    next_ = memory + sizeof(Block::Chunk);
    end_ = memory + size - Block::kSlack;
}

void* BlockWriter::extend(std::size_t bytes) {
    const std::size_t used = static_cast<std::size_t>(next_ - reinterpret_cast<char*>(block_));
    const std::size_t start = aligned(used);
    if (bytes > SIZE_MAX / 2 - start) throw std::bad_alloc();
    const std::size_t size = aligned(start + bytes + Block::kSlack);
    if (size > block_->size_) {
        void* memory = nullptr;
        if (Zone* zone = block_->zone_; zone == nullptr) {
            memory = std::realloc(static_cast<void*>(block_), size);
            if (memory == nullptr) throw std::bad_alloc();
        } else {
            memory = zone->allocate(size);
            std::memcpy(memory, static_cast<void*>(block_), used);
            zone->deallocate(block_, block_->size_);
        }
        block_ = static_cast<Block*>(memory);
        block_->size_ = size;
        end_ = static_cast<char*>(memory) + size - Block::kSlack;
    }
    char* const memory = reinterpret_cast<char*>(block_) + start;
    next_ = memory + bytes;
    return memory;
}

BlockWriter::~BlockWriter() {
    // An open piece may hold what somebody keeps, so it goes with the block.
    if (open_ != nullptr) {
        open_->next = block_->chunks_;
        block_->chunks_ = open_;
    }
    if (block_ != nullptr) block_->release();
}

void* BlockWriter::openPiece(std::size_t bytes) {
    const std::size_t size = sizeOfChunk(bytes);
    open_ = new (allocateFrom(block_->zone_, size)) Block::Chunk{nullptr, size};
    return open_ + 1;
}

void* BlockWriter::growPiece(std::size_t used, std::size_t bytes) {
    Block::Chunk* old = open_;
    openPiece(bytes);
    std::memcpy(open_ + 1, old + 1, used);
    deallocateTo(block_->zone_, old, old->size);
    return open_ + 1;
}

void* BlockWriter::closePiece(std::size_t used) noexcept {
    const std::size_t size = sizeOfChunk(used);
    if (block_->zone_ == nullptr && open_->size - size >= kWorthCutting) {
        if (void* cut = std::realloc(open_, size); cut != nullptr) {
            open_ = static_cast<Block::Chunk*>(cut);
            open_->size = size;
        }
    }
    open_->next = block_->chunks_;
    block_->chunks_ = open_;
    return std::exchange(open_, nullptr) + 1;
}

void BlockWriter::keep(const Block* other) {
    if (other == nullptr || other->original_) return keepBlock(other);
    for (auto* kept = other->kept_; kept != nullptr; kept = kept->next) {
        for (std::size_t i = 0; i < kept->count; ++i)
            keepBlock(kept->blocks()[i]);
    }
}

void BlockWriter::keepBlock(const Block* other) {
    if (other == nullptr || other == block_) return;
    auto* kept = block_->kept_;
    // The values of one record come from very few blocks, in turn: a look at the newest finds nearly all of
    // them.
    if (kept != nullptr) {
        const Block** end = kept->blocks() + kept->count;
        const Block** recent = end - std::min(kept->count, kFirstKeptBlocks);
        if (std::find(recent, end, other) != end) return;
    }
    if (kept == nullptr || kept->count == kept->capacity) {
        openKept(kept == nullptr ? kFirstKeptBlocks : std::min(kept->capacity * 2, kMostKeptBlocksAtOnce));
        kept = block_->kept_;
    }
    other->retain();
    kept->blocks()[kept->count++] = other;
}

void BlockWriter::borrowTexts(const Block& texts) {
    keepBlock(&texts);
    borrowed_ = reinterpret_cast<std::uintptr_t>(&texts);
    borrowedSize_ = texts.size_;
}

void BlockWriter::takeTexts(BlockWriter& texts) {
    openKept(1);
    block_->kept_->blocks()[block_->kept_->count++] = texts.finish();
    block_->textsApart_ = true;
}

void BlockWriter::expectKept(std::size_t blocks) {
    if (blocks != 0) openKept(blocks);
}

void BlockWriter::openKept(std::size_t capacity) {
    void* memory =
        allocate(sizeof(Block::KeptBlocks) + capacity * sizeof(Block*), alignof(Block::KeptBlocks));
    block_->kept_ = new (memory) Block::KeptBlocks{block_->kept_, 0, capacity};
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
