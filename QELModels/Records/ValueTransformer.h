#pragma once

#include <optional>

#include "QELModels/Platform/Export.h"
#include "QELModels/Records/PropertyWriter.h"
#include "QELModels/Records/Value.h"
#include "QELModels/Representation/Representation.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

namespace detail {
struct FEMTransformers;
}

/// Converts one raw value of a document into a typed one. Transformers are registered under a name, fetched
/// from any thread at once, and never freed, so they hold no state that changes.
class QELMODELS_EXPORT ValueTransformer {
public:
    /// What kind of value `transformedValue` makes.
    virtual Value::Kind transformedValueClass() const noexcept = 0;
    /// Whether `reverseTransformedValue` is offered.
    virtual bool allowsReverseTransformation() const noexcept { return false; }

    /// The converted value, or null when there is none for it. Nothing given (`nullopt`) is not a null value.
    virtual Value transformedValue(std::optional<RepresentationView> value) const = 0;
    /// The raw value that becomes `value`, or null.
    virtual Value reverseTransformedValue(const Value& value) const;

    /// What the mapping engine calls: puts what `transformedValue` answers where it belongs: once at the
    /// most, and it throws, if it does, before it puts. Overridden for speed alone.
    virtual void transformInto(PropertyWriter& to, RepresentationView value) const;

    // Virtual, although the library never deletes a transformer: without it, every class of an application
    // that is not final would be warned of. The library's own transformers are `detail::NeverDestroyed`.
    constexpr virtual ~ValueTransformer() = default;

protected:
    constexpr ValueTransformer() noexcept = default;

private:
    friend struct detail::FEMTransformers;
    // The registry never frees what it owns. It can always reach it, so that no tool takes it for lost.
    mutable const ValueTransformer* ownedBefore_ = nullptr;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
