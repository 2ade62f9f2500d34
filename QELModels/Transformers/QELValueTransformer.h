#pragma once

#include "QELModels/Platform/Export.h"
#include "QELModels/Platform/ValueTransformer.h"

namespace QELModels::inline QELMODELS_ABI {

/// The common base of the library's own transformers.
class QELMODELS_EXPORT QELValueTransformer : public ValueTransformer {
protected:
    constexpr QELValueTransformer() noexcept = default;
    ~QELValueTransformer() = default;
};

}  // namespace QELModels::inline QELMODELS_ABI
