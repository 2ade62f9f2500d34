#pragma once

#include "QELModels/Mappers/QELMapperProtocol.h"
#include "QELModels/Models/QELAsset.h"
#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// Maps the document of one asset.
class QELMODELS_EXPORT QELAssetMapper {
public:
    /// The asset; an empty one when the representation is no dictionary. Never null; `error` is never
    /// written. Throws `MappingFault`.
    Ref<QELAsset> mappedResponseFromJSONObject(RepresentationView representation, Error* error = nullptr,
                                               const FEMOptions& options = {}) const;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
