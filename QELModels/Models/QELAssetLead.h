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
class QELMODELS_EXPORT QELAssetLead : public QELBaseModel {
public:
    using QELBaseModel::QELBaseModel;

    Field<Number> assetLeadIdentifier;  ///< identifier of the asset that is referred to

    /// How a document fills it, made anew at every call.
    static FEMMapping defaultMapping() { return FEMMapping(defaultRules); }

    static const ObjectClass objectClass;
    static const FEMRules defaultRules;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
