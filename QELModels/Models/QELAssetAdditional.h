#pragma once

#include <string_view>

#include "QELModels/Models/QELAssetAdditionalSettings.h"
#include "QELModels/Models/QELAssetAdditionalSubtitle.h"
#include "QELModels/Models/QELAssetChapter.h"
#include "QELModels/Models/QELAssetCuePoint.h"
#include "QELModels/Models/QELAssetLead.h"
#include "QELModels/Models/QELBaseModel.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Records/Field.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// The names of the properties of `QELAssetAdditional`, as `propertyKeys` and `dictionaryValue` have them.
inline constexpr std::string_view kQELAssetAdditionalSettings = "settings";
inline constexpr std::string_view kQELAssetAdditionalBarrels = "barrels";
inline constexpr std::string_view kQELAssetAdditionalFeaturedChapters = "featuredChapters";
inline constexpr std::string_view kQELAssetAdditionalChapters = "chapters";
inline constexpr std::string_view kQELAssetAdditionalCuePoints = "cuePoints";
inline constexpr std::string_view kQELAssetAdditionalSourceFiles = "sourceFiles";
inline constexpr std::string_view kQELAssetAdditionalExternalCategoryIdentifier =
    "externalCategoryIdentifier";
inline constexpr std::string_view kQELAssetAdditionalExternalIdentifier = "externalIdentifier";
inline constexpr std::string_view kQELAssetAdditionalNextAsset = "nextAsset";
inline constexpr std::string_view kQELAssetAdditionalMetadata = "metadata";
inline constexpr std::string_view kQELAssetAdditionalAccess = "access";
inline constexpr std::string_view kQELAssetAdditionalSubtitles = "subtitles";
inline constexpr std::string_view kQELAssetAdditionalImageCaption = "imageCaption";
inline constexpr std::string_view kQELAssetAdditionalUrl = "url";

/// What editors and the publishing system add to an asset. Chapters, cue points and the next asset compare by
/// identity, so records mapped apart that hold any of these are never equal.
/// @see @ref assetFacts
class QELMODELS_EXPORT QELAssetAdditional : public Record<QELAssetAdditional> {
public:
    Field<QELAssetAdditionalSettings> settings;     ///< what editors decided
    Field<Array> barrels;                           ///< as the content API gives it
    Field<List<QELAssetChapter>> featuredChapters;  ///< chapters picked for featuring
    Field<List<QELAssetChapter>> chapters;          ///< all chapters
    Field<List<QELAssetCuePoint>> cuePoints;        ///< where advertisements may be put in
    Field<Array> sourceFiles;                       ///< as the content API gives it
    Field<Number> externalCategoryIdentifier;       ///< of the category, in an outside system
    Field<Text> externalIdentifier;                 ///< of the asset, in an outside system
    Field<QELAssetLead> nextAsset;                  ///< what to play next
    Field<Dictionary> metadata;                     ///< free-form
    Field<Dictionary> access;                       ///< as the content API gives it
    Field<List<QELAssetAdditionalSubtitle>> subtitles;
    Field<Dictionary> imageCaption;  ///< of the main picture
    Field<Text> url;                 ///< kept as plain text, which need not be a URL

    /// Compares the fields with another record of this class; false for null.
    bool isEqualToAdditional(const QELAssetAdditional* other) const { return isEqualByFields(other); }

    static const ObjectClassOf<QELAssetAdditional> objectClass;
    static const FEMRulesOf<QELAssetAdditional> defaultRules;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
