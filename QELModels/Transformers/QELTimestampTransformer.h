#pragma once

#include <optional>

#include "QELModels/Platform/Export.h"
#include "QELModels/Transformers/QELValueTransformer.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// Takes a number, booleans included, as seconds since 1970-01-01 00:00:00 UTC, fractions kept. Anything else
/// becomes null, strings of digits too.
class QELMODELS_EXPORT QELTimestampTransformer final : public QELValueTransformer {
public:
    constexpr QELTimestampTransformer() noexcept = default;

    Value::Kind transformedValueClass() const noexcept override { return Value::Kind::date; }
    Value transformedValue(std::optional<RepresentationView> value) const override;
    void transformInto(PropertyWriter& to, RepresentationView value) const override;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
