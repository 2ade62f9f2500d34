#pragma once

#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

/// A constant of the process whose class has a virtual destructor. Declared `constexpr`, it is there before
/// the first static initialiser and after the last destructor: nothing runs for it at either end.
template <class T>
union NeverDestroyed {
    constexpr NeverDestroyed() noexcept : value() {}
    // The destructor of a union does not destroy its members.
    constexpr ~NeverDestroyed() {}

    T value;
};

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
