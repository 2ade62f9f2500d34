#include "QELModels/Mappers/QELCategoriesMapper.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

static_assert(QELPageMapperProtocol<QELCategoriesMapper>);

Ref<List<QELCategory>> QELCategoriesMapper::mappedResponseFromJSONObject(RepresentationView representation,
                                                                         Error*,
                                                                         const FEMOptions& options) const {
    return mappedPage<QELCategory>(representation, kKeyPath, options);
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
