#include "QELModels/Models/QELAssetLead.h"

#include "QELModels/Mapping/FEMRuleWords.h"
#include "QELModels/Records/Declaration.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

// What the record is made of ...
static constexpr auto declared =
    declare<QELAssetLead>(property<&QELAssetLead::assetLeadIdentifier>(kQELAssetLeadIdentifier));

// ... where a document keeps it ...
static constexpr auto rules = mapping<declared>(attribute<&QELAssetLead::assetLeadIdentifier>("id"));
constinit const FEMRulesOf<QELAssetLead> QELAssetLead::defaultRules = rules;

constinit const ObjectClassOf<QELAssetLead> QELAssetLead::objectClass(describe<declared>("QELAssetLead"));

}  // namespace QELMODELS_ABI
}  // namespace QELModels
