#pragma once

#include "QELModels/Models/QELAssetAdditional.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Records/Ref.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// @addtogroup assetFacts
/// @{

/// The cue points by their timeline, ascending; those without one first, and equal ones in the order of the
/// document. A new list that shares the cue points; empty, not null, when there are none.
QELMODELS_EXPORT Ref<List<QELAssetCuePoint>> sortedAdCuePoints(const QELAssetAdditional& additional);

/// @}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
