#pragma once

#include <string_view>

#include "QELModels/Models/QELBaseModel.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Records/Field.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// The names of the properties of `QELAssetCuePoint`, as `propertyKeys` and `dictionaryValue` have them.
inline constexpr std::string_view kQELCuePointsTimeline = "timeline";

/// A point in the timeline of an asset where an advertisement may be put in. Equal to itself alone.
class QELMODELS_EXPORT QELAssetCuePoint : public Record<QELAssetCuePoint> {
public:
    Field<Number> timeline;  ///< in the unit of the chapters

    static const ObjectClassOf<QELAssetCuePoint> objectClass;
    static const FEMRulesOf<QELAssetCuePoint> defaultRules;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
