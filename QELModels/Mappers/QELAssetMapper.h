#pragma once

#include "QELModels/Mappers/QELMapperProtocol.h"
#include "QELModels/Models/QELAsset.h"
#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// Maps the document of one asset.
class QELAssetMapper : public ObjectMapper<QELAsset> {};

static_assert(QELMapperProtocol<QELAssetMapper>);

}  // namespace QELMODELS_ABI
}  // namespace QELModels
