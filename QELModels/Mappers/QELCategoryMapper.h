#pragma once

#include "QELModels/Mappers/QELMapperProtocol.h"
#include "QELModels/Models/QELCategory.h"
#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// Maps the document of one category.
class QELCategoryMapper : public ObjectMapper<QELCategory> {};

static_assert(QELMapperProtocol<QELCategoryMapper>);

}  // namespace QELMODELS_ABI
}  // namespace QELModels
