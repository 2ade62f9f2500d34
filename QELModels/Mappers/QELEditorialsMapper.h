#pragma once

#include <string_view>

#include "QELModels/Mappers/QELMapperProtocol.h"
#include "QELModels/Models/QELEditorial.h"
#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// Maps a page of editorials.
class QELMODELS_EXPORT QELEditorialsMapper {
public:
    /// Where a page has its list. Singular, unlike the lists of the other pages: the content API has it so.
    static constexpr std::string_view kKeyPath = "_embedded.editorial";

    /// As `QELPageMapperProtocol` asks.
    static constexpr std::string_view listKeyPath() noexcept { return kKeyPath; }
    using Model = QELEditorial;
    using Self = QELEditorialsMapper;

    /// The page's editorials; an empty list when the page has none. Never null; `error` is never written.
    /// Throws `MappingFault` for a colour that is neither null nor a string; nothing is made then.
    Ref<List<QELEditorial>> mappedResponseFromJSONObject(RepresentationView representation,
                                                         Error* error = nullptr,
                                                         const FEMOptions& options = {}) const;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
