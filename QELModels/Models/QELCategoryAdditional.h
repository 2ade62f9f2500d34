#pragma once

#include <string_view>

#include "QELModels/Models/QELBaseModel.h"
#include "QELModels/Models/QELCategoryAdditionalPlayerBranding.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Records/Field.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// The names of the properties of `QELCategoryAdditional`, as `propertyKeys` and `dictionaryValue` have them.
inline constexpr std::string_view kQELCategoryAdditionalDescription = "categoryDescription";
inline constexpr std::string_view kQELCategoryAdditionalImage = "image";
inline constexpr std::string_view kQELCategoryAdditionalIsImageUploaded = "isImageUploaded";
inline constexpr std::string_view kQELCategoryAdditionalLogo = "logo";
inline constexpr std::string_view kQELCategoryAdditionalAssets = "assets";
inline constexpr std::string_view kQELCategoryAdditionalBackground = "background";
inline constexpr std::string_view kQELCategoryAdditionalBackgroundColor = "backgroundColor";
inline constexpr std::string_view kQELCategoryAdditionalShowPlayerLogo = "showPlayerLogo";
inline constexpr std::string_view kQELCategoryAdditionalPlayerLogoImage = "playerLogoImage";
inline constexpr std::string_view kQELCategoryAdditionalShowEndPoster = "showEndPoster";
inline constexpr std::string_view kQELCategoryAdditionalShowComments = "showComments";
inline constexpr std::string_view kQELCategoryAdditionalAllowAllDevices = "allowAllDevices";
inline constexpr std::string_view kQELCategoryAdditionalPlayerBranding = "playerBranding";
inline constexpr std::string_view kQELCategoryAdditionalAdCampaignIdentifier = "adCampaignIdentifier";
inline constexpr std::string_view kQELCategoryAdditionalAutoPlayNextAsset = "autoPlayNextAsset";
inline constexpr std::string_view kQELCategoryAdditionalNotificationMailEnabled = "notificationMailEnabled";

/// How a category is presented and played.
class QELMODELS_EXPORT QELCategoryAdditional : public Record<QELCategoryAdditional> {
public:
    Field<Text> categoryDescription;  ///< cleaned of HTML
    Field<URL> image;
    Field<bool> isImageUploaded;
    Field<URL> logo;
    Field<Array> assets;    ///< always null: no rule fills it
    Field<URL> background;  ///< picture behind the category
    Field<Color> backgroundColor;
    Field<bool> showPlayerLogo;   ///< always false: no rule fills it
    Field<Text> playerLogoImage;  ///< kept as plain text
    Field<bool> showEndPoster;
    Field<bool> showComments;     ///< comments may be shown
    Field<bool> allowAllDevices;  ///< every kind of device may play its assets
    Field<QELCategoryAdditionalPlayerBranding> playerBranding;
    Field<Text> adCampaignIdentifier;
    Field<bool> autoPlayNextAsset;  ///< the player goes on by itself
    Field<bool> notificationMailEnabled;

    /// Compares the fields with another record of this class; false for null.
    bool isEqualToAdditional(const QELCategoryAdditional* other) const { return isEqualByFields(other); }

    static const ObjectClassOf<QELCategoryAdditional> objectClass;
    static const FEMRulesOf<QELCategoryAdditional> defaultRules;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
