#include "QELModels/Mappers/QELEditorialMapper.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

static_assert(QELMapperProtocol<QELEditorialMapper>);

Ref<QELEditorial> QELEditorialMapper::mappedResponseFromJSONObject(RepresentationView representation, Error*,
                                                                   const FEMOptions& options) const {
    return mappedObject<QELEditorial>(representation, options);
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
