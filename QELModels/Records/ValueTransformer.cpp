#include "QELModels/Records/ValueTransformer.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

Value ValueTransformer::reverseTransformedValue(const Value&) const {
    return {};
}

void ValueTransformer::transformInto(PropertyWriter& to, RepresentationView value) const {
    to.put(transformedValue(value));
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
