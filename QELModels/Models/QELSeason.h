#pragma once

#include <string_view>

#include "QELModels/Models/QELAsset.h"
#include "QELModels/Models/QELBaseModel.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Records/Field.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// The names of the properties of `QELSeason`, as `propertyKeys` and `dictionaryValue` have them.
inline constexpr std::string_view kQELSeasonTitle = "title";
inline constexpr std::string_view kQELSeasonSeasonNumber = "seasonNumber";
inline constexpr std::string_view kQELSeasonAssets = "assets";

/// A season of a series and its episodes.
/// @see @ref seasonFacts
class QELMODELS_EXPORT QELSeason : public Record<QELSeason> {
public:
    Field<Text> title;  ///< cleaned of HTML
    Field<Number> seasonNumber;
    Field<List<QELAsset>> assets;  ///< its episodes, in the order of the document

    /// Compares the fields with another record of this class; false for null.
    bool isEqualToSeason(const QELSeason* other) const { return isEqualByFields(other); }

    static const ObjectClassOf<QELSeason> objectClass;
    static const FEMRulesOf<QELSeason> defaultRules;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
