#pragma once

#include <string_view>

#include "QELModels/Models/QELBaseModel.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Records/Field.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// The names of the properties of `QELAssetAdditionalSettings`, as `propertyKeys` and `dictionaryValue` have
/// them.
inline constexpr std::string_view kQELAssetAdditionalSettingsShowAds = "showAds";
inline constexpr std::string_view kQELAssetAdditionalSettingsShowEmbed = "showEmbed";
inline constexpr std::string_view kQELAssetAdditionalSettingsShowComments = "showComments";
inline constexpr std::string_view kQELAssetAdditionalSettingsTonoRegistered = "tonoRegistered";
inline constexpr std::string_view kQELAssetAdditionalSettingsCreatedBy = "createdBy";
inline constexpr std::string_view kQELAssetAdditionalSettingsLastEditedBy = "lastEditedBy";
inline constexpr std::string_view kQELAssetAdditionalSettingsSource = "source";
inline constexpr std::string_view kQELAssetAdditionalSettingsNotes = "notes";
inline constexpr std::string_view kQELAssetAdditionalSettingsShowInNewest = "showInNewest";
inline constexpr std::string_view kQELAssetAdditionalSettingsLoopGeneratorEnabled = "loopGeneratorEnabled";
inline constexpr std::string_view kQELAssetAdditionalSettingsEscenicId = "escenicId";
inline constexpr std::string_view kQELAssetAdditionalSettingsPlayhead = "playhead";
inline constexpr std::string_view kQELAssetAdditionalSettingsStartIndexPoint = "startIndexPoint";
inline constexpr std::string_view kQELAssetAdditionalSettingsAgeLimit = "ageLimit";

/// What editors decided about an asset.
class QELMODELS_EXPORT QELAssetAdditionalSettings : public Record<QELAssetAdditionalSettings> {
public:
    Field<bool> showAds;         ///< advertisements may be shown
    Field<bool> showEmbed;       ///< embedding may be offered
    Field<bool> showComments;    ///< comments may be shown
    Field<bool> tonoRegistered;  ///< a registration, as the content API gives it
    Field<Text> createdBy;
    Field<Text> lastEditedBy;
    Field<Number> source;  ///< as the content API gives it
    Field<Text> notes;
    Field<bool> showInNewest;          ///< may be in lists of newest assets
    Field<bool> loopGeneratorEnabled;  ///< as the content API gives it
    Field<Text> escenicId;             ///< in the publishing system
    Field<Number> playhead;            ///< as the content API gives it
    Field<Number> startIndexPoint;     ///< as the content API gives it
    Field<Number> ageLimit;

    /// Compares the fields with another record of this class; false for null.
    bool isEqualToSettings(const QELAssetAdditionalSettings* other) const { return isEqualByFields(other); }

    static const ObjectClassOf<QELAssetAdditionalSettings> objectClass;
    static const FEMRulesOf<QELAssetAdditionalSettings> defaultRules;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
