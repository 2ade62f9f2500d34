#pragma once

#include <cstddef>
#include <string_view>

#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

/// How many bytes the mark takes that a document may begin with, U+FEFF; 0 without one.
constexpr std::size_t byteOrderMarkBytes(std::string_view document) noexcept {
    constexpr std::string_view kMark = "\xEF\xBB\xBF";
    return document.starts_with(kMark) ? kMark.size() : 0;
}

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
