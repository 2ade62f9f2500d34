#include "QELModels/Models/QELAsset.h"

#include "QELModels/Mapping/FEMRuleWords.h"
#include "QELModels/Records/Declaration.h"
#include "QELModels/Transformers/QELValueTransformerRegistry.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

// What the record is made of ...
static constexpr auto declared = declare<QELAsset>(
    property<&QELAsset::assetIdentifier>(kQELAssetIdentifier),
    property<&QELAsset::title>(kQELAssetTitle),
    property<&QELAsset::titleFront>(kQELAssetTitleFront),
    property<&QELAsset::assetDescription>(kQELAssetDescription),
    property<&QELAsset::assetDescriptionFront>(kQELAssetDescriptionFront),
    property<&QELAsset::displays>(kQELAssetDisplays),
    property<&QELAsset::showDisplays>(kQELAssetShowDisplays),
    property<&QELAsset::createdAt>(kQELAssetCreated),
    property<&QELAsset::updatedAt>(kQELAssetUpdated),
    property<&QELAsset::publishedAt>(kQELAssetPublished),
    property<&QELAsset::flightTimes>(kQELAssetFlightTimes),
    property<&QELAsset::duration>(kQELAssetDuration),
    property<&QELAsset::assetType>(kQELAssetAssetType),
    property<&QELAsset::streamType>(kQELAssetStreamType),
    property<&QELAsset::status>(kQELAssetStatus),
    property<&QELAsset::series>(kQELAssetSeries),
    property<&QELAsset::streamConfiguration>(kQELAssetStreamConfiguration),
    property<&QELAsset::articleUrl>(kQELAssetArticleUrl),
    property<&QELAsset::category>(kQELAssetCategory),
    property<&QELAsset::images>(kQELAssetImages),
    property<&QELAsset::streamUrls>(kQELAssetStreamUrls),
    property<&QELAsset::assetAdditional>(kQELAssetAdditional));

// ... where a document keeps it ...
static constexpr auto rules = mapping<declared>(
    attribute<&QELAsset::displays>(),
    attribute<&QELAsset::showDisplays>(),
    attribute<&QELAsset::duration>(),
    attribute<&QELAsset::status>(),
    relationship<&QELAsset::images>(),
    relationship<&QELAsset::streamConfiguration>(),
    relationship<&QELAsset::flightTimes>(),
    relationship<&QELAsset::streamUrls>(),
    relationship<&QELAsset::series>(),
    relationship<&QELAsset::category>(),
    relationship<&QELAsset::assetAdditional>("additional"),
    attribute<&QELAsset::title>("title", fetched(kQELHTMLTransformer)),
    attribute<&QELAsset::titleFront>("titleFront", fetched(kQELHTMLTransformer)),
    attribute<&QELAsset::assetType>("assetType", lookedUpIn(kQELAssetTypeNames)),
    attribute<&QELAsset::streamType>("streamType", lookedUpIn(kQELStreamTypeNames)),
    attribute<&QELAsset::articleUrl>("articleUrl", fetched(kQELNSURLTransformer)),
    attribute<&QELAsset::assetIdentifier>("id"),
    attribute<&QELAsset::assetDescription>("description", fetched(kQELHTMLTransformer)),
    attribute<&QELAsset::assetDescriptionFront>("descriptionFront", fetched(kQELHTMLTransformer)),
    attribute<&QELAsset::createdAt>("created", fetched(kQELTimestampTransformer)),
    attribute<&QELAsset::updatedAt>("updated", fetched(kQELTimestampTransformer)),
    attribute<&QELAsset::publishedAt>("published", fetched(kQELTimestampTransformer)));
constinit const FEMRulesOf<QELAsset> QELAsset::defaultRules = rules;

// ... and what makes two of them equal.
// Display count and timestamps are left out on purpose: two assets that differ in these alone are equal.
// Flight times, series and images compare by identity, so two assets mapped apart are equal only where both
// lack all three.
using Compared = FieldsOf<
    &QELAsset::assetIdentifier,
    &QELAsset::title,
    &QELAsset::titleFront,
    &QELAsset::assetDescription,
    &QELAsset::assetDescriptionFront,
    &QELAsset::flightTimes,
    &QELAsset::duration,
    &QELAsset::assetType,
    &QELAsset::streamType,
    &QELAsset::status,
    &QELAsset::series,
    &QELAsset::streamConfiguration,
    &QELAsset::articleUrl,
    &QELAsset::category,
    &QELAsset::images,
    &QELAsset::streamUrls,
    &QELAsset::assetAdditional>;

constinit const ObjectClassOf<QELAsset> QELAsset::objectClass(
    describe<declared, Compared, Compared>("QELAsset", Lives::inItsOwnBlock));

}  // namespace QELMODELS_ABI
}  // namespace QELModels
