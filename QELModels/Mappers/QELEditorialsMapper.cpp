#include "QELModels/Mappers/QELEditorialsMapper.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

static_assert(QELPageMapperProtocol<QELEditorialsMapper>);

Ref<List<QELEditorial>> QELEditorialsMapper::mappedResponseFromJSONObject(RepresentationView representation,
                                                                          Error*,
                                                                          const FEMOptions& options) const {
    return mappedPage<QELEditorial>(representation, kKeyPath, options);
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
