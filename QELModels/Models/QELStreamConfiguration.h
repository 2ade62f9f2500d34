#pragma once

#include <cstdint>
#include <string_view>

#include "QELModels/Models/QELBaseModel.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Records/Field.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// The names of the properties of `QELStreamConfiguration`, as `propertyKeys` and `dictionaryValue` have
/// them.
inline constexpr std::string_view kQELStreamConfigurationProperties = "properties";

/// What `QELStreamConfiguration::configuration` answers: the protections found, or `None` alone.
enum QELStreamConfigurationFlags : std::int64_t {
    QELStreamConfigurationTokenSecured = 1 << 0,
    QELStreamConfigurationEncrypted = 1 << 1,
    QELStreamConfigurationGeoblocked = 1 << 2,
    QELStreamConfigurationPlayerVerified = 1 << 3,
    QELStreamConfigurationNone = 1 << 4,  ///< none of the others; never combined with them
};

/// How the stream of an asset is protected.
class QELMODELS_EXPORT QELStreamConfiguration : public Record<QELStreamConfiguration> {
public:
    Field<Array> properties;  ///< the names of the protections, as the content API lists them

    /// The protections as flags, computed from `properties` at every call. A declared property like the
    /// others, but one that cannot be set: `copyWithZone` of this record throws `MappingFault`.
    QELStreamConfigurationFlags configuration() const;

    /// Compares the fields with another record of this class; false for null.
    bool isEqualToConfiguration(const QELStreamConfiguration* other) const { return isEqualByFields(other); }

    static const ObjectClassOf<QELStreamConfiguration> objectClass;
    static const FEMRulesOf<QELStreamConfiguration> defaultRules;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
