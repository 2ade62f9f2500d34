#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "QELModels/Models/QELAsset.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Values/Date.h"
#include "QELModels/Values/URL.h"

/// @file
/// What the player and the listing screens ask of an asset. Nothing is stored: every answer is computed from
/// the asset, its nested records and, where time matters, one reading of `Clock::now()`. A record that is
/// missing never fails a question; each one says what it answers then.

namespace QELModels {
inline namespace QELMODELS_ABI {

/// @defgroup assetFacts Facts of an asset
/// @{

/// The web site that share links lead to.
inline constexpr std::string_view kQELSiteBaseURL = "https://tv.example";

/// The link to the asset on the web site: the base URL, "/#!/" and the identifier, "(null)" without one.
QELMODELS_EXPORT std::string shareURLString(const QELAsset& asset);
/// The link to the asset's comments: the base URL, "/?id=" and the identifier, "(null)" without one.
QELMODELS_EXPORT std::string commentsShareURLString(const QELAsset& asset);
/// The share link with a place to begin at, in seconds, such as ".../1234/02m03s"; null if that is not a URL.
QELMODELS_EXPORT std::optional<URL> shareURLFromPlayhead(const QELAsset& asset, double playhead);

/// The length in seconds, fractions kept; 0 without one.
QELMODELS_EXPORT double durationInSeconds(const QELAsset& asset) noexcept;
/// The featured chapters, also when they are an empty list, else all chapters; null when there are neither.
QELMODELS_EXPORT const List<QELAssetChapter>* featuredChaptersOrDefaultChapters(
    const QELAsset& asset QELMODELS_LENT) noexcept;

/// Whether its flight has begun, whatever its end and its stream type: a flight that is over is live too.
/// False without a start.
QELMODELS_EXPORT bool isLive(const QELAsset& asset);
/// The same, seen from a date.
QELMODELS_EXPORT bool isLive(const QELAsset& asset, Date date) noexcept;
/// Whether its flight is over. False without an end.
QELMODELS_EXPORT bool wasLive(const QELAsset& asset);
/// The same, seen from a date.
QELMODELS_EXPORT bool wasLive(const QELAsset& asset, Date date) noexcept;
/// Seconds until the flight begins; negative once it has begun. Without a start, that counts as 1970-01-01.
QELMODELS_EXPORT double secondsUntilLive(const QELAsset& asset);
/// The same, seen from a date; no date counts as 1970-01-01 too.
QELMODELS_EXPORT double secondsUntilLive(const QELAsset& asset, std::optional<Date> date) noexcept;
/// Whether the stream type is live.
QELMODELS_EXPORT bool hasLiveStreamType(const QELAsset& asset) noexcept;

/// Whether it is the newest asset of its category. False when either identifier is missing.
QELMODELS_EXPORT bool isLastAssetInCategory(const QELAsset& asset) noexcept;
/// Whether it may be played on another screen: always for a live stream type, else if its category's
/// additional data allows all devices. False without these, although `allowAllDevices` of such a category
/// answers true.
QELMODELS_EXPORT bool remotePlaybackAllowed(const QELAsset& asset) noexcept;
/// Whether advertisements may be shown. True without settings.
QELMODELS_EXPORT bool showAds(const QELAsset& asset) noexcept;
/// Whether its category is a series. False without a category.
QELMODELS_EXPORT bool isSeries(const QELAsset& asset) noexcept;
/// The flag of the category itself, but false when the category has no additional data.
QELMODELS_EXPORT bool showCategory(const QELAsset& asset) noexcept;
/// Whether its category shows comments. True without a category or its additional data.
QELMODELS_EXPORT bool categoryShowComments(const QELAsset& asset) noexcept;
/// Whether its own settings show comments. True without settings.
QELMODELS_EXPORT bool settingsShowComments(const QELAsset& asset) noexcept;
/// Whether the player shows the category's logo. False for every asset of the content API, whose mapping
/// never fills that flag.
QELMODELS_EXPORT bool showPlayerLogo(const QELAsset& asset) noexcept;
/// Whether the list of cue points (which may be empty) or the category's additional data is missing.
QELMODELS_EXPORT bool isInvalidObject(const QELAsset& asset) noexcept;
/// Whether the stream is secured by a token. False without a stream configuration.
QELMODELS_EXPORT bool isSecured(const QELAsset& asset);

/// @}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
