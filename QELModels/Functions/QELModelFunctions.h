#pragma once

#include <string>

#include "QELModels/Functions/QELAssetEnumerations.h"
#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// The word for a stream type, as documents spell it: "vod", "wasLive" or "live".
/// Any other value gives the empty text.
QELMODELS_EXPORT std::string NSStringFromQELStreamType(QELStreamType streamType);

}  // namespace QELMODELS_ABI
}  // namespace QELModels
