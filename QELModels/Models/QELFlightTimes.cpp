#include "QELModels/Models/QELFlightTimes.h"

#include "QELModels/Mapping/FEMRuleWords.h"
#include "QELModels/Records/Declaration.h"
#include "QELModels/Transformers/QELValueTransformerRegistry.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

// What the record is made of ...
static constexpr auto declared = declare<QELFlightTimes>(
    property<&QELFlightTimes::flightStart>(kQELFlightTimesStart),
    property<&QELFlightTimes::flightEnd>(kQELFlightTimesEnd));

// ... where a document keeps it ...
static constexpr auto rules = mapping<declared>(
    attribute<&QELFlightTimes::flightEnd>("end", captured(kQELTimestampTransformer)),
    attribute<&QELFlightTimes::flightStart>("start", captured(kQELTimestampTransformer)));
constinit const FEMRulesOf<QELFlightTimes> QELFlightTimes::defaultRules = rules;

constinit const ObjectClassOf<QELFlightTimes> QELFlightTimes::objectClass(
    describe<declared>("QELFlightTimes"));

}  // namespace QELMODELS_ABI
}  // namespace QELModels
