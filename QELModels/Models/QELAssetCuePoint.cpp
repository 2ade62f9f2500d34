#include "QELModels/Models/QELAssetCuePoint.h"

#include "QELModels/Mapping/FEMRules.h"
#include "QELModels/Platform/Declaration.h"

namespace QELModels::inline QELMODELS_ABI {

// What the record is made of ...
static constexpr auto declared =
    declare<QELAssetCuePoint>(property<&QELAssetCuePoint::timeline>(kQELCuePointsTimeline));

// ... where a document keeps it ...
static constexpr auto rules = mapping<declared>(attribute<&QELAssetCuePoint::timeline>());
constinit const FEMRules QELAssetCuePoint::defaultRules = rules;

constinit const ObjectClass QELAssetCuePoint::objectClass(describe<declared>("QELAssetCuePoint"));

}  // namespace QELModels::inline QELMODELS_ABI
