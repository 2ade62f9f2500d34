#pragma once

#include <array>
#include <concepts>
#include <cstddef>
#include <memory>
#include <string_view>

#include "QELModels/Mapping/FEMMapRule.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Records/ValueTransformer.h"

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

// Not constexpr, so that reaching it in a rule is an error of the compiler that says this sentence.
inline void noTransformerOfTheLibraryHasThatName() {}

/// The library's own transformers as map rules use them: by their places in a table that is replaced as a
/// whole whenever a name is registered anew.
struct QELMODELS_EXPORT QELNamedTransformers {
    static constexpr std::array kNames{
        kQELHTMLTransformer, kQELNSURLTransformer, kQELTimestampTransformer, kQELUIColorTransformer};
    /// What the library's own transformer of each name has a result for.
    static constexpr std::array kAccepts{
        FEMAccepts::text, FEMAccepts::reference, FEMAccepts::number, FEMAccepts::color};

    /// The place of a name among them; their number for a name that is not the library's.
    static constexpr std::size_t position(std::string_view name) noexcept {
        std::size_t at = 0;
        while (at != kNames.size() && kNames[at] != name)
            ++at;
        return at;
    }
    static consteval FEMMapRule rule(FEMMapRule::Apply apply, std::string_view name) {
        const std::size_t at = position(name);
        if (at == kNames.size()) noTransformerOfTheLibraryHasThatName();
        return {apply, nullptr, at, nullptr, kAccepts[at]};
    }
    static void applyFetched(const FEMMapRule&,
                             const FEMCaptured* captured,
                             RepresentationView,
                             PropertyWriter&);
    static void applyCaptured(const FEMMapRule&,
                              const FEMCaptured* captured,
                              RepresentationView,
                              PropertyWriter&);
};

/// The map rule through one of the library's transformers, asked of the registry at each value.
consteval FEMMapRule fetched(std::string_view name) {
    return QELNamedTransformers::rule(&QELNamedTransformers::applyFetched, name);
}

/// The map rule through one of the library's transformers, asked of the registry once, when the mapping is
/// built.
consteval FEMMapRule captured(std::string_view name) {
    return QELNamedTransformers::rule(&QELNamedTransformers::applyCaptured, name);
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
