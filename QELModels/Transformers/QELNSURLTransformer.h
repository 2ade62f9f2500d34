#pragma once

#include <optional>

#include "QELModels/Platform/Export.h"
#include "QELModels/Transformers/QELValueTransformer.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// Reads a string as a URL. A string that is not a URL becomes null, with one line in the log: "Unable to
/// transform URL" and the string. Anything but a string becomes null without a line. The reverse gives a
/// URL's text.
class QELMODELS_EXPORT QELNSURLTransformer final : public QELValueTransformer {
public:
    constexpr QELNSURLTransformer() noexcept = default;

    Value::Kind transformedValueClass() const noexcept override { return Value::Kind::url; }
    Value transformedValue(std::optional<RepresentationView> value) const override;
    bool allowsReverseTransformation() const noexcept override { return true; }
    Value reverseTransformedValue(const Value& value) const override;
    void transformInto(PropertyWriter& to, RepresentationView value) const override;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
