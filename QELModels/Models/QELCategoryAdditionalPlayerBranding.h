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
class QELMODELS_EXPORT QELCategoryAdditionalPlayerBranding
    : public Record<QELCategoryAdditionalPlayerBranding> {
public:
    Field<Number> playerBrandingIdentifier;  ///< the content API's "id"
    Field<URL> playerBackground;
    Field<URL> link;  ///< where a tap on it leads

    /// Compares the fields with another record of this class; false for null.
    bool isEqualToBranding(const QELCategoryAdditionalPlayerBranding* other) const {
        return isEqualByFields(other);
    }

    static const ObjectClassOf<QELCategoryAdditionalPlayerBranding> objectClass;
    static const FEMRulesOf<QELCategoryAdditionalPlayerBranding> defaultRules;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
