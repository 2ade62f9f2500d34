#pragma once

#include "QELModels/Models/QELSeason.h"
#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// @defgroup seasonFacts Facts of a season
/// @{

/// The episode to play after `video`: the first in the season's list with a greater episode number or, when
/// the video is its category's newest asset, with a lower one. The list's order decides, not the nearest
/// number. Null without a video, for a video of another season, and when no episode follows.
QELMODELS_EXPORT const QELAsset* nextVideoForVideo(
    const QELSeason& season QELMODELS_LENT, const QELAsset* video) noexcept;

/// @}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
