#pragma once

#include "QELModels/Mappers/QELMapperProtocol.h"
#include "QELModels/Models/QELCategory.h"
#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// Maps the document of one category.
class QELMODELS_EXPORT QELCategoryMapper {
public:
    /// The category; an empty one when the representation is no dictionary. Never null; `error` is never
    /// written. Throws `MappingFault`.
    Ref<QELCategory> mappedResponseFromJSONObject(RepresentationView representation, Error* error = nullptr,
                                                  const FEMOptions& options = {}) const;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
