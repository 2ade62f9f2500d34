#pragma once

#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

// Objects, not compile-time constants: they have the version of the library that a program runs with, which
// may not be the one that it was compiled with.

/// The version of the library, major and minor, as a number: 1.0.
QELMODELS_EXPORT extern const double QELModelsVersionNumber;

/// The library's identification string, zero-terminated, ending in a newline. It begins with "@(#)", by which
/// tools find it in a binary file.
QELMODELS_EXPORT extern const char QELModelsVersionString[];

}  // namespace QELMODELS_ABI
}  // namespace QELModels
