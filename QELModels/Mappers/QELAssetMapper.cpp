#include "QELModels/Mappers/QELAssetMapper.h"

namespace QELModels::inline QELMODELS_ABI {

static_assert(QELMapperProtocol<QELAssetMapper>);

Ref<QELAsset> QELAssetMapper::mappedResponseFromJSONObject(RepresentationView representation, Error*,
                                                           const FEMOptions& options) const {
    return mappedObject<QELAsset>(representation, options);
}

}  // namespace QELModels::inline QELMODELS_ABI
