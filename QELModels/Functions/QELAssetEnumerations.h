#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "QELModels/Platform/Export.h"

/// @file
/// The two enumerations of an asset, each with the words by which documents name its values.
/// They are apart from the asset, so that a function on a stream type needs no model class.

namespace QELModels {
inline namespace QELMODELS_ABI {

/// Whether an asset is played on demand or is a broadcast. Any 64-bit number may be held; the library itself
/// makes only these. The empty value 0 is a real one: an asset without a usable stream type is on demand.
enum QELStreamType : std::int64_t {
    QELStreamTypeVod = 0,      ///< on demand
    QELStreamTypeWasLive = 1,  ///< a broadcast that is over and can be played on demand
    QELStreamTypeLive = 2,     ///< a broadcast that runs or is to come
};

/// What an asset is made of. Any 64-bit number may be held; the library itself makes only these.
/// The empty value 0 is a real one: an asset without a usable type is a video.
enum QELAssetType : std::int64_t {
    QELAssetTypeVideo = 0,
    QELAssetTypeAudio = 1,
};

/// A value of an enumeration and its word in documents, matched exactly.
template <typename Enumeration>
struct NamedValue {
    std::string_view name;
    Enumeration value;
};

/// Documents' words for stream types.
inline constexpr std::array<NamedValue<QELStreamType>, 3> kQELStreamTypeNames{{
    {"vod", QELStreamTypeVod},
    {"wasLive", QELStreamTypeWasLive},
    {"live", QELStreamTypeLive},
}};

/// Documents' words for asset types.
inline constexpr std::array<NamedValue<QELAssetType>, 2> kQELAssetTypeNames{{
    {"video", QELAssetTypeVideo},
    {"audio", QELAssetTypeAudio},
}};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
