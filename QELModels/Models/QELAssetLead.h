#pragma once

#include <string_view>

#include "QELModels/Models/QELBaseModel.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Records/Field.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// The names of the properties of `QELAssetLead`, as `propertyKeys` and `dictionaryValue` have them.
inline constexpr std::string_view kQELAssetLeadIdentifier = "assetLeadIdentifier";

/// A reference to another asset. Equal to itself alone.
class QELMODELS_EXPORT QELAssetLead : public Record<QELAssetLead> {
public:
    Field<Number> assetLeadIdentifier;  ///< identifier of the asset that is referred to

    static const ObjectClassOf<QELAssetLead> objectClass;
    static const FEMRulesOf<QELAssetLead> defaultRules;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
