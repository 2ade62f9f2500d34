#include "QELModels/Platform/ValueTransformer.h"

namespace QELModels::inline QELMODELS_ABI {

Value ValueTransformer::reverseTransformedValue(const Value&) const {
    return {};
}

Value ValueTransformer::transformedValueInto(RepresentationView value, BlockWriter&) const {
    return transformedValue(value);
}

}  // namespace QELModels::inline QELMODELS_ABI
