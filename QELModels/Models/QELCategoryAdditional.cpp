#include "QELModels/Models/QELCategoryAdditional.h"

#include "QELModels/Mapping/FEMRuleWords.h"
#include "QELModels/Records/Declaration.h"
#include "QELModels/Transformers/QELValueTransformerRegistry.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

// What the record is made of ...
static constexpr auto declared = declare<QELCategoryAdditional>(
    property<&QELCategoryAdditional::categoryDescription>(kQELCategoryAdditionalDescription),
    property<&QELCategoryAdditional::image>(kQELCategoryAdditionalImage),
    property<&QELCategoryAdditional::isImageUploaded>(kQELCategoryAdditionalIsImageUploaded),
    property<&QELCategoryAdditional::logo>(kQELCategoryAdditionalLogo),
    property<&QELCategoryAdditional::assets>(kQELCategoryAdditionalAssets),
    property<&QELCategoryAdditional::background>(kQELCategoryAdditionalBackground),
    property<&QELCategoryAdditional::backgroundColor>(kQELCategoryAdditionalBackgroundColor),
    property<&QELCategoryAdditional::showPlayerLogo>(kQELCategoryAdditionalShowPlayerLogo),
    property<&QELCategoryAdditional::playerLogoImage>(kQELCategoryAdditionalPlayerLogoImage),
    property<&QELCategoryAdditional::showEndPoster>(kQELCategoryAdditionalShowEndPoster),
    property<&QELCategoryAdditional::showComments>(kQELCategoryAdditionalShowComments),
    property<&QELCategoryAdditional::allowAllDevices>(kQELCategoryAdditionalAllowAllDevices),
    property<&QELCategoryAdditional::playerBranding>(kQELCategoryAdditionalPlayerBranding),
    property<&QELCategoryAdditional::adCampaignIdentifier>(kQELCategoryAdditionalAdCampaignIdentifier),
    property<&QELCategoryAdditional::autoPlayNextAsset>(kQELCategoryAdditionalAutoPlayNextAsset),
    property<&QELCategoryAdditional::notificationMailEnabled>(kQELCategoryAdditionalNotificationMailEnabled));

// ... where a document keeps it ...
// Documents carry "assets" and "showPlayerLogo" too, but nothing reads them: that is meant.
static constexpr auto rules = mapping<declared>(
    relationship<&QELCategoryAdditional::playerBranding>(),
    attribute<&QELCategoryAdditional::adCampaignIdentifier>("adCampaignId"),
    attribute<&QELCategoryAdditional::categoryDescription>("description", captured(kQELHTMLTransformer)),
    attribute<&QELCategoryAdditional::backgroundColor>("backgroundColor", captured(kQELUIColorTransformer)),
    attribute<&QELCategoryAdditional::image>("image", captured(kQELNSURLTransformer)),
    attribute<&QELCategoryAdditional::logo>("logo", captured(kQELNSURLTransformer)),
    attribute<&QELCategoryAdditional::background>("background", captured(kQELNSURLTransformer)),
    attribute<&QELCategoryAdditional::isImageUploaded>(),
    attribute<&QELCategoryAdditional::playerLogoImage>(),
    attribute<&QELCategoryAdditional::showEndPoster>(),
    attribute<&QELCategoryAdditional::showComments>(),
    attribute<&QELCategoryAdditional::allowAllDevices>(),
    attribute<&QELCategoryAdditional::autoPlayNextAsset>(),
    attribute<&QELCategoryAdditional::notificationMailEnabled>());
constinit const FEMRulesOf<QELCategoryAdditional> QELCategoryAdditional::defaultRules = rules;

// ... and what makes two of them equal.
using Compared = FieldsOf<
    &QELCategoryAdditional::categoryDescription,
    &QELCategoryAdditional::image,
    &QELCategoryAdditional::isImageUploaded,
    &QELCategoryAdditional::logo,
    &QELCategoryAdditional::assets,
    &QELCategoryAdditional::background,
    &QELCategoryAdditional::backgroundColor,
    &QELCategoryAdditional::showPlayerLogo,
    &QELCategoryAdditional::playerLogoImage,
    &QELCategoryAdditional::showEndPoster,
    &QELCategoryAdditional::showComments,
    &QELCategoryAdditional::allowAllDevices,
    &QELCategoryAdditional::playerBranding,
    &QELCategoryAdditional::adCampaignIdentifier,
    &QELCategoryAdditional::autoPlayNextAsset,
    &QELCategoryAdditional::notificationMailEnabled>;

constinit const ObjectClassOf<QELCategoryAdditional> QELCategoryAdditional::objectClass(
    describe<declared, Compared, Compared>("QELCategoryAdditional"));

}  // namespace QELMODELS_ABI
}  // namespace QELModels
