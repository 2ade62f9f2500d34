#pragma once

#include <string_view>

#include "QELModels/Functions/QELAssetEnumerations.h"
#include "QELModels/Models/QELAssetAdditional.h"
#include "QELModels/Models/QELAssetImages.h"
#include "QELModels/Models/QELAssetSeries.h"
#include "QELModels/Models/QELAssetStreamUrls.h"
#include "QELModels/Models/QELBaseModel.h"
#include "QELModels/Models/QELCategory.h"
#include "QELModels/Models/QELFlightTimes.h"
#include "QELModels/Models/QELStreamConfiguration.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Records/Field.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// The names of the properties of `QELAsset`, as `propertyKeys` and `dictionaryValue` have them.
inline constexpr std::string_view kQELAssetIdentifier = "assetIdentifier";
inline constexpr std::string_view kQELAssetTitle = "title";
inline constexpr std::string_view kQELAssetTitleFront = "titleFront";
inline constexpr std::string_view kQELAssetDescription = "assetDescription";
inline constexpr std::string_view kQELAssetDescriptionFront = "assetDescriptionFront";
inline constexpr std::string_view kQELAssetDisplays = "displays";
inline constexpr std::string_view kQELAssetShowDisplays = "showDisplays";
inline constexpr std::string_view kQELAssetCreated = "createdAt";
inline constexpr std::string_view kQELAssetUpdated = "updatedAt";
inline constexpr std::string_view kQELAssetPublished = "publishedAt";
inline constexpr std::string_view kQELAssetFlightTimes = "flightTimes";
inline constexpr std::string_view kQELAssetDuration = "duration";
inline constexpr std::string_view kQELAssetAssetType = "assetType";
inline constexpr std::string_view kQELAssetStreamType = "streamType";
inline constexpr std::string_view kQELAssetStatus = "status";
inline constexpr std::string_view kQELAssetSeries = "series";
inline constexpr std::string_view kQELAssetStreamConfiguration = "streamConfiguration";
inline constexpr std::string_view kQELAssetArticleUrl = "articleUrl";
inline constexpr std::string_view kQELAssetCategory = "category";
inline constexpr std::string_view kQELAssetImages = "images";
inline constexpr std::string_view kQELAssetStreamUrls = "streamUrls";
inline constexpr std::string_view kQELAssetAdditional = "assetAdditional";

/// One video or audio item, on demand or live.
///
/// Two assets are equal when their fields are, display count and timestamps left out. Flight times, series
/// and images compare by identity, so of assets mapped apart only those without all three can be equal; an
/// asset and its copies are.
/// @see @ref assetFacts
class QELMODELS_EXPORT QELAsset : public Record<QELAsset> {
public:
    Field<Number> assetIdentifier;      ///< the content API's "id"
    Field<Text> title;                  ///< plain text, cleaned of HTML
    Field<Text> titleFront;             ///< title for front pages, cleaned of HTML
    Field<Text> assetDescription;       ///< cleaned of HTML
    Field<Text> assetDescriptionFront;  ///< description for front pages, cleaned of HTML
    Field<Number> displays;             ///< how often it was shown
    Field<bool> showDisplays;           ///< whether that count is to be shown
    Field<Date> createdAt;
    Field<Date> updatedAt;
    Field<Date> publishedAt;
    Field<QELFlightTimes> flightTimes;                  ///< null: no on-air period is set
    Field<Number> duration;                             ///< milliseconds
    Field<QELAssetType> assetType;                      ///< a video unless the document says otherwise
    Field<QELStreamType> streamType;                    ///< on demand unless the document says otherwise
    Field<Text> status;                                 ///< publication status, as the content API gives it
    Field<QELAssetSeries> series;                       ///< season and episode numbers
    Field<QELStreamConfiguration> streamConfiguration;  ///< how the stream is protected
    Field<URL> articleUrl;                              ///< the article that belongs to it
    Field<QELCategory> category;                        ///< the programme that it belongs to
    Field<QELAssetImages> images;
    Field<QELAssetStreamUrls> streamUrls;
    Field<QELAssetAdditional> assetAdditional;  ///< "additional" in a document

    /// Compares the fields with another record of this class; false for null.
    bool isEqualToAsset(const QELAsset* other) const { return isEqualByFields(other); }

    static const ObjectClassOf<QELAsset> objectClass;
    static const FEMRulesOf<QELAsset> defaultRules;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
