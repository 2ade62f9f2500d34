#pragma once

#include <string_view>

#include "QELModels/Mappers/QELMapperProtocol.h"
#include "QELModels/Models/QELSeason.h"
#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// Maps a page of seasons.
class QELMODELS_EXPORT QELSeasonsMapper {
public:
    /// Where a page has its list.
    static constexpr std::string_view kKeyPath = "_embedded.seasons";

    /// As `QELPageMapperProtocol` asks.
    static constexpr std::string_view listKeyPath() noexcept { return kKeyPath; }
    using Model = QELSeason;
    using Self = QELSeasonsMapper;

    /// The page's seasons; an empty list when the page has none. Never null; `error` is never written.
    /// Throws `MappingFault` for a colour that is neither null nor a string; nothing is made then.
    Ref<List<QELSeason>> mappedResponseFromJSONObject(RepresentationView representation,
                                                      Error* error = nullptr,
                                                      const FEMOptions& options = {}) const;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
