#pragma once

#include <string>
#include <string_view>

#include "QELModels/Mappers/QELMapperProtocol.h"
#include "QELModels/Models/QELAsset.h"
#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// Maps a page of assets. The one mapper with a setting: where in the page the list is.
class QELAssetsMapper : public PageMapper<QELAssetsMapper, QELAsset> {
public:
    /// Where a page has its list unless an application says otherwise.
    static constexpr std::string_view kDefaultAssetsKeyPath = "_embedded.assets";

    QELAssetsMapper() : assetsKeyPath_(kDefaultAssetsKeyPath) {}

    /// The key path of the list. Not to be set while another thread maps with this mapper.
    const std::string& assetsKeyPath() const noexcept QELMODELS_LENT { return assetsKeyPath_; }
    /// Keeps a copy of the key path; an empty one means the default.
    void setAssetsKeyPath(std::string_view keyPath) {
        assetsKeyPath_ = keyPath.empty() ? kDefaultAssetsKeyPath : keyPath;
    }

    /// As `QELPageMapperProtocol` asks.
    std::string_view listKeyPath() const noexcept QELMODELS_LENT { return assetsKeyPath_; }

private:
    std::string assetsKeyPath_;
};

static_assert(QELPageMapperProtocol<QELAssetsMapper>);

}  // namespace QELMODELS_ABI
}  // namespace QELModels
