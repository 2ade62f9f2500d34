#include "QELModels/Transformers/QELTimestampTransformer.h"

#include "QELModels/Values/Date.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

Value QELTimestampTransformer::transformedValue(std::optional<RepresentationView> value) const {
    const auto number = value ? value->number() : std::nullopt;
    return number ? Value(dateFromSecondsSince1970(number->doubleValue())) : Value();
}

void QELTimestampTransformer::transformInto(PropertyWriter& to, RepresentationView value) const {
    if (const auto number = value.number()) to.put(dateFromSecondsSince1970(number->doubleValue()));
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
