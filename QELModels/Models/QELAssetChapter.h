#pragma once

#include <string_view>

#include "QELModels/Models/QELBaseModel.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Records/Field.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// The names of the properties of `QELAssetChapter`, as `propertyKeys` and `dictionaryValue` have them.
inline constexpr std::string_view kQELChaptersTitle = "title";
inline constexpr std::string_view kQELChaptersDescription = "chapterDescription";
inline constexpr std::string_view kQELChaptersTimeline = "timeline";
inline constexpr std::string_view kQELChaptersFeatured = "featured";

/// A named point in the timeline of an asset. In effect equal to itself alone, since identity is asked
/// first.
class QELMODELS_EXPORT QELAssetChapter : public Record<QELAssetChapter> {
public:
    Field<Text> title;               ///< cleaned of HTML
    Field<Text> chapterDescription;  ///< cleaned of HTML
    Field<Number> timeline;          ///< its position, in the unit of the content API
    Field<bool> featured;            ///< picked for featuring

    /// True for this very chapter alone: identity is asked before the fields.
    bool isEqualToChapter(const QELAssetChapter* other) const { return isEqualByFields(other); }

    static const ObjectClassOf<QELAssetChapter> objectClass;
    static const FEMRulesOf<QELAssetChapter> defaultRules;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
