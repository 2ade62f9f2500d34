#include "QELModels/Models/QELCategory.h"

#include "QELModels/Mapping/FEMRuleWords.h"
#include "QELModels/Records/Declaration.h"
#include "QELModels/Transformers/QELValueTransformerRegistry.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

// What the record is made of ...
static constexpr auto declared = declare<QELCategory>(
    property<&QELCategory::categoryIdentifier>(kQELCategoryIdentifier),
    property<&QELCategory::title>(kQELCategoryTitle),
    property<&QELCategory::parentIdentifier>(kQELCategoryParentIdentifier),
    property<&QELCategory::showCategory>(kQELCategoryShowCategory),
    property<&QELCategory::isSeries>(kQELCategoryIsSeries),
    property<&QELCategory::order>(kQELCategoryOrder),
    property<&QELCategory::ageLimit>(kQELCategoryAgeLimit),
    property<&QELCategory::stats>(kQELCategoryStats),
    property<&QELCategory::lastAsset>(kQELCategoryLastAsset),
    property<&QELCategory::additional>(kQELCategoryAdditional));

// ... where a document keeps it ...
static constexpr auto rules = mapping<declared>(
    attribute<&QELCategory::parentIdentifier>("parentId"),
    attribute<&QELCategory::categoryIdentifier>("id"),
    attribute<&QELCategory::order>(),
    attribute<&QELCategory::isSeries>(),
    attribute<&QELCategory::stats>(),
    attribute<&QELCategory::showCategory>(),
    attribute<&QELCategory::ageLimit>(),
    relationship<&QELCategory::lastAsset>(),
    relationship<&QELCategory::additional>(),
    attribute<&QELCategory::title>("title", fetched(kQELHTMLTransformer)));
constinit const FEMRulesOf<QELCategory> QELCategory::defaultRules = rules;

// ... and what makes two of them equal.
using Compared = FieldsOf<
    &QELCategory::categoryIdentifier,
    &QELCategory::title,
    &QELCategory::parentIdentifier,
    &QELCategory::showCategory,
    &QELCategory::isSeries,
    &QELCategory::order,
    &QELCategory::ageLimit,
    &QELCategory::stats,
    &QELCategory::lastAsset,
    &QELCategory::additional>;

constinit const ObjectClassOf<QELCategory> QELCategory::objectClass(
    describe<declared, Compared, Compared>("QELCategory"));

}  // namespace QELMODELS_ABI
}  // namespace QELModels
