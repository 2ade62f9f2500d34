#pragma once

#include <string_view>

#include "QELModels/Mappers/QELMapperProtocol.h"
#include "QELModels/Models/QELCategory.h"
#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// Maps a page of categories.
class QELCategoriesMapper : public PageMapper<QELCategoriesMapper, QELCategory> {
public:
    /// Where a page has its list.
    static constexpr std::string_view kKeyPath = "_embedded.categories";

    /// As `QELPageMapperProtocol` asks.
    static constexpr std::string_view listKeyPath() noexcept { return kKeyPath; }
};

static_assert(QELPageMapperProtocol<QELCategoriesMapper>);

}  // namespace QELMODELS_ABI
}  // namespace QELModels
