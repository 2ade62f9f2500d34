#pragma once

#include <functional>
#include <string_view>

#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// Where the library's messages go.
///
/// Usable before the first static initialiser and until the process ends.
namespace Log {

/// Receives one message, without a line feed at its end. The text lives as long as the call.
using Sink = std::function<void(std::string_view line)>;

/// Sends all further messages to `sink`; an empty one sends them to standard error again. May be called at
/// any time and from any thread; calls of the former sink that have begun end with it. `sink` is called on
/// the threads that write messages, concurrently.
QELMODELS_EXPORT void setSink(Sink sink);

/// Passes `line` to the sink, or writes it and a line feed to standard error in one piece. Never fails: if
/// the sink throws, the line is written to standard error.
QELMODELS_EXPORT void write(std::string_view line) noexcept;

}  // namespace Log
}  // namespace QELMODELS_ABI
}  // namespace QELModels
