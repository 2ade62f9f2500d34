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
/// Any thread reads and registers at any time, and nobody waits. A name gets its place when something is
/// first registered under it, and keeps it; only the pointer in the place changes, and the transformers that
/// it points to are never freed. So a reader can never hold what is gone, and what is kept depends on how
/// many names there are, not on how often they are registered.
struct QELMODELS_EXPORT FEMTransformers {
    /// How many names have a place from the start: those of the library's own transformers.
    static constexpr std::size_t kFixedPlaces = 4;

    /// What was registered at a fixed place: null as long as nothing was, `none()` when the name was taken
    /// away.
    static const ValueTransformer* replacementAt(std::size_t place) noexcept {
        return replacements[place].load(std::memory_order_acquire);
    }
    static void replaceAt(std::size_t place, const ValueTransformer* transformer) noexcept;

    /// What is registered under any other name; null when nothing is. As quick for unknown names.
    static const ValueTransformer* named(std::string_view name) noexcept;
    static void setNamed(const ValueTransformer* transformer, std::string_view name);

    /// A transformer that leaves every property empty.
    static const ValueTransformer* none() noexcept;

private:
    static std::array<std::atomic<const ValueTransformer*>, kFixedPlaces> replacements;
};

/// The transformers that were registered when it was made. A mapping holds one for its map rules. It is a
/// copy, so it shares nothing that would have to be counted or kept for it. What is registered under several
/// names while it is made may be in it in part.
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
