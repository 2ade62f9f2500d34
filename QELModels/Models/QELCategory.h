#pragma once

#include <string_view>

#include "QELModels/Models/QELBaseModel.h"
#include "QELModels/Models/QELCategoryAdditional.h"
#include "QELModels/Models/QELCategoryLastAsset.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Records/Field.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// The names of the properties of `QELCategory`, as `propertyKeys` and `dictionaryValue` have them.
inline constexpr std::string_view kQELCategoryIdentifier = "categoryIdentifier";
inline constexpr std::string_view kQELCategoryTitle = "title";
inline constexpr std::string_view kQELCategoryParentIdentifier = "parentIdentifier";
inline constexpr std::string_view kQELCategoryShowCategory = "showCategory";
inline constexpr std::string_view kQELCategoryIsSeries = "isSeries";
inline constexpr std::string_view kQELCategoryOrder = "order";
inline constexpr std::string_view kQELCategoryAgeLimit = "ageLimit";
inline constexpr std::string_view kQELCategoryStats = "stats";
inline constexpr std::string_view kQELCategoryLastAsset = "lastAsset";
inline constexpr std::string_view kQELCategoryAdditional = "additional";

/// A node of the programme tree: a show, a series, a section of the site.
/// @see @ref categoryFacts
class QELMODELS_EXPORT QELCategory : public Record<QELCategory> {
public:
    Field<Number> categoryIdentifier;  ///< the content API's "id"
    Field<Text> title;                 ///< cleaned of HTML
    Field<Number> parentIdentifier;    ///< null for a top-level category
    Field<bool> showCategory;          ///< whether it is to be shown
    Field<bool> isSeries;              ///< its assets are episodes
    Field<Number> order;               ///< among its siblings
    Field<Number> ageLimit;
    Field<Text> stats;                        ///< statistics, as the content API gives them
    Field<QELCategoryLastAsset> lastAsset;    ///< its newest asset
    Field<QELCategoryAdditional> additional;  ///< presentation and playback

    /// Compares the fields with another record of this class; false for null.
    bool isEqualToCategory(const QELCategory* other) const { return isEqualByFields(other); }

    static const ObjectClassOf<QELCategory> objectClass;
    static const FEMRulesOf<QELCategory> defaultRules;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
