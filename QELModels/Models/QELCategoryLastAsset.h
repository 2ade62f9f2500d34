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
class QELMODELS_EXPORT QELCategoryLastAsset : public Record<QELCategoryLastAsset> {
public:
    Field<Number> lastAssetIdentifier;  ///< "id" in a document

    /// Compares the fields with another record of this class; false for null.
    bool isEqualToAsset(const QELCategoryLastAsset* other) const { return isEqualByFields(other); }

    static const ObjectClassOf<QELCategoryLastAsset> objectClass;
    static const FEMRulesOf<QELCategoryLastAsset> defaultRules;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
