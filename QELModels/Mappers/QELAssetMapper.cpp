#include "QELModels/Mappers/QELAssetMapper.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

static_assert(QELMapperProtocol<QELAssetMapper>);

Ref<QELAsset> QELAssetMapper::mappedResponseFromJSONObject(RepresentationView representation, Error*,
                                                           const FEMOptions& options) const {
    return mappedObject<QELAsset>(representation, options);
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
