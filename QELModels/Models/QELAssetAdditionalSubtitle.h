#pragma once

#include <string_view>

#include "QELModels/Models/QELBaseModel.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Records/Field.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// The names of the properties of `QELAssetAdditionalSubtitle`, as `propertyKeys` and `dictionaryValue` have
/// them.
inline constexpr std::string_view kQELAssetAdditionalSubtitleLanguage = "language";
inline constexpr std::string_view kQELAssetAdditionalSubtitleURL = "url";
inline constexpr std::string_view kQELAssetAdditionalSubtitleIsDefault = "isDefault";

/// A subtitle track of an asset.
class QELMODELS_EXPORT QELAssetAdditionalSubtitle : public Record<QELAssetAdditionalSubtitle> {
public:
    Field<Text> language;   ///< as the content API gives it
    Field<URL> url;         ///< where the subtitle file is
    Field<bool> isDefault;  ///< "default" in a document

    /// Compares the fields with another record of this class; false for null.
    bool isEqualToSubtitle(const QELAssetAdditionalSubtitle* other) const { return isEqualByFields(other); }

    static const ObjectClassOf<QELAssetAdditionalSubtitle> objectClass;
    static const FEMRulesOf<QELAssetAdditionalSubtitle> defaultRules;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
