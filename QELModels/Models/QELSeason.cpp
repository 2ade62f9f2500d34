#include "QELModels/Models/QELSeason.h"

#include "QELModels/Mapping/FEMRuleWords.h"
#include "QELModels/Records/Declaration.h"
#include "QELModels/Transformers/QELValueTransformerRegistry.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

// What the record is made of ...
static constexpr auto declared = declare<QELSeason>(
    property<&QELSeason::title>(kQELSeasonTitle),
    property<&QELSeason::seasonNumber>(kQELSeasonSeasonNumber),
    property<&QELSeason::assets>(kQELSeasonAssets));

// ... where a document keeps it ...
static constexpr auto rules = mapping<declared>(
    attribute<&QELSeason::seasonNumber>(),
    attribute<&QELSeason::title>("title", captured(kQELHTMLTransformer)),
    relationship<&QELSeason::assets>());
constinit const FEMRulesOf<QELSeason> QELSeason::defaultRules = rules;

// ... and what makes two of them equal.
using Compared = FieldsOf<&QELSeason::title, &QELSeason::seasonNumber, &QELSeason::assets>;

constinit const ObjectClassOf<QELSeason> QELSeason::objectClass(
    describe<declared, Compared, Compared>("QELSeason", Lives::inItsOwnBlock));

}  // namespace QELMODELS_ABI
}  // namespace QELModels
