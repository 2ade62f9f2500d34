#include "QELModels/Mappers/QELAssetsMapper.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

static_assert(QELPageMapperProtocol<QELAssetsMapper>);

Ref<List<QELAsset>> QELAssetsMapper::mappedResponseFromJSONObject(RepresentationView representation, Error*,
                                                                  const FEMOptions& options) const {
    return mappedPage<QELAsset>(representation, assetsKeyPath_, options);
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
