#pragma once

#include <cstdint>
#include <string>

#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// An error that an application passes along with a response. The library never makes one.
struct Error {
    std::string domain;     ///< which part of the application reports it
    std::int64_t code = 0;  ///< what happened, in the domain's own numbers
    std::string message;    ///< for people

    friend bool operator==(const Error&, const Error&) = default;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
