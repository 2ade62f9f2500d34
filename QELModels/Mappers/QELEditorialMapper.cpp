#include "QELModels/Mappers/QELEditorialMapper.h"

namespace QELModels::inline QELMODELS_ABI {

static_assert(QELMapperProtocol<QELEditorialMapper>);

Ref<QELEditorial> QELEditorialMapper::mappedResponseFromJSONObject(RepresentationView representation, Error*,
                                                                   const FEMOptions& options) const {
    return mappedObject<QELEditorial>(representation, options);
}

}  // namespace QELModels::inline QELMODELS_ABI
