#include "QELModels/Memory/detail/BlockKeeper.h"

#include <algorithm>
#include <cassert>
#include <new>

#include "QELModels/Memory/detail/BlockParts.h"
#include "QELModels/Memory/detail/BlockWriter.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

namespace {

constexpr std::size_t kFirstKeptBlocks = 4;
constexpr std::size_t kMostKeptBlocksAtOnce = 256;

}  // namespace

void BlockKeeper::keep(const Block* other) {
    if (other == nullptr || other->original_) return keepBlock(other);
    for (auto* kept = other->kept_; kept != nullptr; kept = kept->next) {
        for (std::size_t i = 0; i < kept->count; ++i)
            keepBlock(kept->blocks()[i]);
    }
}

void BlockKeeper::keepBlock(const Block* other) {
    Block* const block = arena_.block();
    if (other == nullptr || other == block) return;
    auto* kept = block->kept_;
    // The values of one record come from very few blocks, in turn: a look at the newest finds nearly all of
    // them.
    if (kept != nullptr) {
        const Block** end = kept->blocks() + kept->count;
        const Block** recent = end - std::min(kept->count, kFirstKeptBlocks);
        if (std::find(recent, end, other) != end) return;
    }
    if (kept == nullptr || kept->count == kept->capacity) {
        kept = addTable(kept == nullptr ? kFirstKeptBlocks
                                        : std::min(kept->capacity * 2, kMostKeptBlocksAtOnce));
    }
    other->retain();
    kept->blocks()[kept->count++] = other;
}

void BlockKeeper::expect(std::size_t blocks) {
    if (blocks != 0) addTable(blocks);
}

void BlockKeeper::takeTexts(BlockWriter& texts) {
    Block* const block = arena_.block();
    assert(block->kept_ == nullptr);
    Block::KeptBlocks* const kept = addTable(1);
    kept->blocks()[kept->count++] = texts.finish();
    block->textsApart_ = true;
}

const Block* BlockKeeper::textsOf(const Block& document, const Zone* zone) noexcept {
    if (!document.textsApart_) return nullptr;
    auto* first = document.kept_;
    while (first->next != nullptr)
        first = first->next;
    const Block* texts = first->blocks()[0];
    return texts->zone_ == zone ? texts : nullptr;
}

Block::KeptBlocks* BlockKeeper::addTable(std::size_t capacity) {
    void* memory =
        arena_.allocate(sizeof(Block::KeptBlocks) + capacity * sizeof(Block*), alignof(Block::KeptBlocks));
    Block* const block = arena_.block();
    return block->kept_ = new (memory) Block::KeptBlocks{block->kept_, 0, capacity};
}

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
