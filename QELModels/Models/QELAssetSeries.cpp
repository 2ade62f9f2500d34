#include "QELModels/Models/QELAssetSeries.h"

#include "QELModels/Mapping/FEMRuleWords.h"
#include "QELModels/Records/Declaration.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

// What the record is made of ...
static constexpr auto declared = declare<QELAssetSeries>(
    property<&QELAssetSeries::seasonNumber>(kQELAssetSeriesSeasonNumber),
    property<&QELAssetSeries::episodeNumber>(kQELAssetSeriesEpisodeNumber));

// ... where a document keeps it ...
static constexpr auto rules = mapping<declared>(
    attribute<&QELAssetSeries::episodeNumber>(), attribute<&QELAssetSeries::seasonNumber>());
constinit const FEMRulesOf<QELAssetSeries> QELAssetSeries::defaultRules = rules;

constinit const ObjectClassOf<QELAssetSeries> QELAssetSeries::objectClass(
    describe<declared>("QELAssetSeries"));

}  // namespace QELMODELS_ABI
}  // namespace QELModels
