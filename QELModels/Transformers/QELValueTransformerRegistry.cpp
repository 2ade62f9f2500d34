#include "QELModels/Transformers/QELValueTransformerRegistry.h"

#include "QELModels/Mapping/detail/FEMTransformers.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

namespace detail {

// Constants whose destruction is constant, too: nothing has to run before their first use or after their
// last.
constexpr NeverDestroyed<QELHTMLTransformer> htmlTransformer;
constexpr NeverDestroyed<QELNSURLTransformer> urlTransformer;
constexpr NeverDestroyed<QELTimestampTransformer> timestampTransformer;
constexpr NeverDestroyed<QELUIColorTransformer> colorTransformer;

namespace {

static_assert(kLibraryTransformers.size() == FEMTransformers::kFixedPlaces);

void applyOfLibrary(const ValueTransformer* replacement, const FEMMapRule& rule, RepresentationView value,
                    PropertyWriter& to) {
    (replacement != nullptr ? replacement : static_cast<const ValueTransformer*>(rule.data))
        ->transformInto(to, value);
}

void applyNamed(const ValueTransformer* transformer, RepresentationView value, PropertyWriter& to) {
    if (transformer != nullptr) transformer->transformInto(to, value);
}

std::string_view nameOf(const FEMMapRule& rule) noexcept {
    return {static_cast<const char*>(rule.data), rule.size};
}

}  // namespace

void TransformerRules::fetchedOfLibrary(const FEMMapRule& rule, const FEMCaptured*, RepresentationView value,
                                        PropertyWriter& to) {
    applyOfLibrary(FEMTransformers::replacementAt(rule.size), rule, value, to);
}

void TransformerRules::capturedOfLibrary(const FEMMapRule& rule, const FEMCaptured* captured,
                                         RepresentationView value, PropertyWriter& to) {
    applyOfLibrary(captured->replacementAt(rule.size), rule, value, to);
}

void TransformerRules::fetchedByName(const FEMMapRule& rule, const FEMCaptured*, RepresentationView value,
                                     PropertyWriter& to) {
    applyNamed(FEMTransformers::named(nameOf(rule)), value, to);
}

void TransformerRules::capturedByName(const FEMMapRule& rule, const FEMCaptured* captured,
                                      RepresentationView value, PropertyWriter& to) {
    applyNamed(captured->named(nameOf(rule)), value, to);
}

}  // namespace detail

const ValueTransformer* valueTransformerForName(std::string_view name) noexcept {
    using detail::FEMTransformers;
    const std::size_t place = detail::placeInLibrary(name);
    if (place == detail::kLibraryTransformers.size()) return FEMTransformers::named(name);
    const ValueTransformer* const replacement = FEMTransformers::replacementAt(place);
    if (replacement == nullptr) return detail::kLibraryTransformers[place].transformer;
    return replacement == FEMTransformers::none() ? nullptr : replacement;
}

void registerValueTransformer(const ValueTransformer* transformer, std::string_view name) {
    const std::size_t place = detail::placeInLibrary(name);
    if (place == detail::kLibraryTransformers.size())
        detail::FEMTransformers::setNamed(transformer, name);
    else
        detail::FEMTransformers::replaceAt(place, transformer);
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
