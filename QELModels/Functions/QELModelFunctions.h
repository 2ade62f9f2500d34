#pragma once

#include <string>

#include "QELModels/Platform/Export.h"
#include "QELModels/Platform/QELAssetEnumerations.h"

namespace QELModels::inline QELMODELS_ABI {

/// The word for a stream type, as documents spell it: "vod", "wasLive" or "live".
/// Any other value gives the empty text.
QELMODELS_EXPORT std::string NSStringFromQELStreamType(QELStreamType streamType);

}  // namespace QELModels::inline QELMODELS_ABI
