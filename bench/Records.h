#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <vector>

#include "Members.h"
#include "QELModels/Functions/QELAssetEnumerations.h"
#include "QELModels/Values/Color.h"
#include "QELModels/Values/Date.h"
#include "QELModels/Values/Number.h"
#include "QELModels/Values/URL.h"

/// The records as an application would write them by hand: plain structures that own what they hold, nested
/// records in place, null apart from empty. `Raw` is how a parser keeps a sub-tree that nobody looks into.
///
/// A new property of the library needs a member and an entry of `members` here, and nothing else in the
/// benchmark. `--check` fails as long as one is missing.
namespace QELModels::bench {

struct Chapter {
    Maybe<std::string> title;
    Maybe<std::string> chapterDescription;
    Maybe<Number> timeline;
    Held<bool> featured;

    static constexpr auto members() {
        return std::tuple(
            member("title", &Chapter::title).cleaned(),
            member("chapterDescription", &Chapter::chapterDescription).from("description").cleaned(),
            member("timeline", &Chapter::timeline),
            member("featured", &Chapter::featured));
    }
};

struct CuePoint {
    Maybe<Number> timeline;

    static constexpr auto members() { return std::tuple(member("timeline", &CuePoint::timeline)); }
};

struct Lead {
    Maybe<Number> assetLeadIdentifier;

    static constexpr auto members() {
        return std::tuple(member("assetLeadIdentifier", &Lead::assetLeadIdentifier).from("id"));
    }
};

struct Series {
    Maybe<Number> seasonNumber;
    Maybe<Number> episodeNumber;

    static constexpr auto members() {
        return std::tuple(member("seasonNumber", &Series::seasonNumber),
                          member("episodeNumber", &Series::episodeNumber));
    }
};

struct Images {
    Maybe<URL> main;
    Maybe<URL> front;
    Maybe<URL> featured;
    Maybe<URL> snapshots;

    static constexpr auto members() {
        return std::tuple(member("main", &Images::main),
                          member("front", &Images::front),
                          member("featured", &Images::featured),
                          member("snapshots", &Images::snapshots));
    }
};

struct StreamUrls {
    Maybe<URL> hls;
    Maybe<URL> hds;
    Maybe<URL> mp4;

    static constexpr auto members() {
        return std::tuple(member("hls", &StreamUrls::hls),
                          member("hds", &StreamUrls::hds),
                          member("mp4", &StreamUrls::mp4));
    }
};

template <class Raw>
struct StreamConfiguration {
    Maybe<Raw> properties;

    static constexpr auto members() {
        return std::tuple(member("properties", &StreamConfiguration::properties).array());
    }
};

struct FlightTimes {
    Maybe<Date> flightStart;
    Maybe<Date> flightEnd;

    static constexpr auto members() {
        return std::tuple(member("flightStart", &FlightTimes::flightStart).from("start"),
                          member("flightEnd", &FlightTimes::flightEnd).from("end"));
    }
};

struct Subtitle {
    Maybe<std::string> language;
    Maybe<URL> url;
    Held<bool> isDefault;

    static constexpr auto members() {
        return std::tuple(member("language", &Subtitle::language),
                          member("url", &Subtitle::url),
                          member("isDefault", &Subtitle::isDefault).from("default"));
    }
};

struct Settings {
    Held<bool> showAds;
    Held<bool> showEmbed;
    Held<bool> showComments;
    Held<bool> tonoRegistered;
    Maybe<std::string> createdBy;
    Maybe<std::string> lastEditedBy;
    Maybe<Number> source;
    Maybe<std::string> notes;
    Held<bool> showInNewest;
    Held<bool> loopGeneratorEnabled;
    Maybe<std::string> escenicId;
    Maybe<Number> playhead;
    Maybe<Number> startIndexPoint;
    Maybe<Number> ageLimit;

    static constexpr auto members() {
        return std::tuple(member("showAds", &Settings::showAds),
                          member("showEmbed", &Settings::showEmbed),
                          member("showComments", &Settings::showComments),
                          member("tonoRegistered", &Settings::tonoRegistered),
                          member("createdBy", &Settings::createdBy),
                          member("lastEditedBy", &Settings::lastEditedBy),
                          member("source", &Settings::source),
                          member("notes", &Settings::notes),
                          member("showInNewest", &Settings::showInNewest),
                          member("loopGeneratorEnabled", &Settings::loopGeneratorEnabled),
                          member("escenicId", &Settings::escenicId),
                          member("playhead", &Settings::playhead),
                          member("startIndexPoint", &Settings::startIndexPoint),
                          member("ageLimit", &Settings::ageLimit));
    }
};

template <class Raw>
struct Additional {
    Maybe<Settings> settings;
    Maybe<Raw> barrels;
    Maybe<std::vector<Chapter>> featuredChapters;
    Maybe<std::vector<Chapter>> chapters;
    Maybe<std::vector<CuePoint>> cuePoints;
    Maybe<Raw> sourceFiles;
    Maybe<Number> externalCategoryIdentifier;
    Maybe<std::string> externalIdentifier;
    Maybe<Lead> nextAsset;
    Maybe<Raw> metadata;
    Maybe<Raw> access;
    Maybe<std::vector<Subtitle>> subtitles;
    Maybe<Raw> imageCaption;
    Maybe<std::string> url;

    static constexpr auto members() {
        return std::tuple(member("settings", &Additional::settings),
                          member("barrels", &Additional::barrels).array(),
                          member("featuredChapters", &Additional::featuredChapters),
                          member("chapters", &Additional::chapters),
                          member("cuePoints", &Additional::cuePoints),
                          member("sourceFiles", &Additional::sourceFiles).array(),
                          member("externalCategoryIdentifier", &Additional::externalCategoryIdentifier)
                              .from("externalCategoryId"),
                          member("externalIdentifier", &Additional::externalIdentifier).from("externalId"),
                          member("nextAsset", &Additional::nextAsset),
                          member("metadata", &Additional::metadata).dictionary(),
                          member("access", &Additional::access).dictionary(),
                          member("subtitles", &Additional::subtitles),
                          member("imageCaption", &Additional::imageCaption).dictionary(),
                          member("url", &Additional::url));
    }
};

struct PlayerBranding {
    Maybe<Number> playerBrandingIdentifier;
    Maybe<URL> playerBackground;
    Maybe<URL> link;

    static constexpr auto members() {
        return std::tuple(
            member("playerBrandingIdentifier", &PlayerBranding::playerBrandingIdentifier).from("id"),
            member("playerBackground", &PlayerBranding::playerBackground),
            member("link", &PlayerBranding::link));
    }
};

struct CategoryAdditional {
    Maybe<std::string> categoryDescription;
    Maybe<URL> image;
    Held<bool> isImageUploaded;
    Maybe<URL> logo;
    Maybe<URL> background;
    Maybe<Color> backgroundColor;
    Maybe<std::string> playerLogoImage;
    Held<bool> showEndPoster;
    Held<bool> showComments;
    Held<bool> allowAllDevices;
    Maybe<PlayerBranding> playerBranding;
    Maybe<std::string> adCampaignIdentifier;
    Held<bool> autoPlayNextAsset;
    Held<bool> notificationMailEnabled;

    /// Properties that the library declares and no mapping fills.
    static constexpr std::array<std::string_view, 2> kNeverFilled{"assets", "showPlayerLogo"};

    static constexpr auto members() {
        return std::tuple(
            member("categoryDescription", &CategoryAdditional::categoryDescription)
                .from("description")
                .cleaned(),
            member("image", &CategoryAdditional::image),
            member("isImageUploaded", &CategoryAdditional::isImageUploaded),
            member("logo", &CategoryAdditional::logo),
            member("background", &CategoryAdditional::background),
            member("backgroundColor", &CategoryAdditional::backgroundColor),
            member("playerLogoImage", &CategoryAdditional::playerLogoImage),
            member("showEndPoster", &CategoryAdditional::showEndPoster),
            member("showComments", &CategoryAdditional::showComments),
            member("allowAllDevices", &CategoryAdditional::allowAllDevices),
            member("playerBranding", &CategoryAdditional::playerBranding),
            member("adCampaignIdentifier", &CategoryAdditional::adCampaignIdentifier).from("adCampaignId"),
            member("autoPlayNextAsset", &CategoryAdditional::autoPlayNextAsset),
            member("notificationMailEnabled", &CategoryAdditional::notificationMailEnabled));
    }
};

struct LastAsset {
    Maybe<Number> lastAssetIdentifier;

    static constexpr auto members() {
        return std::tuple(member("lastAssetIdentifier", &LastAsset::lastAssetIdentifier).from("id"));
    }
};

struct Category {
    Maybe<Number> categoryIdentifier;
    Maybe<std::string> title;
    Maybe<Number> parentIdentifier;
    Held<bool> showCategory;
    Held<bool> isSeries;
    Maybe<Number> order;
    Maybe<Number> ageLimit;
    Maybe<std::string> stats;
    Maybe<LastAsset> lastAsset;
    Maybe<CategoryAdditional> additional;

    static constexpr auto members() {
        return std::tuple(member("categoryIdentifier", &Category::categoryIdentifier).from("id"),
                          member("title", &Category::title).cleaned(),
                          member("parentIdentifier", &Category::parentIdentifier).from("parentId"),
                          member("showCategory", &Category::showCategory),
                          member("isSeries", &Category::isSeries),
                          member("order", &Category::order),
                          member("ageLimit", &Category::ageLimit),
                          member("stats", &Category::stats),
                          member("lastAsset", &Category::lastAsset),
                          member("additional", &Category::additional));
    }
};

template <class Raw>
struct Asset {
    Maybe<Number> assetIdentifier;
    Maybe<std::string> title;
    Maybe<std::string> titleFront;
    Maybe<std::string> assetDescription;
    Maybe<std::string> assetDescriptionFront;
    Maybe<Number> displays;
    Held<bool> showDisplays;
    Maybe<Date> createdAt;
    Maybe<Date> updatedAt;
    Maybe<Date> publishedAt;
    Maybe<FlightTimes> flightTimes;
    Maybe<Number> duration;
    Held<QELAssetType> assetType;
    Held<QELStreamType> streamType;
    Maybe<std::string> status;
    Maybe<Series> series;
    Maybe<StreamConfiguration<Raw>> streamConfiguration;
    Maybe<URL> articleUrl;
    Maybe<Category> category;
    Maybe<Images> images;
    Maybe<StreamUrls> streamUrls;
    Maybe<Additional<Raw>> assetAdditional;

    static constexpr auto members() {
        return std::tuple(
            member("assetIdentifier", &Asset::assetIdentifier).from("id"),
            member("title", &Asset::title).cleaned(),
            member("titleFront", &Asset::titleFront).cleaned(),
            member("assetDescription", &Asset::assetDescription).from("description").cleaned(),
            member("assetDescriptionFront", &Asset::assetDescriptionFront).from("descriptionFront").cleaned(),
            member("displays", &Asset::displays).notCompared(),
            member("showDisplays", &Asset::showDisplays).notCompared(),
            member("createdAt", &Asset::createdAt).from("created").notCompared(),
            member("updatedAt", &Asset::updatedAt).from("updated").notCompared(),
            member("publishedAt", &Asset::publishedAt).from("published").notCompared(),
            member("flightTimes", &Asset::flightTimes),
            member("duration", &Asset::duration),
            member("assetType", &Asset::assetType),
            member("streamType", &Asset::streamType),
            member("status", &Asset::status),
            member("series", &Asset::series),
            member("streamConfiguration", &Asset::streamConfiguration),
            member("articleUrl", &Asset::articleUrl),
            member("category", &Asset::category),
            member("images", &Asset::images),
            member("streamUrls", &Asset::streamUrls),
            member("assetAdditional", &Asset::assetAdditional).from("additional"));
    }
};

/// The result of reading a document: one asset, held in place, or the assets of a page.
template <class Raw>
struct Assets {
    std::optional<Asset<Raw>> single;
    std::vector<Asset<Raw>> page;
};

}  // namespace QELModels::bench
