#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <string_view>
#include <vector>

#include "QELModels/Platform/Export.h"
#include "QELModels/Records/ValueTransformer.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

/// The transformers that were registered in this process, for map rules that fetch or capture them.
///
///     fixed places   [0] [1] [2] [3]         the library's names, whose places are known at compile time
///     buckets        name -> name -> null    all other names, by their hashes; the newest one first
///
/// Any thread may read and register at any time, and no thread waits. A name gets its place when a
/// transformer is first registered under it, and keeps it. After that only the pointer in the place changes,
/// and what it points to is never freed. So a reader cannot hold anything that was freed, and the memory
/// depends on the number of names, not on how often they were registered.
struct QELMODELS_EXPORT FEMTransformers {
    /// How many names have a place from the start: those of the library's transformers.
    static constexpr std::size_t kFixedPlaces = 4;

    /// What was registered at a fixed place: null as long as nothing was, `none()` after the name was
    /// removed.
    static const ValueTransformer* replacementAt(std::size_t place) noexcept {
        return replacements[place].load(std::memory_order_acquire);
    }
    static void replaceAt(std::size_t place, const ValueTransformer* transformer) noexcept;

    /// What is registered under another name; null if nothing is.
    static const ValueTransformer* named(std::string_view name) noexcept;
    static void setNamed(const ValueTransformer* transformer, std::string_view name);

    /// Owns a transformer for the rest of the process. Requires: it is not owned yet.
    static void own(const ValueTransformer& transformer) noexcept;

    /// A transformer that leaves every property empty.
    static const ValueTransformer* none() noexcept;

private:
    static std::array<std::atomic<const ValueTransformer*>, kFixedPlaces> replacements;
};

/// The transformers that were registered when it was made; each mapping has one for its map rules. It copies
/// the pointers, so nothing is shared that would have to be counted or kept. It may have some and not others
/// of the transformers that are registered while it is made.
class QELMODELS_EXPORT FEMCaptured {
public:
    FEMCaptured();

    /// As of `FEMTransformers`.
    const ValueTransformer* replacementAt(std::size_t place) const noexcept { return replacements_[place]; }
    const ValueTransformer* named(std::string_view name) const noexcept;

private:
    std::array<const ValueTransformer*, FEMTransformers::kFixedPlaces> replacements_;
    std::vector<const ValueTransformer*> named_;  // by the places of their names; empty in most processes
};

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
