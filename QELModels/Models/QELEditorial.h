#pragma once

#include <string_view>

#include "QELModels/Models/QELAsset.h"
#include "QELModels/Models/QELBaseModel.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Records/Field.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// The names of the properties of `QELEditorial`, as `propertyKeys` and `dictionaryValue` have them.
inline constexpr std::string_view kQELEditorialKey = "key";
inline constexpr std::string_view kQELEditorialAssetsIds = "assetsIdentifiers";
inline constexpr std::string_view kQELEditorialAssets = "assets";

/// A curated list of assets, filed under a text key.
/// @see @ref editorialFacts
class QELMODELS_EXPORT QELEditorial : public Record<QELEditorial> {
public:
    Field<Text> key;                 ///< such as "category-42"
    Field<Array> assetsIdentifiers;  ///< of the listed assets, in order, as the content API gives them
    Field<List<QELAsset>> assets;    ///< the listed assets that the document embeds

    /// Compares the fields with another record of this class; false for null.
    bool isEqualToEditorial(const QELEditorial* other) const { return isEqualByFields(other); }

    static const ObjectClassOf<QELEditorial> objectClass;
    static const FEMRulesOf<QELEditorial> defaultRules;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
