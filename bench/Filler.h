#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "KeyTable.h"
#include "QELModels/Categories/NSString+HTMLRemoval.h"
#include "QELModels/Categories/UIColor+QELUtils.h"
#include "Records.h"

namespace QELModels::bench {

/// Fills the records in one pass over the members of each dictionary. A `Reader` says how a parser's values
/// are looked into; each of its functions is small enough to be inlined, so that the code for each parser is
/// what one would have written for it alone:
///
///     using Node = ...; using Raw = ...;
///     static bool members(Node&, f);                     // f(key, value&) for each; false: not a dictionary
///     static bool elements(Node&, f);                    // f(value&) for each; false: not an array
///     static std::optional<std::string_view> text(Node&);
///     static std::optional<Number> number(Node&);        // booleans included
///     static bool flag(Node&);
///     static std::optional<Raw> rawArray(Node&);
///     static std::optional<Raw> rawDictionary(Node&);
template <class Reader>
class Filler {
    using Node = typename Reader::Node;
    using Raw = typename Reader::Raw;

public:
    static void asset(Node& node, Asset<Raw>& to) {
        Reader::members(node, [&](std::string_view key, Node& value) { member(to, key, value); });
    }

    /// Appends an asset for each element; nothing is appended for a value that is no list.
    static void assets(Node& list, std::vector<Asset<Raw>>& to) {
        Reader::elements(list, [&](Node& element) { asset(element, to.emplace_back()); });
    }

private:
    // What a value becomes.

    static std::optional<std::string> text(Node& node) {
        const auto value = Reader::text(node);
        if (!value) return std::nullopt;
        return std::string(*value);
    }

    static std::optional<std::string> cleaned(Node& node) {
        const auto value = Reader::text(node);
        if (!value) return std::nullopt;
        return HTMLRemoval::withoutHTMLTags(*value);
    }

    static std::optional<URL> url(Node& node) {
        const auto value = Reader::text(node);
        if (!value) return std::nullopt;
        const auto view = URLView::parse(*value);
        if (!view) return std::nullopt;
        return URL(*view);
    }

    static std::optional<Date> date(Node& node) {
        const auto value = Reader::number(node);
        if (!value) return std::nullopt;
        return dateFromSecondsSince1970(value->doubleValue());
    }

    static std::optional<Color> color(Node& node) {
        const auto value = Reader::text(node);
        if (!value) return std::nullopt;
        return QELUtils::colorFromRGBHexString(*value);
    }

    static QELAssetType assetType(Node& node) {
        return Reader::text(node) == "audio" ? QELAssetTypeAudio : QELAssetTypeVideo;
    }

    static QELStreamType streamType(Node& node) {
        const auto value = Reader::text(node);
        if (value == "live") return QELStreamTypeLive;
        return value == "wasLive" ? QELStreamTypeWasLive : QELStreamTypeVod;
    }

    template <class Record>
    static void one(Maybe<Record>& field, Node& node) {
        Record& record = field.place().emplace();
        const bool isDictionary =
            Reader::members(node, [&](std::string_view key, Node& value) { member(record, key, value); });
        if (!isDictionary) field.place().reset();
    }

    template <class Record>
    static void many(Maybe<std::vector<Record>>& field, Node& node) {
        constexpr std::size_t kUsualCount = 4;
        std::vector<Record>& records = field.place().emplace();
        const bool isArray = Reader::elements(node, [&](Node& element) {
            if (records.empty()) records.reserve(kUsualCount);
            Record& record = records.emplace_back();
            Reader::members(element, [&](std::string_view key, Node& value) { member(record, key, value); });
        });
        if (!isArray) field.place().reset();
    }

    // What each record takes from a dictionary.

    static void member(Chapter& record, std::string_view key, Node& value) {
        static constexpr auto kKeys = keyTable("title", "description", "timeline", "featured");
        switch (kKeys.find(key)) {
            case kKeys.at("title"):
                record.title = cleaned(value);
                break;
            case kKeys.at("description"):
                record.chapterDescription = cleaned(value);
                break;
            case kKeys.at("timeline"):
                record.timeline = Reader::number(value);
                break;
            case kKeys.at("featured"):
                record.featured = Reader::flag(value);
                break;
            default:
                break;
        }
    }

    static void member(CuePoint& record, std::string_view key, Node& value) {
        if (key == "timeline") record.timeline = Reader::number(value);
    }

    static void member(Lead& record, std::string_view key, Node& value) {
        if (key == "id") record.assetLeadIdentifier = Reader::number(value);
    }

    static void member(LastAsset& record, std::string_view key, Node& value) {
        if (key == "id") record.lastAssetIdentifier = Reader::number(value);
    }

    static void member(Series& record, std::string_view key, Node& value) {
        if (key == "seasonNumber") record.seasonNumber = Reader::number(value);
        if (key == "episodeNumber") record.episodeNumber = Reader::number(value);
    }

    static void member(FlightTimes& record, std::string_view key, Node& value) {
        if (key == "start") record.flightStart = date(value);
        if (key == "end") record.flightEnd = date(value);
    }

    static void member(StreamConfiguration<Raw>& record, std::string_view key, Node& value) {
        if (key == "properties") record.properties = Reader::rawArray(value);
    }

    static void member(Images& record, std::string_view key, Node& value) {
        static constexpr auto kKeys = keyTable("main", "front", "featured", "snapshots");
        switch (kKeys.find(key)) {
            case kKeys.at("main"):
                record.main = url(value);
                break;
            case kKeys.at("front"):
                record.front = url(value);
                break;
            case kKeys.at("featured"):
                record.featured = url(value);
                break;
            case kKeys.at("snapshots"):
                record.snapshots = url(value);
                break;
            default:
                break;
        }
    }

    static void member(StreamUrls& record, std::string_view key, Node& value) {
        if (key == "hls") record.hls = url(value);
        if (key == "hds") record.hds = url(value);
        if (key == "mp4") record.mp4 = url(value);
    }

    static void member(Subtitle& record, std::string_view key, Node& value) {
        if (key == "language") record.language = text(value);
        if (key == "url") record.url = url(value);
        if (key == "default") record.isDefault = Reader::flag(value);
    }

    static void member(PlayerBranding& record, std::string_view key, Node& value) {
        if (key == "id") record.playerBrandingIdentifier = Reader::number(value);
        if (key == "playerBackground") record.playerBackground = url(value);
        if (key == "link") record.link = url(value);
    }

    static void member(Settings& record, std::string_view key, Node& value) {
        static constexpr auto kKeys = keyTable("showAds",
                                               "showEmbed",
                                               "showComments",
                                               "tonoRegistered",
                                               "createdBy",
                                               "lastEditedBy",
                                               "source",
                                               "notes",
                                               "showInNewest",
                                               "loopGeneratorEnabled",
                                               "escenicId",
                                               "playhead",
                                               "startIndexPoint",
                                               "ageLimit");
        switch (kKeys.find(key)) {
            case kKeys.at("showAds"):
                record.showAds = Reader::flag(value);
                break;
            case kKeys.at("showEmbed"):
                record.showEmbed = Reader::flag(value);
                break;
            case kKeys.at("showComments"):
                record.showComments = Reader::flag(value);
                break;
            case kKeys.at("tonoRegistered"):
                record.tonoRegistered = Reader::flag(value);
                break;
            case kKeys.at("createdBy"):
                record.createdBy = text(value);
                break;
            case kKeys.at("lastEditedBy"):
                record.lastEditedBy = text(value);
                break;
            case kKeys.at("source"):
                record.source = Reader::number(value);
                break;
            case kKeys.at("notes"):
                record.notes = text(value);
                break;
            case kKeys.at("showInNewest"):
                record.showInNewest = Reader::flag(value);
                break;
            case kKeys.at("loopGeneratorEnabled"):
                record.loopGeneratorEnabled = Reader::flag(value);
                break;
            case kKeys.at("escenicId"):
                record.escenicId = text(value);
                break;
            case kKeys.at("playhead"):
                record.playhead = Reader::number(value);
                break;
            case kKeys.at("startIndexPoint"):
                record.startIndexPoint = Reader::number(value);
                break;
            case kKeys.at("ageLimit"):
                record.ageLimit = Reader::number(value);
                break;
            default:
                break;
        }
    }

    static void member(Additional<Raw>& record, std::string_view key, Node& value) {
        static constexpr auto kKeys = keyTable("settings",
                                               "barrels",
                                               "featuredChapters",
                                               "chapters",
                                               "cuePoints",
                                               "sourceFiles",
                                               "externalCategoryId",
                                               "externalId",
                                               "nextAsset",
                                               "metadata",
                                               "access",
                                               "subtitles",
                                               "imageCaption",
                                               "url");
        switch (kKeys.find(key)) {
            case kKeys.at("settings"):
                one(record.settings, value);
                break;
            case kKeys.at("barrels"):
                record.barrels = Reader::rawArray(value);
                break;
            case kKeys.at("featuredChapters"):
                many(record.featuredChapters, value);
                break;
            case kKeys.at("chapters"):
                many(record.chapters, value);
                break;
            case kKeys.at("cuePoints"):
                many(record.cuePoints, value);
                break;
            case kKeys.at("sourceFiles"):
                record.sourceFiles = Reader::rawArray(value);
                break;
            case kKeys.at("externalCategoryId"):
                record.externalCategoryIdentifier = Reader::number(value);
                break;
            case kKeys.at("externalId"):
                record.externalIdentifier = text(value);
                break;
            case kKeys.at("nextAsset"):
                one(record.nextAsset, value);
                break;
            case kKeys.at("metadata"):
                record.metadata = Reader::rawDictionary(value);
                break;
            case kKeys.at("access"):
                record.access = Reader::rawDictionary(value);
                break;
            case kKeys.at("subtitles"):
                many(record.subtitles, value);
                break;
            case kKeys.at("imageCaption"):
                record.imageCaption = Reader::rawDictionary(value);
                break;
            case kKeys.at("url"):
                record.url = text(value);
                break;
            default:
                break;
        }
    }

    static void member(CategoryAdditional& record, std::string_view key, Node& value) {
        static constexpr auto kKeys = keyTable("description",
                                               "image",
                                               "isImageUploaded",
                                               "logo",
                                               "background",
                                               "backgroundColor",
                                               "playerLogoImage",
                                               "showEndPoster",
                                               "showComments",
                                               "allowAllDevices",
                                               "playerBranding",
                                               "adCampaignId",
                                               "autoPlayNextAsset",
                                               "notificationMailEnabled");
        switch (kKeys.find(key)) {
            case kKeys.at("description"):
                record.categoryDescription = cleaned(value);
                break;
            case kKeys.at("image"):
                record.image = url(value);
                break;
            case kKeys.at("isImageUploaded"):
                record.isImageUploaded = Reader::flag(value);
                break;
            case kKeys.at("logo"):
                record.logo = url(value);
                break;
            case kKeys.at("background"):
                record.background = url(value);
                break;
            case kKeys.at("backgroundColor"):
                record.backgroundColor = color(value);
                break;
            case kKeys.at("playerLogoImage"):
                record.playerLogoImage = text(value);
                break;
            case kKeys.at("showEndPoster"):
                record.showEndPoster = Reader::flag(value);
                break;
            case kKeys.at("showComments"):
                record.showComments = Reader::flag(value);
                break;
            case kKeys.at("allowAllDevices"):
                record.allowAllDevices = Reader::flag(value);
                break;
            case kKeys.at("playerBranding"):
                one(record.playerBranding, value);
                break;
            case kKeys.at("adCampaignId"):
                record.adCampaignIdentifier = text(value);
                break;
            case kKeys.at("autoPlayNextAsset"):
                record.autoPlayNextAsset = Reader::flag(value);
                break;
            case kKeys.at("notificationMailEnabled"):
                record.notificationMailEnabled = Reader::flag(value);
                break;
            default:
                break;
        }
    }

    static void member(Category& record, std::string_view key, Node& value) {
        static constexpr auto kKeys = keyTable("id",
                                               "title",
                                               "parentId",
                                               "showCategory",
                                               "isSeries",
                                               "order",
                                               "ageLimit",
                                               "stats",
                                               "lastAsset",
                                               "additional");
        switch (kKeys.find(key)) {
            case kKeys.at("id"):
                record.categoryIdentifier = Reader::number(value);
                break;
            case kKeys.at("title"):
                record.title = cleaned(value);
                break;
            case kKeys.at("parentId"):
                record.parentIdentifier = Reader::number(value);
                break;
            case kKeys.at("showCategory"):
                record.showCategory = Reader::flag(value);
                break;
            case kKeys.at("isSeries"):
                record.isSeries = Reader::flag(value);
                break;
            case kKeys.at("order"):
                record.order = Reader::number(value);
                break;
            case kKeys.at("ageLimit"):
                record.ageLimit = Reader::number(value);
                break;
            case kKeys.at("stats"):
                record.stats = text(value);
                break;
            case kKeys.at("lastAsset"):
                one(record.lastAsset, value);
                break;
            case kKeys.at("additional"):
                one(record.additional, value);
                break;
            default:
                break;
        }
    }

    static void member(Asset<Raw>& record, std::string_view key, Node& value) {
        static constexpr auto kKeys = keyTable("id",
                                               "title",
                                               "titleFront",
                                               "description",
                                               "descriptionFront",
                                               "displays",
                                               "showDisplays",
                                               "created",
                                               "updated",
                                               "published",
                                               "flightTimes",
                                               "duration",
                                               "assetType",
                                               "streamType",
                                               "status",
                                               "series",
                                               "streamConfiguration",
                                               "articleUrl",
                                               "category",
                                               "images",
                                               "streamUrls",
                                               "additional");
        switch (kKeys.find(key)) {
            case kKeys.at("id"):
                record.assetIdentifier = Reader::number(value);
                break;
            case kKeys.at("title"):
                record.title = cleaned(value);
                break;
            case kKeys.at("titleFront"):
                record.titleFront = cleaned(value);
                break;
            case kKeys.at("description"):
                record.assetDescription = cleaned(value);
                break;
            case kKeys.at("descriptionFront"):
                record.assetDescriptionFront = cleaned(value);
                break;
            case kKeys.at("displays"):
                record.displays = Reader::number(value);
                break;
            case kKeys.at("showDisplays"):
                record.showDisplays = Reader::flag(value);
                break;
            case kKeys.at("created"):
                record.createdAt = date(value);
                break;
            case kKeys.at("updated"):
                record.updatedAt = date(value);
                break;
            case kKeys.at("published"):
                record.publishedAt = date(value);
                break;
            case kKeys.at("flightTimes"):
                one(record.flightTimes, value);
                break;
            case kKeys.at("duration"):
                record.duration = Reader::number(value);
                break;
            case kKeys.at("assetType"):
                record.assetType = assetType(value);
                break;
            case kKeys.at("streamType"):
                record.streamType = streamType(value);
                break;
            case kKeys.at("status"):
                record.status = text(value);
                break;
            case kKeys.at("series"):
                one(record.series, value);
                break;
            case kKeys.at("streamConfiguration"):
                one(record.streamConfiguration, value);
                break;
            case kKeys.at("articleUrl"):
                record.articleUrl = url(value);
                break;
            case kKeys.at("category"):
                one(record.category, value);
                break;
            case kKeys.at("images"):
                one(record.images, value);
                break;
            case kKeys.at("streamUrls"):
                one(record.streamUrls, value);
                break;
            case kKeys.at("additional"):
                one(record.assetAdditional, value);
                break;
            default:
                break;
        }
    }
};

}  // namespace QELModels::bench
