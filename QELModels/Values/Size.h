#pragma once

#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// A width and a height, in points unless said otherwise.
struct Size {
    double width = 0;
    double height = 0;

    friend constexpr bool operator==(const Size&, const Size&) = default;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
