#pragma once

#include <optional>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "QELModels/Functions/QELAssetEnumerations.h"
#include "QELModels/Values/Color.h"
#include "QELModels/Values/Date.h"
#include "QELModels/Values/Number.h"
#include "QELModels/Values/URL.h"

/// The records as an application would write them by hand: plain structures that own what they hold, nested
/// records in place, null apart from empty. `Raw` is how a parser keeps a sub-tree that nobody looks into.
/// `compared` lists what makes two of them equal.
namespace QELModels::bench {

/// A field that is read by a call, as the library's are, so that one digest serves both.
template <class T>
class Held {
public:
    Held() = default;
    Held& operator=(T&& value) {
        value_ = std::move(value);
        return *this;
    }
    const T& operator()() const { return value_; }
    /// To fill a nested record where it stands.
    T& place() { return value_; }

    friend bool operator==(const Held&, const Held&) = default;

private:
    T value_{};
};

template <class T>
using Maybe = Held<std::optional<T>>;

template <class Record>
requires requires(const Record& record) {
    record.compared();
}
bool operator==(const Record& a, const Record& b) {
    return a.compared() == b.compared();
}

struct Chapter {
    Maybe<std::string> title;
    Maybe<std::string> chapterDescription;
    Maybe<Number> timeline;
    Held<bool> featured;

    auto compared() const { return std::tie(title, chapterDescription, timeline, featured); }
};

struct CuePoint {
    Maybe<Number> timeline;

    auto compared() const { return std::tie(timeline); }
};

struct Lead {
    Maybe<Number> assetLeadIdentifier;

    auto compared() const { return std::tie(assetLeadIdentifier); }
};

struct Series {
    Maybe<Number> seasonNumber;
    Maybe<Number> episodeNumber;

    auto compared() const { return std::tie(seasonNumber, episodeNumber); }
};

struct Images {
    Maybe<URL> main;
    Maybe<URL> front;
    Maybe<URL> featured;
    Maybe<URL> snapshots;

    auto compared() const { return std::tie(main, front, featured, snapshots); }
};

struct StreamUrls {
    Maybe<URL> hls;
    Maybe<URL> hds;
    Maybe<URL> mp4;

    auto compared() const { return std::tie(hls, hds, mp4); }
};

template <class Raw>
struct StreamConfiguration {
    Maybe<Raw> properties;

    auto compared() const { return std::tie(properties); }
};

struct FlightTimes {
    Maybe<Date> flightStart;
    Maybe<Date> flightEnd;

    auto compared() const { return std::tie(flightStart, flightEnd); }
};

struct Subtitle {
    Maybe<std::string> language;
    Maybe<URL> url;
    Held<bool> isDefault;

    auto compared() const { return std::tie(language, url, isDefault); }
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

    auto compared() const {
        return std::tie(showAds,
                        showEmbed,
                        showComments,
                        tonoRegistered,
                        createdBy,
                        lastEditedBy,
                        source,
                        notes,
                        showInNewest,
                        loopGeneratorEnabled,
                        escenicId,
                        playhead,
                        startIndexPoint,
                        ageLimit);
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

    auto compared() const {
        return std::tie(settings,
                        barrels,
                        featuredChapters,
                        chapters,
                        cuePoints,
                        sourceFiles,
                        externalCategoryIdentifier,
                        externalIdentifier,
                        nextAsset,
                        metadata,
                        access,
                        subtitles,
                        imageCaption,
                        url);
    }
};

struct PlayerBranding {
    Maybe<Number> playerBrandingIdentifier;
    Maybe<URL> playerBackground;
    Maybe<URL> link;

    auto compared() const { return std::tie(playerBrandingIdentifier, playerBackground, link); }
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

    auto compared() const {
        return std::tie(categoryDescription,
                        image,
                        isImageUploaded,
                        logo,
                        background,
                        backgroundColor,
                        playerLogoImage,
                        showEndPoster,
                        showComments,
                        allowAllDevices,
                        playerBranding,
                        adCampaignIdentifier,
                        autoPlayNextAsset,
                        notificationMailEnabled);
    }
};

struct LastAsset {
    Maybe<Number> lastAssetIdentifier;

    auto compared() const { return std::tie(lastAssetIdentifier); }
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

    auto compared() const {
        return std::tie(categoryIdentifier,
                        title,
                        parentIdentifier,
                        showCategory,
                        isSeries,
                        order,
                        ageLimit,
                        stats,
                        lastAsset,
                        additional);
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

    auto compared() const {
        return std::tie(assetIdentifier,
                        title,
                        titleFront,
                        assetDescription,
                        assetDescriptionFront,
                        flightTimes,
                        duration,
                        assetType,
                        streamType,
                        status,
                        series,
                        streamConfiguration,
                        articleUrl,
                        category,
                        images,
                        streamUrls,
                        assetAdditional);
    }
};

/// What a document gives: one asset, held in place, or those of a page.
template <class Raw>
struct Assets {
    std::optional<Asset<Raw>> single;
    std::vector<Asset<Raw>> page;
};

}  // namespace QELModels::bench
