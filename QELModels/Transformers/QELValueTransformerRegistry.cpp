#include "QELModels/Transformers/QELValueTransformerRegistry.h"

#include <array>
#include <atomic>
#include <memory>
#include <string>

#include "QELModels/Transformers/QELHTMLTransformer.h"
#include "QELModels/Transformers/QELNSURLTransformer.h"
#include "QELModels/Transformers/QELTimestampTransformer.h"
#include "QELModels/Transformers/QELUIColorTransformer.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

namespace {

// Constant data with trivial destructors: there before the first static initialiser, and after the last
// destructor.
constinit const QELHTMLTransformer htmlTransformer;
constinit const QELNSURLTransformer urlTransformer;
constinit const QELTimestampTransformer timestampTransformer;
constinit const QELUIColorTransformer colorTransformer;

// A change of the table, and the library's own transformers as they were after it. None is taken out, so that
// readers need no lock and a replaced transformer lives on for those who hold it.
struct Registration : FEMCaptured {
    const ValueTransformer* transformer;
    std::string_view name;
    std::array<const ValueTransformer*, QELNamedTransformers::kNames.size()> library;
    const Registration* older;
};
struct OwnedRegistration : Registration {
    OwnedRegistration(const ValueTransformer* registered, std::string_view under)
        : Registration{{}, registered, {}, {}, nullptr}, ownedName(under) {
        name = ownedName;
    }
    std::string ownedName;
};
constinit const Registration first{
    {}, nullptr, {}, {&htmlTransformer, &urlTransformer, &timestampTransformer, &colorTransformer}, nullptr};

const Registration& registrationAt(const FEMCaptured* captured) noexcept {
    return captured == nullptr ? first : *static_cast<const Registration*>(captured);
}

const Registration& newest() noexcept {
    return registrationAt(FEMCaptured::current.load(std::memory_order_acquire));
}

void apply(const Registration& registration,
           const FEMMapRule& rule,
           RepresentationView value,
           PropertyWriter& to) {
    const ValueTransformer* transformer = registration.library[rule.size];
    if (transformer != nullptr) transformer->transformInto(to, value);
}

}  // namespace

void QELNamedTransformers::applyFetched(const FEMMapRule& rule,
                                        const FEMCaptured*,
                                        RepresentationView value,
                                        PropertyWriter& to) {
    apply(newest(), rule, value, to);
}

void QELNamedTransformers::applyCaptured(const FEMMapRule& rule,
                                         const FEMCaptured* captured,
                                         RepresentationView value,
                                         PropertyWriter& to) {
    apply(registrationAt(captured), rule, value, to);
}

const ValueTransformer* valueTransformerForName(std::string_view name) noexcept {
    const std::size_t position = QELNamedTransformers::position(name);
    const Registration* registration = &newest();
    if (position != QELNamedTransformers::kNames.size()) return registration->library[position];
    while (registration != nullptr && registration->name != name)
        registration = registration->older;
    return registration == nullptr ? nullptr : registration->transformer;
}

void registerValueTransformer(const ValueTransformer* transformer, std::string_view name) {
    const std::size_t position = QELNamedTransformers::position(name);
    auto registration = std::make_unique<OwnedRegistration>(transformer, name);
    const FEMCaptured* before = FEMCaptured::current.load(std::memory_order_acquire);
    do {
        registration->older = &registrationAt(before);
        registration->library = registration->older->library;
        if (position != registration->library.size()) registration->library[position] = transformer;
    } while (!FEMCaptured::current.compare_exchange_weak(
        before, static_cast<const Registration*>(registration.get()), std::memory_order_acq_rel));
    registration.release();
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
