#pragma once

#include <cstddef>
#include <string_view>

#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

/// `HTMLRemoval::withoutHTMLTags` in whole blocks. Requires: `kSlack` bytes after the text may be
/// read, and as many after its size in `to` may be written.
QELMODELS_EXPORT std::size_t withoutHTMLTagsOfBlock(std::string_view text, char* to) noexcept;

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
