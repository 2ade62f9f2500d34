#include "QELModels/Mappers/QELSeasonsMapper.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

static_assert(QELPageMapperProtocol<QELSeasonsMapper>);

Ref<List<QELSeason>> QELSeasonsMapper::mappedResponseFromJSONObject(RepresentationView representation, Error*,
                                                                    const FEMOptions& options) const {
    return mappedPage<QELSeason>(representation, kKeyPath, options);
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
