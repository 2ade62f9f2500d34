#include "QELModels/Models/QELAsset+Utilities.h"

#include "QELModels/Functions/QELDateFormattingFunctions.h"
#include "QELModels/Process/Clock.h"
#include "QELModels/Values/Number.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

namespace {

constexpr double kMillisecondsPerSecond = 1000.0;

const QELAssetAdditionalSettings* settingsOf(const QELAsset& asset) noexcept {
    const QELAssetAdditional* additional = asset.assetAdditional();
    return additional == nullptr ? nullptr : additional->settings();
}

const QELCategoryAdditional* categoryAdditionalOf(const QELAsset& asset) noexcept {
    const QELCategory* category = asset.category();
    return category == nullptr ? nullptr : category->additional();
}

std::optional<Date> flightStartOf(const QELAsset& asset) noexcept {
    const QELFlightTimes* flight = asset.flightTimes();
    return flight == nullptr ? std::nullopt : flight->flightStart();
}

std::optional<Date> flightEndOf(const QELAsset& asset) noexcept {
    const QELFlightTimes* flight = asset.flightTimes();
    return flight == nullptr ? std::nullopt : flight->flightEnd();
}

double secondsOrZero(std::optional<Date> date) noexcept {
    return date ? secondsSince1970(*date) : 0.0;
}

std::string linkTo(const QELAsset& asset, std::string_view path) {
    const auto identifier = asset.assetIdentifier();
    std::string link(kQELSiteBaseURL);
    link += path;
    return link += identifier ? identifier->toString() : "(null)";
}

}  // namespace

std::string shareURLString(const QELAsset& asset) {
    return linkTo(asset, "/#!/");
}

std::string commentsShareURLString(const QELAsset& asset) {
    return linkTo(asset, "/?id=");
}

std::optional<URL> shareURLFromPlayhead(const QELAsset& asset, double playhead) {
    return URL::parse(shareURLString(asset) + '/' + NSStringWithNamedSeparatorsFromMovieDuration(playhead));
}

double durationInSeconds(const QELAsset& asset) noexcept {
    const auto duration = asset.duration();
    return duration ? duration->doubleValue() / kMillisecondsPerSecond : 0.0;
}

const List<QELAssetChapter>* featuredChaptersOrDefaultChapters(const QELAsset& asset) noexcept {
    const QELAssetAdditional* additional = asset.assetAdditional();
    if (additional == nullptr) return nullptr;
    const auto* featured = additional->featuredChapters();
    return featured != nullptr ? featured : additional->chapters();
}

bool isLive(const QELAsset& asset) {
    return isLive(asset, Clock::now());
}

bool isLive(const QELAsset& asset, Date date) noexcept {
    const auto start = flightStartOf(asset);
    return start && *start < date;
}

bool wasLive(const QELAsset& asset) {
    return wasLive(asset, Clock::now());
}

bool wasLive(const QELAsset& asset, Date date) noexcept {
    const auto end = flightEndOf(asset);
    return end && *end < date;
}

double secondsUntilLive(const QELAsset& asset) {
    return secondsUntilLive(asset, Clock::now());
}

double secondsUntilLive(const QELAsset& asset, std::optional<Date> date) noexcept {
    return secondsOrZero(flightStartOf(asset)) - secondsOrZero(date);
}

bool hasLiveStreamType(const QELAsset& asset) noexcept {
    return asset.streamType() == QELStreamTypeLive;
}

bool isLastAssetInCategory(const QELAsset& asset) noexcept {
    const QELCategory* category = asset.category();
    const QELCategoryLastAsset* last = category == nullptr ? nullptr : category->lastAsset();
    const auto identifier = asset.assetIdentifier();
    return last != nullptr && identifier && identifier == last->lastAssetIdentifier();
}

bool remotePlaybackAllowed(const QELAsset& asset) noexcept {
    if (hasLiveStreamType(asset)) return true;
    const QELCategoryAdditional* additional = categoryAdditionalOf(asset);
    return additional != nullptr && additional->allowAllDevices();
}

bool showAds(const QELAsset& asset) noexcept {
    const QELAssetAdditionalSettings* settings = settingsOf(asset);
    return settings == nullptr || settings->showAds();
}

bool isSeries(const QELAsset& asset) noexcept {
    const QELCategory* category = asset.category();
    return category != nullptr && category->isSeries();
}

bool showCategory(const QELAsset& asset) noexcept {
    // The presence of one record decides, and the flag of another one answers: that is meant.
    return categoryAdditionalOf(asset) != nullptr && asset.category()->showCategory();
}

bool categoryShowComments(const QELAsset& asset) noexcept {
    const QELCategoryAdditional* additional = categoryAdditionalOf(asset);
    return additional == nullptr || additional->showComments();
}

bool settingsShowComments(const QELAsset& asset) noexcept {
    const QELAssetAdditionalSettings* settings = settingsOf(asset);
    return settings == nullptr || settings->showComments();
}

bool showPlayerLogo(const QELAsset& asset) noexcept {
    const QELCategoryAdditional* additional = categoryAdditionalOf(asset);
    return additional != nullptr && additional->showPlayerLogo();
}

bool isInvalidObject(const QELAsset& asset) noexcept {
    const QELAssetAdditional* additional = asset.assetAdditional();
    if (additional == nullptr || additional->cuePoints() == nullptr) return true;
    return categoryAdditionalOf(asset) == nullptr;
}

bool isSecured(const QELAsset& asset) {
    const QELStreamConfiguration* configuration = asset.streamConfiguration();
    return configuration != nullptr &&
           (configuration->configuration() & QELStreamConfigurationTokenSecured) != 0;
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
