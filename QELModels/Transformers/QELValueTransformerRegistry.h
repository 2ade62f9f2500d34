#pragma once

#include <array>
#include <atomic>
#include <concepts>
#include <cstddef>
#include <memory>
#include <string_view>

#include "QELModels/Mapping/FEMRules.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Platform/ValueTransformer.h"

/// @file
/// The process-wide table of named transformers. The library's own four are in it before any static
/// initialiser of an application runs. All of it may be used from any thread at any time.

namespace QELModels::inline QELMODELS_ABI {

/// The names under which the library's transformers are registered.
inline constexpr std::string_view kQELHTMLTransformer = "QELHTMLTransformer";
inline constexpr std::string_view kQELNSURLTransformer = "QELNSURLTransformer";
inline constexpr std::string_view kQELTimestampTransformer = "QELTimestampTransformer";
inline constexpr std::string_view kQELUIColorTransformer = "QELUIColorTransformer";

/// The transformer that is registered under a name; null when none is. It lives as long as the process, also
/// after another one took its name.
QELMODELS_EXPORT const ValueTransformer* valueTransformerForName(std::string_view name) noexcept;

/// For `setValueTransformer`: the registry owns the transformer and never frees it. Null takes the name away.
QELMODELS_EXPORT void registerValueTransformer(const ValueTransformer* transformer, std::string_view name);

/// Registers a transformer under a name, in the place of what was registered under it. Mappings that are
/// already built keep the one they fetched.
template <std::derived_from<ValueTransformer> T>
void setValueTransformer(std::unique_ptr<T> transformer, std::string_view name) {
    registerValueTransformer(transformer.get(), name);
    transformer.release();
}

/// Takes a name away: nothing is registered under it any more.
inline void setValueTransformer(std::nullptr_t, std::string_view name) {
    registerValueTransformer(nullptr, name);
}

/// The places of the library's own transformers, so that fetching one of them is one atomic load.
struct QELMODELS_EXPORT QELTransformerSlots {
    using Slot = std::atomic<const ValueTransformer*>;
    static Slot html;
    static Slot url;
    static Slot timestamp;
    static Slot color;

    /// The place that belongs to a name; null for a name that is not the library's.
    static constexpr Slot* named(std::string_view name) noexcept {
        if (name == kQELHTMLTransformer) return &html;
        if (name == kQELNSURLTransformer) return &url;
        if (name == kQELTimestampTransformer) return &timestamp;
        if (name == kQELUIColorTransformer) return &color;
        return nullptr;
    }
    static const void* fetch(const FEMCapture& capture) noexcept;
    static constexpr std::array<FEMCapture, 4> captures{{{&fetch, kQELHTMLTransformer},
                                                         {&fetch, kQELNSURLTransformer},
                                                         {&fetch, kQELTimestampTransformer},
                                                         {&fetch, kQELUIColorTransformer}}};
    /// What the library's own transformer of that name has a result for.
    static constexpr FEMAccepts accepts(std::string_view name) noexcept {
        if (name == kQELHTMLTransformer) return FEMAccepts::text;
        if (name == kQELNSURLTransformer) return FEMAccepts::reference;
        if (name == kQELTimestampTransformer) return FEMAccepts::number;
        if (name == kQELUIColorTransformer) return FEMAccepts::color;
        return FEMAccepts::anything;
    }
    static Value applyFetched(const FEMMapRule&, const void* captured, RepresentationView, BlockWriter&);
    static Value applyCaptured(const FEMMapRule&, const void* captured, RepresentationView, BlockWriter&);
};

/// The map rule through one of the library's transformers, asked of the registry at each value.
consteval FEMMapRule fetched(std::string_view name) {
    return {&QELTransformerSlots::applyFetched,
            QELTransformerSlots::named(name),
            0,
            nullptr,
            QELTransformerSlots::accepts(name)};
}

/// The map rule through one of the library's transformers, asked of the registry once, when the mapping is
/// built.
consteval FEMMapRule captured(std::string_view name) {
    std::size_t which = 0;
    while (QELTransformerSlots::captures[which].name != name)
        ++which;
    return {&QELTransformerSlots::applyCaptured,
            nullptr,
            0,
            &QELTransformerSlots::captures[which],
            QELTransformerSlots::accepts(name)};
}

}  // namespace QELModels::inline QELMODELS_ABI
