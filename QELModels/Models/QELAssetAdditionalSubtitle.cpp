#include "QELModels/Models/QELAssetAdditionalSubtitle.h"

#include "QELModels/Mapping/FEMRuleWords.h"
#include "QELModels/Records/Declaration.h"
#include "QELModels/Transformers/QELValueTransformerRegistry.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

// What the record is made of ...
static constexpr auto declared = declare<QELAssetAdditionalSubtitle>(
    property<&QELAssetAdditionalSubtitle::language>(kQELAssetAdditionalSubtitleLanguage),
    property<&QELAssetAdditionalSubtitle::url>(kQELAssetAdditionalSubtitleURL),
    property<&QELAssetAdditionalSubtitle::isDefault>(kQELAssetAdditionalSubtitleIsDefault));

// ... where a document keeps it ...
static constexpr auto rules = mapping<declared>(
    attribute<&QELAssetAdditionalSubtitle::language>(),
    attribute<&QELAssetAdditionalSubtitle::url>("url", captured(kQELNSURLTransformer)),
    attribute<&QELAssetAdditionalSubtitle::isDefault>("default"));
constinit const FEMRulesOf<QELAssetAdditionalSubtitle> QELAssetAdditionalSubtitle::defaultRules = rules;

// ... and what makes two of them equal.
using Compared = FieldsOf<
    &QELAssetAdditionalSubtitle::language,
    &QELAssetAdditionalSubtitle::url,
    &QELAssetAdditionalSubtitle::isDefault>;

constinit const ObjectClassOf<QELAssetAdditionalSubtitle> QELAssetAdditionalSubtitle::objectClass(
    describe<declared, Compared, Compared>("QELAssetAdditionalSubtitle"));

}  // namespace QELMODELS_ABI
}  // namespace QELModels
