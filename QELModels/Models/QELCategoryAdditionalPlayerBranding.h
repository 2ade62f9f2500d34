#pragma once

#include <string_view>

#include "QELModels/Models/QELBaseModel.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Records/Field.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// The names of the properties of `QELCategoryAdditionalPlayerBranding`, as `propertyKeys` and
/// `dictionaryValue` have them.
inline constexpr std::string_view kQELCategoryAdditionalPlayerBrandingIdentifier = "playerBrandingIdentifier";
inline constexpr std::string_view kQELCategoryAdditionalPlayerBrandingPlayerBackground = "playerBackground";
inline constexpr std::string_view kQELCategoryAdditionalPlayerBrandingLink = "link";

/// The branded background and link that the player shows for a category.
class QELMODELS_EXPORT QELCategoryAdditionalPlayerBranding : public QELBaseModel {
public:
    using QELBaseModel::QELBaseModel;

    Field<Number> playerBrandingIdentifier;  ///< the content API's "id"
    Field<URL> playerBackground;
    Field<URL> link;  ///< where a tap on it leads

    /// How a document fills it, made anew at every call.
    static FEMMapping defaultMapping() { return FEMMapping(defaultRules); }

    /// Compares the fields with another record of this class; false for null.
    bool isEqualToBranding(const QELCategoryAdditionalPlayerBranding* other) const {
        return isEqualByFields(other);
    }

    static const ObjectClass objectClass;
    static const FEMRules defaultRules;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
