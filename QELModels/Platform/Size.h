#pragma once

#include "QELModels/Platform/Export.h"

namespace QELModels::inline QELMODELS_ABI {

/// A width and a height, in points unless said otherwise.
struct Size {
    double width = 0;
    double height = 0;

    friend constexpr bool operator==(const Size&, const Size&) = default;
};

}  // namespace QELModels::inline QELMODELS_ABI
