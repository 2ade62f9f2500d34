#pragma once

#include "QELModels/Mappers/QELMapperProtocol.h"
#include "QELModels/Models/QELSeason.h"
#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// Maps the document of one season.
class QELSeasonMapper : public ObjectMapper<QELSeason> {};

static_assert(QELMapperProtocol<QELSeasonMapper>);

}  // namespace QELMODELS_ABI
}  // namespace QELModels
