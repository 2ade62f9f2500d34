#pragma once

#include <optional>

#include "QELModels/Platform/Export.h"
#include "QELModels/Transformers/QELValueTransformer.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// Reads a colour such as "#FF8000" (`QELUtils::colorFromRGBHexString`). Null becomes null; unlike the other
/// transformers, this one throws `MappingFault` for a value that is neither null nor a string.
class QELMODELS_EXPORT QELUIColorTransformer final : public QELValueTransformer {
public:
    constexpr QELUIColorTransformer() noexcept = default;

    Value::Kind transformedValueClass() const noexcept override { return Value::Kind::color; }
    Value transformedValue(std::optional<RepresentationView> value) const override;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
