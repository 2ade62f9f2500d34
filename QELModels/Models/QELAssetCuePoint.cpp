#include "QELModels/Models/QELAssetCuePoint.h"

#include "QELModels/Mapping/FEMRuleWords.h"
#include "QELModels/Records/Declaration.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

// What the record is made of ...
static constexpr auto declared =
    declare<QELAssetCuePoint>(property<&QELAssetCuePoint::timeline>(kQELCuePointsTimeline));

// ... where a document keeps it ...
static constexpr auto rules = mapping<declared>(attribute<&QELAssetCuePoint::timeline>());
constinit const FEMRulesOf<QELAssetCuePoint> QELAssetCuePoint::defaultRules = rules;

constinit const ObjectClassOf<QELAssetCuePoint> QELAssetCuePoint::objectClass(
    describe<declared>("QELAssetCuePoint"));

}  // namespace QELMODELS_ABI
}  // namespace QELModels
