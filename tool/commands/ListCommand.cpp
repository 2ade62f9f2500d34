#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "QELModels/Categories/NSURL+QELKavoHelper.h"
#include "QELModels/Functions/QELDateFormattingFunctions.h"
#include "QELModels/Mappers/QELAssetsMapper.h"
#include "QELModels/Mappers/QELEditorialMapper.h"
#include "QELModels/Mappers/QELSeasonMapper.h"
#include "QELModels/Models/QELAsset+Utilities.h"
#include "QELModels/Process/Clock.h"
#include "tool/Display.h"
#include "tool/Options.h"
#include "tool/Texts.h"

namespace QELModels::tool {

namespace {

struct Options {
    std::string file;
    std::optional<std::string> size;
    std::optional<std::string> screenScale;
    std::optional<std::string> at;
};

void declare(CLI::App& command, Options& options) {
    addFile(command, options.file);
    addOptional(command,
                "--size",
                "WxH",
                options.size,
                "Show each main image's address for a view of this size, in points");
    addScreenScale(command, options.screenScale);
    addCurrentTime(command, options.at);
}

constexpr std::size_t kColumns = 80;
constexpr std::string_view kIndent = "  ";
constexpr std::string_view kSeparator = " | ";

// --- Pieces of text ---------------------------------------------------------------------------------------

// How the pieces of the listing look.
constexpr Style kTitle = Style::bold, kLive = Style::red, kSoon = Style::yellow, kOver = Style::faint;

std::string inStyle(Style style, std::string_view text) {
    static const bool isColored = Output::isColored();
    return styled(text, style, isColored);
}

std::string dateAndTime(Date date) {
    // A calendar with years of four digits; documents may hold any number.
    constexpr double kYear0 = -62167219200, kYear10000 = 253402300800;
    const double seconds = secondsSince1970(date);
    if (!(seconds >= kYear0 && seconds < kYear10000))
        return fmt::format("{} s from 1970", Number(seconds).toString());
    const auto whole = std::chrono::floor<std::chrono::minutes>(date);
    const auto day = std::chrono::floor<std::chrono::days>(whole);
    const std::chrono::year_month_day calendar(day);
    const auto minutes = (whole - day).count();
    return fmt::format("{:04}-{:02}-{:02} {:02}:{:02} UTC",
                       static_cast<int>(calendar.year()),
                       static_cast<unsigned>(calendar.month()),
                       static_cast<unsigned>(calendar.day()),
                       minutes / 60,
                       minutes % 60);
}

// --- One asset --------------------------------------------------------------------------------------------

std::optional<Date> flightEnd(const QELAsset& asset) {
    return asset.flightTimes() == nullptr ? std::nullopt : asset.flightTimes()->flightEnd();
}

bool hasFlightStart(const QELAsset& asset) {
    return asset.flightTimes() != nullptr && asset.flightTimes()->flightStart();
}

// Whether it can be watched now, or when. The end of the flight is looked at first: an asset whose flight is
// over still counts as live.
std::string status(const QELAsset& asset) {
    const bool isBroadcast = hasLiveStreamType(asset);
    if (wasLive(asset))
        return inStyle(kOver, fmt::format("off air since {}", dateAndTime(*flightEnd(asset))));
    if (!hasFlightStart(asset)) return isBroadcast ? inStyle(kSoon, "live, start not known") : std::string();
    if (isLive(asset)) return isBroadcast ? inStyle(kLive, "LIVE NOW") : std::string();
    const std::string countdown = NSStringRepresentingTimeLeftUntilLive(secondsUntilLive(asset));
    return inStyle(kSoon, fmt::format("{} in {}", isBroadcast ? "live" : "available", countdown));
}

std::string typeOf(const QELAsset& asset) {
    const std::string_view medium = asset.assetType() == QELAssetTypeAudio ? "audio" : "video";
    switch (asset.streamType()) {
        case QELStreamTypeLive:
            return fmt::format("live {}", medium);
        case QELStreamTypeWasLive:
            return fmt::format("{} of a past broadcast", medium);
        default:
            return fmt::format("{} on demand", medium);
    }
}

std::string episodeOf(const QELAsset& asset) {
    const QELAssetSeries* series = asset.series();
    if (series == nullptr) return {};
    const auto part = [](std::string_view word, std::optional<Number> number) {
        return number ? fmt::format("{} {}", word, number->toString()) : std::string();
    };
    return joined({part("season", series->seasonNumber()), part("episode", series->episodeNumber())}, " ");
}

std::string marksOf(const QELAsset& asset) {
    const auto mark = [](bool isSet, const char* word) { return std::string(isSet ? word : ""); };
    return joined({mark(showAds(asset), "ads"),
                   mark(categoryShowComments(asset) && settingsShowComments(asset), "comments"),
                   mark(isSecured(asset), "token security")},
                  ", ");
}

std::string imageOf(const QELAsset& asset, Size size) {
    const auto main = asset.images() == nullptr ? std::nullopt : asset.images()->main();
    return main ? std::string(QELKavoHelper::getURLWithSize(*main, size).text()) : "no image";
}

// The title, cut where need be, and the duration at the right edge.
std::string titleLine(const QELAsset& asset) {
    const std::string duration =
        asset.duration() ? NSStringFromMovieDuration(durationInSeconds(asset)) : std::string();
    const std::size_t columns = kColumns - (duration.empty() ? 0 : duration.size() + kIndent.size());
    const Shown title = shown(asset.title().value_or("(no title)"), columns);
    if (duration.empty()) return inStyle(kTitle, title.text);
    const std::string gap(kColumns - title.width - duration.size(), ' ');
    return inStyle(kTitle, title.text) + gap + duration;
}

std::string assetText(const QELAsset& asset, std::optional<Size> imageSize) {
    const auto identifier = asset.assetIdentifier();
    const auto category = asset.category() == nullptr ? std::nullopt : asset.category()->title();
    const auto published = asset.publishedAt();
    // A long name of a category leaves columns for the rest of its line.
    constexpr std::size_t kCategoryColumns = 36;
    const std::string lines[] = {
        titleLine(asset),
        joined({typeOf(asset), status(asset)}, kSeparator),
        joined({category ? shown(*category, kCategoryColumns).text : std::string(),
                episodeOf(asset),
                published ? dateAndTime(*published) : std::string()},
               kSeparator),
        joined({identifier ? "id " + identifier->toString() : std::string(), marksOf(asset)}, kSeparator),
        imageSize ? imageOf(asset, *imageSize) : std::string(),
    };
    std::string text = "\n" + lines[0] + '\n';
    for (const std::string& further : std::span(lines).subspan(1))
        if (!further.empty()) text += fmt::format("{}{}\n", kIndent, further);
    return text;
}

// --- The document -----------------------------------------------------------------------------------------

std::string counted(std::size_t count, std::string_view word) {
    return fmt::format("{} {}{}", count, word, count == 1 ? "" : "s");
}

std::string heading(std::string_view text) {
    constexpr std::size_t kHeadingColumns = 48;
    return shown(text, kHeadingColumns).text;
}

struct Listing {
    std::string heading;
    Value owner;  // keeps the assets
    const List<QELAsset>* assets;

    std::size_t size() const { return assets == nullptr ? 0 : assets->size(); }
};

bool isEditorial(RepresentationView document) {
    return document.valueForKey("key") || document.valueForKey("assetsIds");
}

bool isSeason(RepresentationView document) {
    return !document.valueForKey("_embedded") &&
           (document.valueForKey("assets") || document.valueForKey("seasonNumber"));
}

Listing listingOf(RepresentationView document) {
    if (isEditorial(document)) {
        const auto editorial = QELEditorialMapper().mappedResponseFromJSONObject(document);
        Listing listing{"", editorial, editorial->assets()};
        listing.heading = fmt::format("Editorial \"{}\": {}",
                                      heading(editorial->key().value_or("(no key)")),
                                      counted(listing.size(), "asset"));
        return listing;
    }
    if (isSeason(document)) {
        const auto season = QELSeasonMapper().mappedResponseFromJSONObject(document);
        const auto number = season->seasonNumber();
        Listing listing{"", season, season->assets()};
        listing.heading = fmt::format("Season {} \"{}\": {}",
                                      number ? number->toString() : "(no number)",
                                      heading(season->title().value_or("(no title)")),
                                      counted(listing.size(), "episode"));
        return listing;
    }
    const auto page = QELAssetsMapper().mappedResponseFromJSONObject(document);
    Listing listing{fmt::format("Page of {}", counted(page->size(), "asset")), page, page.get()};
    if (!document.valueForKeyPath(QELAssetsMapper::kDefaultAssetsKeyPath))
        listing.heading += fmt::format("\nNothing stands at {}, and it is neither a season nor an editorial",
                                       QELAssetsMapper::kDefaultAssetsKeyPath);
    return listing;
}

ExitStatus run(const Options& options, Session& session) {
    const auto size = options.size ? std::optional(sizeFrom(*options.size)) : std::optional<Size>();
    setScreenScale(options.screenScale);
    setCurrentTime(options.at);
    const Date now = Clock::now();
    Clock::setSource([now] { return now; });  // one moment for the whole page

    const Representation document = session.readDocument(options.file);
    const Listing listing = listingOf(document);
    session.output.write(fmt::format("{}\nSeen at {}\n", listing.heading, dateAndTime(now)));
    for (std::size_t i = 0; i < listing.size(); ++i)
        session.output.write(assetText((*listing.assets)[i], size));
    return ExitStatus::success;
}

}  // namespace

void addListCommand(CommandLine& commandLine) {
    commandLine.add<Options>("list",
                             "[FILE] [--size WxH] [--screen-scale S] [--at EPOCH]",
                             "A page of assets, an editorial or a season as the listing screen would show it",
                             declare,
                             run);
}

}  // namespace QELModels::tool
