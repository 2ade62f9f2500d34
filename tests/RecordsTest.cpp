// All 18 records keep to one contract: the properties, key paths, orders, key constants, equality and hash of
// each stand here once more, typed in, and one harness walks them all.

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "QELModels/Mapping/FEMDeserializer.h"
#include "QELModels/Models/QELEditorial.h"
#include "QELModels/Models/QELSeason.h"
#include "QELModels/Platform/detail/Hash.h"
#include "QELModels/Records/MappingFault.h"
#include "tests/TestSupport.h"

namespace QELModels::test {
namespace {

using IsEqualTo = bool (*)(const Object&, const Object*);

struct Row {
    const ObjectClass& isa;
    FEMMapping (*defaultMapping)();
    std::vector<std::string_view> constants;  // in the order of declaration
    std::string declared;                     // name:kind, of records and lists name:Class
    std::string attributes;     // property, =key path where it differs, !transformer asked of the registry at
                                // each value or ?transformer asked once, %table
    std::string relationships;  // * for lists
    std::string compared;       // names in the order of equality and hash; all: as declared; identity: none
    IsEqualTo isEqualTo = nullptr;
};

template <class Model, bool (Model::*Compare)(const Model*) const>
bool isEqualTo(const Object& a, const Object* b) {
    return (static_cast<const Model&>(a).*Compare)(static_cast<const Model*>(b));
}

template <class Model>
Row row(std::vector<std::string_view> constants,
        std::string declared,
        std::string attributes,
        std::string relationships,
        std::string compared,
        IsEqualTo compare = nullptr) {
    return {Model::objectClass,
            &Model::defaultMapping,
            std::move(constants),
            std::move(declared),
            std::move(attributes),
            std::move(relationships),
            std::move(compared),
            compare};
}

const std::vector<Row>& rows() {
    // clang-format off
    static const std::vector<Row> all{
        row<QELAsset>({kQELAssetIdentifier, kQELAssetTitle, kQELAssetTitleFront, kQELAssetDescription,
             kQELAssetDescriptionFront, kQELAssetDisplays, kQELAssetShowDisplays, kQELAssetCreated,
             kQELAssetUpdated, kQELAssetPublished, kQELAssetFlightTimes, kQELAssetDuration,
             kQELAssetAssetType, kQELAssetStreamType, kQELAssetStatus, kQELAssetSeries,
             kQELAssetStreamConfiguration, kQELAssetArticleUrl, kQELAssetCategory, kQELAssetImages,
             kQELAssetStreamUrls, kQELAssetAdditional},
            "assetIdentifier:number title:text titleFront:text assetDescription:text "
            "assetDescriptionFront:text displays:number showDisplays:boolean createdAt:date "
            "updatedAt:date publishedAt:date flightTimes:QELFlightTimes duration:number assetType:integer "
            "streamType:integer status:text series:QELAssetSeries "
            "streamConfiguration:QELStreamConfiguration articleUrl:url category:QELCategory "
            "images:QELAssetImages streamUrls:QELAssetStreamUrls assetAdditional:QELAssetAdditional ",
            "displays showDisplays duration status title!QELHTMLTransformer titleFront!QELHTMLTransformer "
            "assetType% streamType% articleUrl!QELNSURLTransformer assetIdentifier=id "
            "assetDescription=description!QELHTMLTransformer "
            "assetDescriptionFront=descriptionFront!QELHTMLTransformer "
            "createdAt=created!QELTimestampTransformer updatedAt=updated!QELTimestampTransformer "
            "publishedAt=published!QELTimestampTransformer ",
            "images streamConfiguration flightTimes streamUrls series category assetAdditional=additional ",
            "assetIdentifier title titleFront assetDescription assetDescriptionFront flightTimes duration "
            "assetType streamType status series streamConfiguration articleUrl category images streamUrls "
            "assetAdditional ", &isEqualTo<QELAsset, &QELAsset::isEqualToAsset>),
        row<QELAssetAdditional>({kQELAssetAdditionalSettings, kQELAssetAdditionalBarrels,
             kQELAssetAdditionalFeaturedChapters, kQELAssetAdditionalChapters, kQELAssetAdditionalCuePoints,
             kQELAssetAdditionalSourceFiles, kQELAssetAdditionalExternalCategoryIdentifier,
             kQELAssetAdditionalExternalIdentifier, kQELAssetAdditionalNextAsset,
             kQELAssetAdditionalMetadata, kQELAssetAdditionalAccess, kQELAssetAdditionalSubtitles,
             kQELAssetAdditionalImageCaption, kQELAssetAdditionalUrl},
            "settings:QELAssetAdditionalSettings barrels:array featuredChapters:QELAssetChapter* "
            "chapters:QELAssetChapter* cuePoints:QELAssetCuePoint* sourceFiles:array "
            "externalCategoryIdentifier:number externalIdentifier:text nextAsset:QELAssetLead "
            "metadata:dictionary access:dictionary subtitles:QELAssetAdditionalSubtitle* "
            "imageCaption:dictionary url:text ", "sourceFiles barrels imageCaption url access metadata "
            "externalCategoryIdentifier=externalCategoryId externalIdentifier=externalId ",
            "settings chapters* cuePoints* featuredChapters* subtitles* nextAsset ", "all",
            &isEqualTo<QELAssetAdditional, &QELAssetAdditional::isEqualToAdditional>),
        row<QELAssetAdditionalSettings>({kQELAssetAdditionalSettingsShowAds,
             kQELAssetAdditionalSettingsShowEmbed, kQELAssetAdditionalSettingsShowComments,
             kQELAssetAdditionalSettingsTonoRegistered, kQELAssetAdditionalSettingsCreatedBy,
             kQELAssetAdditionalSettingsLastEditedBy, kQELAssetAdditionalSettingsSource,
             kQELAssetAdditionalSettingsNotes, kQELAssetAdditionalSettingsShowInNewest,
             kQELAssetAdditionalSettingsLoopGeneratorEnabled, kQELAssetAdditionalSettingsEscenicId,
             kQELAssetAdditionalSettingsPlayhead, kQELAssetAdditionalSettingsStartIndexPoint,
             kQELAssetAdditionalSettingsAgeLimit},
            "showAds:boolean showEmbed:boolean showComments:boolean tonoRegistered:boolean createdBy:text "
            "lastEditedBy:text source:number notes:text showInNewest:boolean loopGeneratorEnabled:boolean "
            "escenicId:text playhead:number startIndexPoint:number ageLimit:number ",
            "lastEditedBy showEmbed escenicId showInNewest source startIndexPoint notes showAds createdBy "
            "showComments loopGeneratorEnabled playhead tonoRegistered ageLimit ", "", "all",
            &isEqualTo<QELAssetAdditionalSettings, &QELAssetAdditionalSettings::isEqualToSettings>),
        row<QELAssetAdditionalSubtitle>({kQELAssetAdditionalSubtitleLanguage, kQELAssetAdditionalSubtitleURL,
             kQELAssetAdditionalSubtitleIsDefault}, "language:text url:url isDefault:boolean ",
            "language url?QELNSURLTransformer isDefault=default ", "", "all",
            &isEqualTo<QELAssetAdditionalSubtitle, &QELAssetAdditionalSubtitle::isEqualToSubtitle>),
        row<QELAssetChapter>({kQELChaptersTitle, kQELChaptersDescription, kQELChaptersTimeline,
             kQELChaptersFeatured}, "title:text chapterDescription:text timeline:number featured:boolean ",
            "timeline featured title?QELHTMLTransformer chapterDescription=description?QELHTMLTransformer ",
            "", "identity all", &isEqualTo<QELAssetChapter, &QELAssetChapter::isEqualToChapter>),
        row<QELAssetCuePoint>({kQELCuePointsTimeline}, "timeline:number ", "timeline ", "", "identity"),
        row<QELAssetLead>({kQELAssetLeadIdentifier}, "assetLeadIdentifier:number ",
            "assetLeadIdentifier=id ", "", "identity"),
        row<QELAssetSeries>({kQELAssetSeriesSeasonNumber, kQELAssetSeriesEpisodeNumber},
            "seasonNumber:number episodeNumber:number ", "episodeNumber seasonNumber ", "", "identity"),
        row<QELAssetImages>({kQELAssetImagesMain, kQELAssetImagesFront, kQELAssetImagesFeatured,
             kQELAssetImagesSnapshots}, "main:url front:url featured:url snapshots:url ",
            "featured?QELNSURLTransformer front?QELNSURLTransformer main?QELNSURLTransformer "
            "snapshots?QELNSURLTransformer ", "", "identity"),
        row<QELAssetStreamUrls>({kQELAssetStreamUrlsHls, kQELAssetStreamUrlsHds, kQELAssetStreamUrlsMp4},
            "hls:url hds:url mp4:url ",
            "hds?QELNSURLTransformer hls?QELNSURLTransformer mp4?QELNSURLTransformer ", "", "all",
            &isEqualTo<QELAssetStreamUrls, &QELAssetStreamUrls::isEqualToUrls>),
        row<QELStreamConfiguration>({kQELStreamConfigurationProperties, "configuration"},
            "properties:array configuration:integer ", "properties ", "", "properties ",
            &isEqualTo<QELStreamConfiguration, &QELStreamConfiguration::isEqualToConfiguration>),
        row<QELFlightTimes>({kQELFlightTimesStart, kQELFlightTimesEnd}, "flightStart:date flightEnd:date ",
            "flightEnd=end?QELTimestampTransformer flightStart=start?QELTimestampTransformer ", "",
            "identity"),
        row<QELCategory>({kQELCategoryIdentifier, kQELCategoryTitle, kQELCategoryParentIdentifier,
             kQELCategoryShowCategory, kQELCategoryIsSeries, kQELCategoryOrder, kQELCategoryAgeLimit,
             kQELCategoryStats, kQELCategoryLastAsset, kQELCategoryAdditional},
            "categoryIdentifier:number title:text parentIdentifier:number showCategory:boolean "
            "isSeries:boolean order:number ageLimit:number stats:text lastAsset:QELCategoryLastAsset "
            "additional:QELCategoryAdditional ",
            "parentIdentifier=parentId categoryIdentifier=id order isSeries stats showCategory ageLimit "
            "title!QELHTMLTransformer ", "lastAsset additional ", "all",
            &isEqualTo<QELCategory, &QELCategory::isEqualToCategory>),
        row<QELCategoryLastAsset>({kQELCategoryLastAssetIdentifier}, "lastAssetIdentifier:number ",
            "lastAssetIdentifier=id ", "", "all",
            &isEqualTo<QELCategoryLastAsset, &QELCategoryLastAsset::isEqualToAsset>),
        row<QELCategoryAdditional>({kQELCategoryAdditionalDescription, kQELCategoryAdditionalImage,
             kQELCategoryAdditionalIsImageUploaded, kQELCategoryAdditionalLogo, kQELCategoryAdditionalAssets,
             kQELCategoryAdditionalBackground, kQELCategoryAdditionalBackgroundColor,
             kQELCategoryAdditionalShowPlayerLogo, kQELCategoryAdditionalPlayerLogoImage,
             kQELCategoryAdditionalShowEndPoster, kQELCategoryAdditionalShowComments,
             kQELCategoryAdditionalAllowAllDevices, kQELCategoryAdditionalPlayerBranding,
             kQELCategoryAdditionalAdCampaignIdentifier, kQELCategoryAdditionalAutoPlayNextAsset,
             kQELCategoryAdditionalNotificationMailEnabled},
            "categoryDescription:text image:url isImageUploaded:boolean logo:url assets:array "
            "background:url backgroundColor:color showPlayerLogo:boolean playerLogoImage:text "
            "showEndPoster:boolean showComments:boolean allowAllDevices:boolean "
            "playerBranding:QELCategoryAdditionalPlayerBranding adCampaignIdentifier:text "
            "autoPlayNextAsset:boolean notificationMailEnabled:boolean ",
            "adCampaignIdentifier=adCampaignId categoryDescription=description?QELHTMLTransformer "
            "backgroundColor?QELUIColorTransformer image?QELNSURLTransformer logo?QELNSURLTransformer "
            "background?QELNSURLTransformer isImageUploaded playerLogoImage showEndPoster showComments "
            "allowAllDevices autoPlayNextAsset notificationMailEnabled ", "playerBranding ", "all",
            &isEqualTo<QELCategoryAdditional, &QELCategoryAdditional::isEqualToAdditional>),
        row<QELCategoryAdditionalPlayerBranding>({kQELCategoryAdditionalPlayerBrandingIdentifier,
             kQELCategoryAdditionalPlayerBrandingPlayerBackground, kQELCategoryAdditionalPlayerBrandingLink},
            "playerBrandingIdentifier:number playerBackground:url link:url ",
            "playerBrandingIdentifier=id playerBackground?QELNSURLTransformer link?QELNSURLTransformer ", "",
            "all",
            &isEqualTo<QELCategoryAdditionalPlayerBranding, &QELCategoryAdditionalPlayerBranding::isEqualToBranding>),
        row<QELEditorial>({kQELEditorialKey, kQELEditorialAssetsIds, kQELEditorialAssets},
            "key:text assetsIdentifiers:array assets:QELAsset* ", "key assetsIdentifiers=assetsIds ",
            "assets=_embedded.assets* ", "all", &isEqualTo<QELEditorial, &QELEditorial::isEqualToEditorial>),
        row<QELSeason>({kQELSeasonTitle, kQELSeasonSeasonNumber, kQELSeasonAssets},
            "title:text seasonNumber:number assets:QELAsset* ", "seasonNumber title?QELHTMLTransformer ",
            "assets* ", "all", &isEqualTo<QELSeason, &QELSeason::isEqualToSeason>),
    };
    // clang-format on
    return all;
}

std::vector<std::string> words(const std::string& text) {
    std::istringstream in(text);
    return {std::istream_iterator<std::string>(in), {}};
}

// The names that a row's equality and hash go through, behind "identity" where it is asked first.
std::vector<std::string> comparedBy(const Row& row) {
    std::vector<std::string> names = words(row.compared);
    if (names.back() != "all") return names;
    names.pop_back();
    names.insert(names.end(), row.constants.begin(), row.constants.end());
    return names;
}

bool hasOwnEquality(const Row& row) {
    return !row.compared.starts_with("identity");
}

// Documents: a member for every rule, each with a value of its own.

// The keys of a key path around a value.
std::string member(const FEMRule& rule, const std::string& value) {
    std::string text;
    std::size_t open = 0;
    for (std::string_view rest = rule.keyPath;; ++open) {
        const std::size_t dot = rest.find('.');
        text += '"' + std::string(rest.substr(0, dot)) + "\": ";
        if (dot == std::string_view::npos) break;
        text += '{';
        rest.remove_prefix(dot + 1);
    }
    return text + value + std::string(open, '}');
}

using Members = std::map<std::string_view, std::string>;  // property -> member

std::string document(const Members& members) {
    std::string text = "{";
    for (const auto& [property, member] : members)
        text += (text.size() > 1 ? ", " : "") + member;
    return text + '}';
}

// A value for a rule, and what the property shows then; different for each `n`, for booleans if it is odd.
std::pair<std::string, std::string> valueFor(const Property& property, bool throughRule, int n) {
    const std::string number = std::to_string(n);
    switch (property.kind) {
        case PropertyKind::number:
            return {number, number};
        case PropertyKind::text:
            if (throughRule) return {"\"<i>t&lt;" + number + "</i>\"", "\"t<" + number + '"'};
            return {"\"<i>" + number + "\"", "\"<i>" + number + '"'};
        case PropertyKind::url:
            return {"\"https://u.example/" + number + '"', "<https://u.example/" + number + '>'};
        case PropertyKind::date:
            return {number + ".5", '@' + number + ".5"};
        case PropertyKind::color:
            return {"\"#000" + std::to_string(n % 10) + "ff\"", "#(0 " + std::to_string(n % 10) + " 255 1)"};
        case PropertyKind::array:
            return {"[" + number + ", \"encrypted\"]", "[" + number + ",\"encrypted\"]"};
        case PropertyKind::dictionary:
            return {"{\"k\": " + number + '}', "{\"k\":" + number + '}'};
        case PropertyKind::boolean:
            return {n % 2 == 1 ? "true" : "0", n % 2 == 1 ? "true" : "false"};
        case PropertyKind::integer:
            if (property.name == "assetType") return {R"("audio")", "1"};
            return {n % 2 == 1 ? R"("live")" : R"("wasLive")", n % 2 == 1 ? "2" : "1"};
        default:
            return {};
    }
}

Members membersFor(const FEMRules& rules, int& n, bool onlyOfComparable);

std::string recordFor(const FEMRules& rules, int& n, bool onlyOfComparable) {
    return document(membersFor(rules, n, onlyOfComparable));
}

const Row& rowOf(const ObjectClass& isa) {
    return *std::find_if(rows().begin(), rows().end(), [&](const Row& row) { return row.isa == isa; });
}

// With `onlyOfComparable`, no record in it compares by identity, so that two mappings of it are equal.
Members membersFor(const FEMRules& rules, int& n, bool onlyOfComparable) {
    Members members;
    for (const FEMRule& rule : rules.attributes) {
        const auto value = valueFor(*rule.property, rule.map.apply != nullptr, n);
        members[rule.property->name] = member(rule, value.first);
        n += 2;
    }
    for (const FEMRule& rule : rules.relationships) {
        if (onlyOfComparable && !hasOwnEquality(rowOf(*rule.property->target))) continue;
        const FEMRules& target = rule.mapping == nullptr ? *rule.target : rule.mapping->rules();
        std::string value = recordFor(target, n, onlyOfComparable);
        if (rule.toMany) value = '[' + value + ", " + recordFor(target, n, onlyOfComparable) + ']';
        members[rule.property->name] = member(rule, value);
    }
    return members;
}

// The default mapping, and a rule for each property that has none but can be set.
FEMMapping fullMapping(const Row& row) {
    FEMMapping mapping = row.defaultMapping();
    for (const Property& property : row.isa.properties()) {
        const auto fills = [&](const FEMRule& rule) { return rule.property == &property; };
        const auto& attributes = mapping.rules().attributes;
        const auto& relationships = mapping.rules().relationships;
        if (!property.isComputed() && std::none_of(attributes.begin(), attributes.end(), fills) &&
            std::none_of(relationships.begin(), relationships.end(), fills))
            mapping.addAttributeWithProperty(property.name, property.name);
    }
    return mapping;
}

Ref<QELBaseModel> record(const FEMMapping& mapping, const std::string& text) {
    auto object = FEMDeserializer::objectFromRepresentation(json(text), mapping);
    return Ref<QELBaseModel>::adopt(static_cast<const QELBaseModel*>(object.release()));
}

// The promises.

class Records : public testing::TestWithParam<std::size_t> {
protected:
    const Row& row = rows()[GetParam()];
    FEMMapping mapping = fullMapping(row);
    int n = 1001;
};
INSTANTIATE_TEST_SUITE_P(All, Records, testing::Range(std::size_t{0}, std::size_t{18}), [](const auto& test) {
    return std::string(rows()[test.param].isa.name());
});

TEST_P(Records, declareTheirPropertiesInOrder) {
    constexpr std::string_view kKinds[] = {"number",
                                           "text",
                                           "url",
                                           "date",
                                           "color",
                                           "array",
                                           "dictionary",
                                           "record",
                                           "list",
                                           "boolean",
                                           "integer"};
    std::string declared;
    std::string names;
    for (const Property& property : row.isa.properties()) {
        declared += std::string(property.name) + ':';
        declared +=
            property.target == nullptr ? kKinds[static_cast<int>(property.kind)] : property.target->name();
        declared += property.kind == PropertyKind::list ? "* " : " ";
        names += std::string(property.name) + ' ';
    }
    EXPECT_EQ(declared, row.declared);
    std::string constants;
    for (const std::string_view constant : row.constants)
        constants += std::string(constant) + ' ';
    EXPECT_EQ(constants, names);
    EXPECT_TRUE(std::equal(row.isa.propertyKeys().begin(),
                           row.isa.propertyKeys().end(),
                           row.constants.begin(),
                           row.constants.end()));
    EXPECT_EQ(row.isa.superclass(), &QELBaseModel::objectClass);
}

TEST_P(Records, areMappedByTheirRulesInOrder) {
    const FEMMapping byDefault = row.defaultMapping();
    EXPECT_EQ(byDefault.objectClass(), row.isa);
    const auto written = [](const FEMRule& rule) {
        std::string text(rule.property->name);
        if (rule.keyPath != rule.property->name) text += '=' + std::string(rule.keyPath);
        if (rule.map.apply == &detail::TransformerRules::capturedOfLibrary)
            text += '?' + std::string(detail::kLibraryTransformers.at(rule.map.size).name);
        else if (rule.map.apply == &detail::TransformerRules::fetchedOfLibrary)
            text += '!' + std::string(detail::kLibraryTransformers.at(rule.map.size).name);
        else if (rule.map.apply != nullptr)
            text += '%';
        return text += rule.toMany ? "* " : " ";
    };
    std::string attributes;
    for (const FEMRule& rule : byDefault.rules().attributes)
        attributes += written(rule);
    std::string relationships;
    for (const FEMRule& rule : byDefault.rules().relationships)
        relationships += written(rule);
    EXPECT_EQ(attributes, row.attributes);
    EXPECT_EQ(relationships, row.relationships);
}

TEST_P(Records, areEmptyWithoutADocument) {
    for (const char* text : {"{}", "[]", "null", R"({"unknown": {"id": 1}})"}) {
        const auto empty = record(mapping, text);
        const auto values = empty->dictionaryValue();
        ASSERT_EQ(values.size(), row.constants.size());
        for (const auto& [name, value] : values) {
            const PropertyKind kind = row.isa.property(name)->kind;
            const std::string expected = name == "configuration"         ? "16"
                                         : kind == PropertyKind::boolean ? "false"
                                         : kind == PropertyKind::integer ? "0"
                                                                         : "null";
            EXPECT_EQ(show(value), expected) << name << " of " << text;
        }
        EXPECT_EQ(empty->hash() == 0, hasOwnEquality(row));
    }
}

TEST_P(Records, areFilledRuleByRule) {
    const Members members = membersFor(mapping.rules(), n, false);
    const auto full = record(mapping, document(members));
    // Alone in its document, a rule fills its property and no other; a null in its place fills nothing.
    for (const auto& [filled, text] : members) {
        const auto one = record(mapping, '{' + text + '}');
        for (const auto& [name, value] : one->dictionaryValue()) {
            if (row.isa.property(name)->isComputed()) continue;
            const bool isEmpty = show(value) == "null" || show(value) == "false" || show(value) == "0";
            EXPECT_EQ(isEmpty, name != filled) << text << " made " << name << ' ' << show(value);
            EXPECT_TRUE(name != filled || show(value) == showAt(*full, name)) << name << ' ' << show(value);
        }
    }
    // In the whole document each property has the value that was meant for it.
    n = 1001;
    for (const FEMRule& rule : mapping.rules().attributes) {
        EXPECT_EQ(showAt(*full, rule.property->name),
                  valueFor(*rule.property, rule.map.apply != nullptr, n).second)
            << rule.property->name;
        n += 2;
    }
    for (const FEMRule& rule : mapping.rules().relationships)
        EXPECT_EQ(showAt(*full, rule.property->name),
                  rule.toMany ? "[2]" : std::string(rule.property->target->name()));
}

TEST_P(Records, shareEverythingWithTheirCopies) {
    const auto full = record(mapping, recordFor(mapping.rules(), n, false));
    if (row.isa == QELStreamConfiguration::objectClass) {
        EXPECT_THROW(full->copyWithZone(nullptr), MappingFault);
        return;
    }
    const auto once = full->copyWithZone(nullptr);
    const auto twice = once->copyWithZone(nullptr);
    EXPECT_NE(once.get(), full.get());
    EXPECT_EQ(once->isa(), row.isa);
    for (const auto& [name, value] : full->dictionaryValue()) {
        const Value copied = row.isa.property(name)->value(*twice);
        EXPECT_EQ(show(copied), show(value)) << name;
        EXPECT_EQ(copied.record(), value.record()) << name;
        EXPECT_EQ(copied.list(), value.list()) << name;
        EXPECT_TRUE(!value.text() || copied.text()->data() == value.text()->data()) << name << " was copied";
    }
    EXPECT_EQ(full->isEqual(once.get()), hasOwnEquality(row));
    EXPECT_EQ(twice->isEqual(full.get()), hasOwnEquality(row));
    EXPECT_EQ(full->hash() == twice->hash(), hasOwnEquality(row));
}

TEST_P(Records, compareFieldByField) {
    const Members members = membersFor(mapping.rules(), n, true);
    const auto one = record(mapping, document(members));
    const auto same = record(mapping, document(members));
    EXPECT_TRUE(one->isEqual(one.get()));
    EXPECT_FALSE(one->isEqual(nullptr));
    EXPECT_EQ(one->isEqual(same.get()), hasOwnEquality(row));
    EXPECT_EQ(one->hash() == same->hash(), hasOwnEquality(row));
    if (row.isEqualTo != nullptr) {
        EXPECT_TRUE(row.isEqualTo(*one, one.get()));
        EXPECT_EQ(row.isEqualTo(*one, same.get()), hasOwnEquality(row));
        EXPECT_FALSE(row.isEqualTo(*one, nullptr));
    }
    if (!hasOwnEquality(row)) return;

    // The document with another value in one place, and with none.
    int other = 5000;
    const Members others = membersFor(mapping.rules(), other, false);
    const std::vector<std::string> compared = comparedBy(row);
    for (const auto& [name, text] : others) {
        const bool counts = std::find(compared.begin(), compared.end(), name) != compared.end();
        Members changed = members;
        changed[name] = text;
        if (name == "assetType") changed[name] = R"("assetType": "video")";
        Members missing = members;
        missing.erase(name);
        for (const auto& [left, right] : {std::pair(changed, members), std::pair(missing, changed)}) {
            if (name == "assetType" && right == changed) continue;  // a video is the empty value
            if (row.isa.property(name)->kind == PropertyKind::boolean && right == changed) continue;
            const auto a = record(mapping, document(left));
            const auto b = record(mapping, document(right));
            EXPECT_EQ(a->isEqual(b.get()), !counts) << name << ' ' << document(left) << document(right);
            EXPECT_EQ(b->isEqual(a.get()), !counts) << name;
            EXPECT_TRUE(counts || a->hash() == b->hash()) << name;
        }
        // Records that compare by identity are never equal when they were mapped apart.
        const bool isComparable = members.contains(name) || !counts;
        const std::string twice = document(isComparable ? members : changed);
        EXPECT_EQ(record(mapping, twice)->isEqual(record(mapping, twice).get()), isComparable) << name;
    }
}

TEST_P(Records, hashByTheFoldOfTheirFields) {
    const auto hashOf = [](const Value& value) -> std::uint64_t {
        if (value.isNull()) return 0;
        if (value.number())
            return value.number()->isBoolean() ? value.number()->boolValue() : value.number()->hash();
        if (value.text()) return detail::hashOfText(*value.text());
        if (value.url()) return detail::hashOfText(value.url()->text());
        if (value.color()) return value.color()->hash();
        if (value.representation()) return value.representation()->size();
        return value.record() != nullptr ? value.record()->hash() : value.list()->size();
    };
    for (const std::string& text : {recordFor(mapping.rules(), n, false), std::string("{}")}) {
        const auto one = record(mapping, text);
        std::uint64_t h = 0;
        for (const std::string& name : comparedBy(row)) {
            const bool isEnumeration = name == "assetType" || name == "streamType";
            const std::uint64_t x =
                name == "identity" ? detail::hashOfWord(reinterpret_cast<std::uintptr_t>(one.get()))
                : isEnumeration    ? static_cast<std::uint64_t>(at(*one, name).number()->int64Value())
                                   : hashOf(at(*one, name));
            h = h * 31 + x;
        }
        EXPECT_EQ(one->hash(), h);
    }
}

TEST(Records, areEqualWithinOneClassOnly) {
    for (const Row& a : rows()) {
        for (const Row& b : rows()) {
            const bool equal = &a == &b && hasOwnEquality(a);
            EXPECT_EQ(record(a.defaultMapping(), "{}")->isEqual(record(b.defaultMapping(), "{}").get()),
                      equal)
                << a.isa.name() << " and " << b.isa.name();
        }
    }
}

}  // namespace
}  // namespace QELModels::test
