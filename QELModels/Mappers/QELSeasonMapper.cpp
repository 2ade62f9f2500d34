#include "QELModels/Mappers/QELSeasonMapper.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

static_assert(QELMapperProtocol<QELSeasonMapper>);

Ref<QELSeason> QELSeasonMapper::mappedResponseFromJSONObject(RepresentationView representation, Error*,
                                                             const FEMOptions& options) const {
    return mappedObject<QELSeason>(representation, options);
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
