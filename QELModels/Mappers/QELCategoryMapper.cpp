#include "QELModels/Mappers/QELCategoryMapper.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

static_assert(QELMapperProtocol<QELCategoryMapper>);

Ref<QELCategory> QELCategoryMapper::mappedResponseFromJSONObject(RepresentationView representation, Error*,
                                                                 const FEMOptions& options) const {
    return mappedObject<QELCategory>(representation, options);
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
