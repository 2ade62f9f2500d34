#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "QELModels/Platform/Color.h"
#include "QELModels/Platform/Date.h"
#include "QELModels/Platform/Number.h"
#include "QELModels/Platform/QELAssetEnumerations.h"
#include "QELModels/Platform/URL.h"

/// The records as an application would write them by hand: plain structures that own what they hold, nested
/// records in place, null apart from empty. `Raw` is how a parser keeps a sub-tree that nobody looks into.
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

private:
    T value_{};
};

template <class T>
using Maybe = Held<std::optional<T>>;

struct Chapter {
    Maybe<std::string> title;
    Maybe<std::string> chapterDescription;
    Maybe<Number> timeline;
    Held<bool> featured;
};

struct CuePoint {
    Maybe<Number> timeline;
};

struct Lead {
    Maybe<Number> assetLeadIdentifier;
};

struct Series {
    Maybe<Number> seasonNumber;
    Maybe<Number> episodeNumber;
};

struct Images {
    Maybe<URL> main;
    Maybe<URL> front;
    Maybe<URL> featured;
    Maybe<URL> snapshots;
};

struct StreamUrls {
    Maybe<URL> hls;
    Maybe<URL> hds;
    Maybe<URL> mp4;
};

template <class Raw>
struct StreamConfiguration {
    Maybe<Raw> properties;
};

struct FlightTimes {
    Maybe<Date> flightStart;
    Maybe<Date> flightEnd;
};

struct Subtitle {
    Maybe<std::string> language;
    Maybe<URL> url;
    Held<bool> isDefault;
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
};

struct PlayerBranding {
    Maybe<Number> playerBrandingIdentifier;
    Maybe<URL> playerBackground;
    Maybe<URL> link;
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
};

struct LastAsset {
    Maybe<Number> lastAssetIdentifier;
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
};

/// What a document gives: one asset, held in place, or those of a page.
template <class Raw>
struct Assets {
    std::optional<Asset<Raw>> single;
    std::vector<Asset<Raw>> page;
};

}  // namespace QELModels::bench
