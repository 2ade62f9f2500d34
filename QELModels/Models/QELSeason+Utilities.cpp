#include "QELModels/Models/QELSeason+Utilities.h"

#include <algorithm>
#include <optional>

#include "QELModels/Models/QELAsset+Utilities.h"
#include "QELModels/Values/Number.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

namespace {

std::optional<Number> episodeNumberOf(const QELAsset& asset) noexcept {
    const QELAssetSeries* series = asset.series();
    return series == nullptr ? std::nullopt : series->episodeNumber();
}

std::optional<Number> seasonNumberOf(const QELAsset& asset) noexcept {
    const QELAssetSeries* series = asset.series();
    return series == nullptr ? std::nullopt : series->seasonNumber();
}

}  // namespace

const QELAsset* nextVideoForVideo(const QELSeason& season, const QELAsset* video) noexcept {
    const List<QELAsset>* assets = season.assets();
    if (video == nullptr || assets == nullptr) return nullptr;
    const auto seasonNumber = season.seasonNumber();
    if (!seasonNumber || seasonNumberOf(*video) != seasonNumber) return nullptr;
    const auto played = episodeNumberOf(*video);
    if (!played) return nullptr;
    const bool backwards = isLastAssetInCategory(*video);
    const auto next = std::find_if(assets->begin(), assets->end(), [&](const QELAsset& asset) {
        const auto episode = episodeNumberOf(asset);
        return episode && (backwards ? *episode < *played : *episode > *played);
    });
    return next == assets->end() ? nullptr : &*next;
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
