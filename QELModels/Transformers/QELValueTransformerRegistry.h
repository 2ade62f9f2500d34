#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <memory>
#include <string_view>

#include "QELModels/Mapping/FEMMapRule.h"
#include "QELModels/Mapping/detail/FEMTransformers.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Platform/detail/NeverDestroyed.h"
#include "QELModels/Records/PropertyKind.h"
#include "QELModels/Records/ValueTransformer.h"
#include "QELModels/Transformers/QELHTMLTransformer.h"
#include "QELModels/Transformers/QELNSURLTransformer.h"
#include "QELModels/Transformers/QELTimestampTransformer.h"
#include "QELModels/Transformers/QELUIColorTransformer.h"

/// @file
/// The process-wide table of named transformers. The library's own four are in it before any static
/// initialiser of an application runs. All of it may be used from any thread at any time.

namespace QELModels {
inline namespace QELMODELS_ABI {

/// The names under which the library's transformers are registered.
inline constexpr std::string_view kQELHTMLTransformer = "QELHTMLTransformer";
inline constexpr std::string_view kQELNSURLTransformer = "QELNSURLTransformer";
inline constexpr std::string_view kQELTimestampTransformer = "QELTimestampTransformer";
inline constexpr std::string_view kQELUIColorTransformer = "QELUIColorTransformer";

/// The transformer that is registered under a name; null if there is none. It lives as long as the process,
/// even after another one replaced it. No lock is taken, and unknown names cost no more than known ones.
QELMODELS_EXPORT const ValueTransformer* valueTransformerForName(std::string_view name) noexcept;

/// As `setValueTransformer`, for a transformer that lives as long as the process. Null removes what is
/// registered.
QELMODELS_EXPORT void registerValueTransformer(const ValueTransformer* transformer, std::string_view name);

/// Registers a transformer under a name and replaces what was registered under it. Mappings that are already
/// built keep the one that they captured. The transformer is never destroyed.
template <std::derived_from<ValueTransformer> T>
void setValueTransformer(std::unique_ptr<T> transformer, std::string_view name) {
    registerValueTransformer(transformer.get(), name);
    if (transformer) detail::FEMTransformers::own(*transformer.release());
}

/// Removes what is registered under a name.
inline void setValueTransformer(std::nullptr_t, std::string_view name) {
    registerValueTransformer(nullptr, name);
}

namespace detail {

/// One of the library's own transformers.
struct LibraryTransformer {
    std::string_view name;
    FEMAccepts accepts;  ///< what it has a result for
    PropertyKind makes;  ///< what its results are
    const ValueTransformer* transformer;
};

extern QELMODELS_EXPORT const NeverDestroyed<QELHTMLTransformer> htmlTransformer;
extern QELMODELS_EXPORT const NeverDestroyed<QELNSURLTransformer> urlTransformer;
extern QELMODELS_EXPORT const NeverDestroyed<QELTimestampTransformer> timestampTransformer;
extern QELMODELS_EXPORT const NeverDestroyed<QELUIColorTransformer> colorTransformer;

/// How map rules go through a named transformer. Those of the library are addressed by their places in the
/// list, so that fetching one is one load; all others by their names.
struct QELMODELS_EXPORT TransformerRules {
    static void fetchedOfLibrary(const FEMMapRule&, const FEMCaptured*, RepresentationView, PropertyWriter&);
    static void fetchedByName(const FEMMapRule&, const FEMCaptured*, RepresentationView, PropertyWriter&);
    static void capturedOfLibrary(const FEMMapRule&, const FEMCaptured*, RepresentationView, PropertyWriter&);
    static void capturedByName(const FEMMapRule&, const FEMCaptured*, RepresentationView, PropertyWriter&);
};

/// The library's own transformers, which are registered under their names from the start.
inline constexpr std::array kLibraryTransformers{
    LibraryTransformer{kQELHTMLTransformer, FEMAccepts::text, PropertyKind::text, &htmlTransformer.value},
    LibraryTransformer{kQELNSURLTransformer, FEMAccepts::reference, PropertyKind::url, &urlTransformer.value},
    LibraryTransformer{
        kQELTimestampTransformer, FEMAccepts::number, PropertyKind::date, &timestampTransformer.value},
    LibraryTransformer{
        kQELUIColorTransformer, FEMAccepts::color, PropertyKind::color, &colorTransformer.value}};

/// The place of a name in the list; the list's size for a name that is not the library's.
constexpr std::size_t placeInLibrary(std::string_view name) noexcept {
    std::size_t place = 0;
    while (place != kLibraryTransformers.size() && kLibraryTransformers[place].name != name)
        ++place;
    return place;
}

consteval FEMMapRule transformerRule(std::string_view name, FEMMapRule::Apply ofLibrary,
                                     FEMMapRule::Apply byName) {
    const std::size_t place = placeInLibrary(name);
    if (place == kLibraryTransformers.size())
        return {.isGiven = true, .apply = byName, .data = name.data(), .size = name.size()};
    const LibraryTransformer& row = kLibraryTransformers[place];
    return {.isGiven = true,
            .apply = ofLibrary,
            .data = row.transformer,
            .size = place,
            .accepts = row.accepts,
            .makes = row.makes};
}

}  // namespace detail

/// The map rule through the transformer that is registered under a name at each value. Without one, the
/// property stays empty.
consteval FEMMapRule fetched(std::string_view name) {
    using Rules = detail::TransformerRules;
    return detail::transformerRule(name, &Rules::fetchedOfLibrary, &Rules::fetchedByName);
}

/// The map rule through the transformer that was registered under a name when the mapping was built. Without
/// one, the property stays empty.
consteval FEMMapRule captured(std::string_view name) {
    using Rules = detail::TransformerRules;
    return detail::transformerRule(name, &Rules::capturedOfLibrary, &Rules::capturedByName);
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
