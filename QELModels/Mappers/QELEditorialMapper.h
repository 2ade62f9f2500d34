#pragma once

#include "QELModels/Mappers/QELMapperProtocol.h"
#include "QELModels/Models/QELEditorial.h"
#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// Maps the document of one editorial.
class QELEditorialMapper : public ObjectMapper<QELEditorial> {};

static_assert(QELMapperProtocol<QELEditorialMapper>);

}  // namespace QELMODELS_ABI
}  // namespace QELModels
