#include "QELModels/Transformers/QELValueTransformerRegistry.h"

#include <string>

#include "QELModels/Transformers/QELHTMLTransformer.h"
#include "QELModels/Transformers/QELNSURLTransformer.h"
#include "QELModels/Transformers/QELTimestampTransformer.h"
#include "QELModels/Transformers/QELUIColorTransformer.h"

namespace QELModels::inline QELMODELS_ABI {

namespace {

// Constant data with trivial destructors: there before the first static initialiser, and after the last
// destructor.
constinit const QELHTMLTransformer htmlTransformer;
constinit const QELNSURLTransformer urlTransformer;
constinit const QELTimestampTransformer timestampTransformer;
constinit const QELUIColorTransformer colorTransformer;

// Every registration there ever was, the newest first. None is taken out, so that readers need no lock and a
// replaced transformer lives on for those who hold it.
struct Registration {
    const ValueTransformer* transformer;
    std::string name;
    Registration* older;
};
constinit std::atomic<Registration*> newest{nullptr};

Value transformed(const ValueTransformer* transformer, RepresentationView value, BlockWriter& writer) {
    return transformer == nullptr ? Value() : transformer->transformedValueInto(value, writer);
}

}  // namespace

constinit QELTransformerSlots::Slot QELTransformerSlots::html{&htmlTransformer};
constinit QELTransformerSlots::Slot QELTransformerSlots::url{&urlTransformer};
constinit QELTransformerSlots::Slot QELTransformerSlots::timestamp{&timestampTransformer};
constinit QELTransformerSlots::Slot QELTransformerSlots::color{&colorTransformer};

const void* QELTransformerSlots::fetch(const FEMCapture& capture) noexcept {
    return valueTransformerForName(capture.name);
}

Value QELTransformerSlots::applyFetched(const FEMMapRule& rule, const void*, RepresentationView value,
                                        BlockWriter& writer) {
    return transformed(static_cast<const Slot*>(rule.data)->load(std::memory_order_acquire), value, writer);
}

Value QELTransformerSlots::applyCaptured(const FEMMapRule&, const void* captured, RepresentationView value,
                                         BlockWriter& writer) {
    return transformed(static_cast<const ValueTransformer*>(captured), value, writer);
}

const ValueTransformer* valueTransformerForName(std::string_view name) noexcept {
    if (const auto* slot = QELTransformerSlots::named(name)) return slot->load(std::memory_order_acquire);
    const Registration* registration = newest.load(std::memory_order_acquire);
    while (registration != nullptr && registration->name != name)
        registration = registration->older;
    return registration == nullptr ? nullptr : registration->transformer;
}

void registerValueTransformer(const ValueTransformer* transformer, std::string_view name) {
    auto registration = std::make_unique<Registration>(Registration{transformer, std::string(name), nullptr});
    registration->older = newest.load(std::memory_order_relaxed);
    while (!newest.compare_exchange_weak(registration->older, registration.get(), std::memory_order_acq_rel))
        continue;
    registration.release();
    if (auto* slot = QELTransformerSlots::named(name)) slot->store(transformer, std::memory_order_release);
}

}  // namespace QELModels::inline QELMODELS_ABI
