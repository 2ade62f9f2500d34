#include "QELModels/Models/QELAssetSeries.h"

#include "QELModels/Mapping/FEMRules.h"
#include "QELModels/Platform/Declaration.h"

namespace QELModels::inline QELMODELS_ABI {

// What the record is made of ...
static constexpr auto declared =
    declare<QELAssetSeries>(property<&QELAssetSeries::seasonNumber>(kQELAssetSeriesSeasonNumber),
                            property<&QELAssetSeries::episodeNumber>(kQELAssetSeriesEpisodeNumber));

// ... where a document keeps it ...
static constexpr auto rules = mapping<declared>(attribute<&QELAssetSeries::episodeNumber>(),
                                                attribute<&QELAssetSeries::seasonNumber>());
constinit const FEMRules QELAssetSeries::defaultRules = rules;

constinit const ObjectClass QELAssetSeries::objectClass(describe<declared>("QELAssetSeries"));

}  // namespace QELModels::inline QELMODELS_ABI
