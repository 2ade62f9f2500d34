#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

#include "QELModels/Platform/detail/Hash.h"
#include "QELModels/Values/Color.h"
#include "QELModels/Values/Date.h"
#include "QELModels/Values/Number.h"
#include "QELModels/Values/URL.h"

namespace QELModels::bench {

/// What two ways of filling an asset must agree on: every field in declaration order, null apart from empty,
/// texts and URLs by their bytes, numbers and dates by their double, a sub-tree that nobody looks into by its
/// number of elements.
class Digest {
public:
    std::uint64_t value() const noexcept { return value_; }

    void add(bool flag) noexcept { word(flag ? 1 : 0); }
    void add(double number) noexcept { word(std::bit_cast<std::uint64_t>(number)); }
    void add(Number number) noexcept { add(number.doubleValue()); }
    void add(Date date) noexcept { add(secondsSince1970(date)); }
    void add(std::string_view text) noexcept { word(detail::hashOfText(text)); }
    void add(const URL& url) noexcept { add(url.text()); }
    void add(URLView url) noexcept { add(url.text()); }
    void add(const Color& color) noexcept {
        for (const double component : {color.red, color.green, color.blue, color.alpha})
            add(component);
    }
    template <class Enumeration>
    requires std::is_enum_v<Enumeration>
    void add(Enumeration value) noexcept { word(static_cast<std::uint64_t>(value)); }
    template <class T>
    void add(const std::optional<T>& field) {
        if (present(field.has_value())) add(*field);
    }

    /// A nested record, held in place or lent by pointer; `addRecord` adds its fields.
    template <class Field, class AddRecord>
    void record(const Field& field, AddRecord addRecord) {
        if (present(static_cast<bool>(field))) addRecord(*this, *field);
    }
    template <class Field, class AddRecord>
    void list(const Field& field, AddRecord addRecord) {
        if (!present(static_cast<bool>(field))) return;
        word(field->size());
        for (const auto& element : *field)
            addRecord(*this, element);
    }
    /// A sub-tree knows its size, or a `countElements` stands beside its type.
    template <class Field>
    void raw(const Field& field) {
        if (!present(static_cast<bool>(field))) return;
        if constexpr (requires { field->size(); }) {
            word(field->size());
        } else {
            word(countElements(*field));
        }
    }

private:
    bool present(bool is) noexcept {
        word(is ? 0x5EED : 0x0FF);
        return is;
    }
    void word(std::uint64_t word) noexcept { value_ = detail::hashOfWord(value_ * 31 + word); }

    std::uint64_t value_ = 0;
};

/// The fields of every record, for records of the library and for those written by hand.
namespace fields {

inline constexpr auto chapter = [](Digest& to, const auto& from) {
    to.add(from.title());
    to.add(from.chapterDescription());
    to.add(from.timeline());
    to.add(from.featured());
};

inline constexpr auto cuePoint = [](Digest& to, const auto& from) { to.add(from.timeline()); };

inline constexpr auto lead = [](Digest& to, const auto& from) { to.add(from.assetLeadIdentifier()); };

inline constexpr auto series = [](Digest& to, const auto& from) {
    to.add(from.seasonNumber());
    to.add(from.episodeNumber());
};

inline constexpr auto images = [](Digest& to, const auto& from) {
    to.add(from.main());
    to.add(from.front());
    to.add(from.featured());
    to.add(from.snapshots());
};

inline constexpr auto streamUrls = [](Digest& to, const auto& from) {
    to.add(from.hls());
    to.add(from.hds());
    to.add(from.mp4());
};

inline constexpr auto streamConfiguration = [](Digest& to, const auto& from) { to.raw(from.properties()); };

inline constexpr auto flightTimes = [](Digest& to, const auto& from) {
    to.add(from.flightStart());
    to.add(from.flightEnd());
};

inline constexpr auto subtitle = [](Digest& to, const auto& from) {
    to.add(from.language());
    to.add(from.url());
    to.add(from.isDefault());
};

inline constexpr auto settings = [](Digest& to, const auto& from) {
    to.add(from.showAds());
    to.add(from.showEmbed());
    to.add(from.showComments());
    to.add(from.tonoRegistered());
    to.add(from.createdBy());
    to.add(from.lastEditedBy());
    to.add(from.source());
    to.add(from.notes());
    to.add(from.showInNewest());
    to.add(from.loopGeneratorEnabled());
    to.add(from.escenicId());
    to.add(from.playhead());
    to.add(from.startIndexPoint());
    to.add(from.ageLimit());
};

inline constexpr auto additional = [](Digest& to, const auto& from) {
    to.record(from.settings(), settings);
    to.raw(from.barrels());
    to.list(from.featuredChapters(), chapter);
    to.list(from.chapters(), chapter);
    to.list(from.cuePoints(), cuePoint);
    to.raw(from.sourceFiles());
    to.add(from.externalCategoryIdentifier());
    to.add(from.externalIdentifier());
    to.record(from.nextAsset(), lead);
    to.raw(from.metadata());
    to.raw(from.access());
    to.list(from.subtitles(), subtitle);
    to.raw(from.imageCaption());
    to.add(from.url());
};

inline constexpr auto playerBranding = [](Digest& to, const auto& from) {
    to.add(from.playerBrandingIdentifier());
    to.add(from.playerBackground());
    to.add(from.link());
};

// `assets` and `showPlayerLogo` are left out: no mapping fills them.
inline constexpr auto categoryAdditional = [](Digest& to, const auto& from) {
    to.add(from.categoryDescription());
    to.add(from.image());
    to.add(from.isImageUploaded());
    to.add(from.logo());
    to.add(from.background());
    to.add(from.backgroundColor());
    to.add(from.playerLogoImage());
    to.add(from.showEndPoster());
    to.add(from.showComments());
    to.add(from.allowAllDevices());
    to.record(from.playerBranding(), playerBranding);
    to.add(from.adCampaignIdentifier());
    to.add(from.autoPlayNextAsset());
    to.add(from.notificationMailEnabled());
};

inline constexpr auto lastAsset = [](Digest& to, const auto& from) { to.add(from.lastAssetIdentifier()); };

inline constexpr auto category = [](Digest& to, const auto& from) {
    to.add(from.categoryIdentifier());
    to.add(from.title());
    to.add(from.parentIdentifier());
    to.add(from.showCategory());
    to.add(from.isSeries());
    to.add(from.order());
    to.add(from.ageLimit());
    to.add(from.stats());
    to.record(from.lastAsset(), lastAsset);
    to.record(from.additional(), categoryAdditional);
};

inline constexpr auto asset = [](Digest& to, const auto& from) {
    to.add(from.assetIdentifier());
    to.add(from.title());
    to.add(from.titleFront());
    to.add(from.assetDescription());
    to.add(from.assetDescriptionFront());
    to.add(from.displays());
    to.add(from.showDisplays());
    to.add(from.createdAt());
    to.add(from.updatedAt());
    to.add(from.publishedAt());
    to.record(from.flightTimes(), flightTimes);
    to.add(from.duration());
    to.add(from.assetType());
    to.add(from.streamType());
    to.add(from.status());
    to.record(from.series(), series);
    to.record(from.streamConfiguration(), streamConfiguration);
    to.add(from.articleUrl());
    to.record(from.category(), category);
    to.record(from.images(), images);
    to.record(from.streamUrls(), streamUrls);
    to.record(from.assetAdditional(), additional);
};

}  // namespace fields

/// The digest of a page's assets, or of one.
template <class List>
std::uint64_t digestOfPage(const List& assets) {
    Digest digest;
    for (const auto& asset : assets)
        fields::asset(digest, asset);
    return digest.value();
}
template <class Asset>
std::uint64_t digestOfAsset(const Asset& asset) {
    Digest digest;
    fields::asset(digest, asset);
    return digest.value();
}

}  // namespace QELModels::bench
