#pragma once

#include "QELModels/Platform/Export.h"
#include "QELModels/Records/ValueTransformer.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// The common base of the library's own transformers.
class QELMODELS_EXPORT QELValueTransformer : public ValueTransformer {
protected:
    constexpr QELValueTransformer() noexcept = default;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
