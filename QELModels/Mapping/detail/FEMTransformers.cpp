#include "QELModels/Mapping/detail/FEMTransformers.h"

#include <memory>
#include <string>

#include "QELModels/Platform/detail/Hash.h"
#include "QELModels/Platform/detail/NeverDestroyed.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

namespace {

class NoTransformer final : public ValueTransformer {
public:
    constexpr NoTransformer() noexcept = default;

    Value::Kind transformedValueClass() const noexcept override { return Value::Kind::null; }
    Value transformedValue(std::optional<RepresentationView>) const override { return {}; }
    void transformInto(PropertyWriter&, RepresentationView) const override {}
};
constexpr NeverDestroyed<NoTransformer> noTransformer;

// A name and its place.
struct Name {
    const std::string text;
    const std::size_t place;
    std::atomic<const ValueTransformer*> transformer;
    Name* older;  // in the same bucket
};

// Names are written in programs, so there are few of them: one or two in a bucket.
constexpr unsigned kBucketBits = 6;
constinit std::array<std::atomic<Name*>, 1 << kBucketBits> buckets{};
constinit std::atomic<std::size_t> places{0};

std::atomic<Name*>& bucketOf(std::string_view name) noexcept {
    return buckets[static_cast<std::size_t>(hashOfText(name) >> (64 - kBucketBits))];
}

Name* find(Name* newest, std::string_view name) noexcept {
    while (newest != nullptr && newest->text != name)
        newest = newest->older;
    return newest;
}

Name* find(std::string_view name) noexcept {
    return find(bucketOf(name).load(std::memory_order_acquire), name);
}

}  // namespace

constinit std::array<std::atomic<const ValueTransformer*>, FEMTransformers::kFixedPlaces>
    FEMTransformers::replacements{};

void FEMTransformers::replaceAt(std::size_t place, const ValueTransformer* transformer) noexcept {
    replacements[place].store(transformer != nullptr ? transformer : none(), std::memory_order_release);
}

const ValueTransformer* FEMTransformers::named(std::string_view name) noexcept {
    const Name* const found = find(name);
    return found != nullptr ? found->transformer.load(std::memory_order_acquire) : nullptr;
}

void FEMTransformers::setNamed(const ValueTransformer* transformer, std::string_view name) {
    std::atomic<Name*>& bucket = bucketOf(name);
    Name* newest = bucket.load(std::memory_order_acquire);
    std::unique_ptr<Name> added;
    for (;;) {
        if (Name* const known = find(newest, name)) {
            known->transformer.store(transformer, std::memory_order_release);
            return;
        }
        if (transformer == nullptr) return;
        if (!added) added.reset(new Name{std::string(name), places.fetch_add(1), transformer, nullptr});
        // Another thread may have added the same name meanwhile: then the search finds it.
        added->older = newest;
        if (bucket.compare_exchange_weak(newest, added.get(), std::memory_order_acq_rel)) break;
    }
    added.release();
}

void FEMTransformers::own(const ValueTransformer& transformer) noexcept {
    static constinit std::atomic<const ValueTransformer*> newest{nullptr};
    transformer.ownedBefore_ = newest.load(std::memory_order_relaxed);
    while (!newest.compare_exchange_weak(
        transformer.ownedBefore_, &transformer, std::memory_order_release, std::memory_order_relaxed)) {
    }
}

const ValueTransformer* FEMTransformers::none() noexcept {
    return &noTransformer.value;
}

FEMCaptured::FEMCaptured() {
    for (std::size_t place = 0; place < replacements_.size(); ++place)
        replacements_[place] = FEMTransformers::replacementAt(place);
    const std::size_t count = places.load(std::memory_order_acquire);
    if (count == 0) return;
    named_.resize(count);
    for (const std::atomic<Name*>& bucket : buckets) {
        for (const Name* name = bucket.load(std::memory_order_acquire); name != nullptr; name = name->older)
            if (name->place < count) named_[name->place] = name->transformer.load(std::memory_order_acquire);
    }
}

const ValueTransformer* FEMCaptured::named(std::string_view name) const noexcept {
    const Name* const found = find(name);
    return found != nullptr && found->place < named_.size() ? named_[found->place] : nullptr;
}

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
