#pragma once

#include "QELModels/Mappers/QELMapperProtocol.h"
#include "QELModels/Models/QELSeason.h"
#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// Maps the document of one season.
class QELMODELS_EXPORT QELSeasonMapper {
public:
    /// The season; an empty one when the representation is no dictionary. Never null; `error` is never
    /// written. Throws `MappingFault`.
    Ref<QELSeason> mappedResponseFromJSONObject(RepresentationView representation, Error* error = nullptr,
                                                const FEMOptions& options = {}) const;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
