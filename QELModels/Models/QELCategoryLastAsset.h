#pragma once

#include <string_view>

#include "QELModels/Models/QELBaseModel.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Records/Field.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// The names of the properties of `QELCategoryLastAsset`, as `propertyKeys` and `dictionaryValue` have them.
inline constexpr std::string_view kQELCategoryLastAssetIdentifier = "lastAssetIdentifier";

/// A reference to the newest asset of a category.
class QELMODELS_EXPORT QELCategoryLastAsset : public QELBaseModel {
public:
    using QELBaseModel::QELBaseModel;

    Field<Number> lastAssetIdentifier;  ///< "id" in a document

    /// How a document fills it, made anew at every call.
    static FEMMapping defaultMapping() { return FEMMapping(defaultRules); }

    /// Compares the fields with another record of this class; false for null.
    bool isEqualToAsset(const QELCategoryLastAsset* other) const { return isEqualByFields(other); }

    static const ObjectClass objectClass;
    static const FEMRules defaultRules;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
