#pragma once

#include <string_view>

#include "QELModels/Models/QELBaseModel.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Records/Field.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// The names of the properties of `QELFlightTimes`, as `propertyKeys` and `dictionaryValue` have them.
inline constexpr std::string_view kQELFlightTimesStart = "flightStart";
inline constexpr std::string_view kQELFlightTimesEnd = "flightEnd";

/// The period in which an asset is on air. Equal to itself alone.
class QELMODELS_EXPORT QELFlightTimes : public Record<QELFlightTimes> {
public:
    Field<Date> flightStart;  ///< when it goes on air; null: not known
    Field<Date> flightEnd;    ///< when it goes off air; null: not known

    static const ObjectClassOf<QELFlightTimes> objectClass;
    static const FEMRulesOf<QELFlightTimes> defaultRules;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
