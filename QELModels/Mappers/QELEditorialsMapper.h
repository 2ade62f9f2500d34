#pragma once

#include <string_view>

#include "QELModels/Mappers/QELMapperProtocol.h"
#include "QELModels/Models/QELEditorial.h"
#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// Maps a page of editorials.
class QELEditorialsMapper : public PageMapper<QELEditorialsMapper, QELEditorial> {
public:
    /// Where a page has its list. Singular, unlike the lists of the other pages: the content API has it so.
    static constexpr std::string_view kKeyPath = "_embedded.editorial";

    /// As `QELPageMapperProtocol` asks.
    static constexpr std::string_view listKeyPath() noexcept { return kKeyPath; }
};

static_assert(QELPageMapperProtocol<QELEditorialsMapper>);

}  // namespace QELMODELS_ABI
}  // namespace QELModels
