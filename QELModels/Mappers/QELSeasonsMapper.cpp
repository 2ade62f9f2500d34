#include "QELModels/Mappers/QELSeasonsMapper.h"

namespace QELModels::inline QELMODELS_ABI {

static_assert(QELPageMapperProtocol<QELSeasonsMapper>);

Ref<List<QELSeason>> QELSeasonsMapper::mappedResponseFromJSONObject(RepresentationView representation, Error*,
                                                                    const FEMOptions& options) const {
    return mappedPage<QELSeason>(representation, kKeyPath, options);
}

}  // namespace QELModels::inline QELMODELS_ABI
