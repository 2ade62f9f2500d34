#pragma once

#include <string>

#include "QELModels/Functions/QELAssetEnumerations.h"
#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// The word for a stream type in documents: "vod", "wasLive" or "live". Any other value has the empty text.
QELMODELS_EXPORT std::string NSStringFromQELStreamType(QELStreamType streamType);

}  // namespace QELMODELS_ABI
}  // namespace QELModels
