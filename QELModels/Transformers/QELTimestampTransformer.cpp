#include "QELModels/Transformers/QELTimestampTransformer.h"

#include "QELModels/Platform/Date.h"

namespace QELModels::inline QELMODELS_ABI {

Value QELTimestampTransformer::transformedValue(std::optional<RepresentationView> value) const {
    const auto number = value ? value->number() : std::nullopt;
    return number ? Value(dateFromSecondsSince1970(number->doubleValue())) : Value();
}

}  // namespace QELModels::inline QELMODELS_ABI
