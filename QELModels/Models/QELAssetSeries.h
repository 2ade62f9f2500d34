#pragma once

#include <string_view>

#include "QELModels/Models/QELBaseModel.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Records/Field.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// The names of the properties of `QELAssetSeries`, as `propertyKeys` and `dictionaryValue` have them.
inline constexpr std::string_view kQELAssetSeriesSeasonNumber = "seasonNumber";
inline constexpr std::string_view kQELAssetSeriesEpisodeNumber = "episodeNumber";

/// The place of an asset in a series. Equal to itself alone.
class QELMODELS_EXPORT QELAssetSeries : public Record<QELAssetSeries> {
public:
    Field<Number> seasonNumber;   ///< as the content API counts seasons
    Field<Number> episodeNumber;  ///< within the season

    static const ObjectClassOf<QELAssetSeries> objectClass;
    static const FEMRulesOf<QELAssetSeries> defaultRules;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
