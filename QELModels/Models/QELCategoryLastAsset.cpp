#include "QELModels/Models/QELCategoryLastAsset.h"

#include "QELModels/Mapping/FEMRuleWords.h"
#include "QELModels/Records/Declaration.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

// What the record is made of ...
static constexpr auto declared = declare<QELCategoryLastAsset>(
    property<&QELCategoryLastAsset::lastAssetIdentifier>(kQELCategoryLastAssetIdentifier));

// ... where a document keeps it ...
static constexpr auto rules = mapping<declared>(attribute<&QELCategoryLastAsset::lastAssetIdentifier>("id"));
constinit const FEMRulesOf<QELCategoryLastAsset> QELCategoryLastAsset::defaultRules = rules;

// ... and what makes two of them equal.
using Compared = FieldsOf<&QELCategoryLastAsset::lastAssetIdentifier>;

constinit const ObjectClassOf<QELCategoryLastAsset> QELCategoryLastAsset::objectClass(
    describe<declared, Compared, Compared>("QELCategoryLastAsset"));

}  // namespace QELMODELS_ABI
}  // namespace QELModels
