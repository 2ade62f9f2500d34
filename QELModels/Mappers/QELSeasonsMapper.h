#pragma once

#include <string_view>

#include "QELModels/Mappers/QELMapperProtocol.h"
#include "QELModels/Models/QELSeason.h"
#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// Maps a page of seasons.
class QELSeasonsMapper : public PageMapper<QELSeasonsMapper, QELSeason> {
public:
    /// Where a page has its list.
    static constexpr std::string_view kKeyPath = "_embedded.seasons";

    /// As `QELPageMapperProtocol` asks.
    static constexpr std::string_view listKeyPath() noexcept { return kKeyPath; }
};

static_assert(QELPageMapperProtocol<QELSeasonsMapper>);

}  // namespace QELMODELS_ABI
}  // namespace QELModels
