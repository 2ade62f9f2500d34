#pragma once

#include <cstddef>
#include <string_view>

#include "JSON/JSONReader.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

/// The first mistake in a document that the reader has refused. Slow and simple, byte by byte: a reader that
/// has to be fast need not know where it is.
JSONError locateError(std::string_view document, std::size_t maxDepth);

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
