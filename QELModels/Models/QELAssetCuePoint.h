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
class QELMODELS_EXPORT QELAssetCuePoint : public QELBaseModel {
public:
    using QELBaseModel::QELBaseModel;

    Field<Number> timeline;  ///< in the unit of the chapters

    /// How a document fills it, made anew at every call.
    static FEMMapping defaultMapping() { return FEMMapping(defaultRules); }

    static const ObjectClass objectClass;
    static const FEMRules defaultRules;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
