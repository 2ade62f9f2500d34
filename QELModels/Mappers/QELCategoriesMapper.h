#pragma once

#include <string_view>

#include "QELModels/Mappers/QELMapperProtocol.h"
#include "QELModels/Models/QELCategory.h"
#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// Maps a page of categories.
class QELMODELS_EXPORT QELCategoriesMapper {
public:
    /// Where a page has its list.
    static constexpr std::string_view kKeyPath = "_embedded.categories";

    /// As `QELPageMapperProtocol` asks.
    static constexpr std::string_view listKeyPath() noexcept { return kKeyPath; }
    using Model = QELCategory;
    using Self = QELCategoriesMapper;

    /// The page's categories; an empty list when the page has none. Never null; `error` is never written.
    /// Throws `MappingFault` for a colour that is neither null nor a string; nothing is made then.
    Ref<List<QELCategory>> mappedResponseFromJSONObject(RepresentationView representation,
                                                        Error* error = nullptr,
                                                        const FEMOptions& options = {}) const;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
