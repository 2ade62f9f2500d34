#include "QELModels/Models/QELCategoryAdditionalPlayerBranding.h"

#include "QELModels/Mapping/FEMRuleWords.h"
#include "QELModels/Records/Declaration.h"
#include "QELModels/Transformers/QELValueTransformerRegistry.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

// What the record is made of ...
static constexpr auto declared = declare<QELCategoryAdditionalPlayerBranding>(
    property<&QELCategoryAdditionalPlayerBranding::playerBrandingIdentifier>(
        kQELCategoryAdditionalPlayerBrandingIdentifier),
    property<&QELCategoryAdditionalPlayerBranding::playerBackground>(
        kQELCategoryAdditionalPlayerBrandingPlayerBackground),
    property<&QELCategoryAdditionalPlayerBranding::link>(kQELCategoryAdditionalPlayerBrandingLink));

// ... where a document keeps it ...
static constexpr auto rules = mapping<declared>(
    attribute<&QELCategoryAdditionalPlayerBranding::playerBrandingIdentifier>("id"),
    attribute<&QELCategoryAdditionalPlayerBranding::playerBackground>(
        "playerBackground", captured(kQELNSURLTransformer)),
    attribute<&QELCategoryAdditionalPlayerBranding::link>("link", captured(kQELNSURLTransformer)));
constinit const FEMRulesOf<QELCategoryAdditionalPlayerBranding>
    QELCategoryAdditionalPlayerBranding::defaultRules = rules;

// ... and what makes two of them equal.
using Compared = FieldsOf<
    &QELCategoryAdditionalPlayerBranding::playerBrandingIdentifier,
    &QELCategoryAdditionalPlayerBranding::playerBackground,
    &QELCategoryAdditionalPlayerBranding::link>;

constinit const ObjectClassOf<QELCategoryAdditionalPlayerBranding>
    QELCategoryAdditionalPlayerBranding::objectClass(
        describe<declared, Compared, Compared>("QELCategoryAdditionalPlayerBranding"));

}  // namespace QELMODELS_ABI
}  // namespace QELModels
