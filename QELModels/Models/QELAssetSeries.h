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
class QELMODELS_EXPORT QELAssetSeries : public QELBaseModel {
public:
    using QELBaseModel::QELBaseModel;

    Field<Number> seasonNumber;   ///< as the content API counts seasons
    Field<Number> episodeNumber;  ///< within the season

    /// How a document fills it, made anew at every call.
    static FEMMapping defaultMapping() { return FEMMapping(defaultRules); }

    static const ObjectClass objectClass;
    static const FEMRules defaultRules;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
