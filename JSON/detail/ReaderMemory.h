#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string_view>

#include "JSON/detail/JSONWalker.h"
#include "JSON/detail/StructuralIndex.h"
#include "QELModels/Memory/Zone.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Representation/detail/RepresentationNodes.h"

// Part of the reader's source alone.
namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {
namespace {

/// Memory for what is lent, one value after the other.
struct LendingMemory {
    LendingMemory(std::size_t textCapacity, Zone* zone)
        : nodes(nodesNeeded(textCapacity / kBytesPerStructural, kUsualDepth), textCapacity, zone),
          text(nodes.writer().allocate<char>(textCapacity)),
          textBytes(textCapacity) {}

    std::size_t bytes() const noexcept { return textBytes + nodes.capacity() * sizeof(RepresentationNode); }

    RepresentationNodes nodes;
    char* text;
    std::size_t textBytes;

private:
    // A guess: the nodes grow when there are more structural characters.
    static constexpr std::size_t kBytesPerStructural = 8;
};

/// What a reader keeps from document to document.
struct ReaderMemory {
    StructuralIndex index;
    Containers containers;
    std::unique_ptr<LendingMemory> lending;

    /// Gives back what one deep or large document needed, so that it does not make all that follow larger.
    void shrink() {
        constexpr std::size_t kMostBytesKept = std::size_t{512} << 10;
        containers.resize(kUsualDepth);
        if (lending != nullptr && lending->bytes() > kMostBytesKept) lending.reset();
    }

    /// Finds the structural characters of a text and copies it to where what is read of it is lent. In the
    /// document, `following` bytes come after it, and other texts of `usual` bytes will be taken.
    Outcome take(std::string_view text, std::size_t following, std::size_t usual, Zone* zone) {
        const std::size_t bytes = text.size() + kPadding;
        if (lending == nullptr || lending->textBytes < bytes || lending->nodes.isKept())
            lending = std::make_unique<LendingMemory>(std::max(bytes, usual + kPadding), zone);
        const Outcome outcome = index.find(text, following, lending->text);
        if (outcome == Outcome::done) {
            // As deep as containers may nest before there is made more room for them.
            const std::size_t needed = nodesNeeded(index.size(), containers.size());
            if (lending->nodes.capacity() < needed) lending->nodes.grow(0, needed);
        }
        return outcome;
    }
};

}  // namespace
}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
