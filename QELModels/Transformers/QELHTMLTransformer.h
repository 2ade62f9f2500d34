#pragma once

#include <optional>

#include "QELModels/Platform/Export.h"
#include "QELModels/Transformers/QELValueTransformer.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// Cleans a string of HTML: tags removed, then character references decoded. Anything but a string becomes
/// null.
class QELMODELS_EXPORT QELHTMLTransformer final : public QELValueTransformer {
public:
    constexpr QELHTMLTransformer() noexcept = default;

    Value::Kind transformedValueClass() const noexcept override { return Value::Kind::text; }
    Value transformedValue(std::optional<RepresentationView> value) const override;
    void transformInto(PropertyWriter& to, RepresentationView value) const override;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
