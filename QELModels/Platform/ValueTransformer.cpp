#include "QELModels/Platform/ValueTransformer.h"

namespace QELModels::inline QELMODELS_ABI {

Value ValueTransformer::reverseTransformedValue(const Value&) const {
    return {};
}

void ValueTransformer::transformInto(PropertyWriter& to, RepresentationView value) const {
    to.put(transformedValue(value));
}

}  // namespace QELModels::inline QELMODELS_ABI
