#pragma once

#include "QELModels/Mappers/QELMapperProtocol.h"
#include "QELModels/Models/QELEditorial.h"
#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// Maps the document of one editorial.
class QELMODELS_EXPORT QELEditorialMapper {
public:
    /// The editorial; an empty one when the representation is no dictionary. Never null; `error` is never
    /// written. Throws `MappingFault`.
    Ref<QELEditorial> mappedResponseFromJSONObject(RepresentationView representation, Error* error = nullptr,
                                                   const FEMOptions& options = {}) const;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
