#pragma once

#include <functional>
#include <string_view>

#include "QELModels/Platform/Export.h"

/// Where the library's messages go.
///
/// Ready before the first static initialiser and until the process ends.
namespace QELModels {
inline namespace QELMODELS_ABI {
namespace Log {

/// Takes one message, without a line feed at its end; the text lives as long as the call.
using Sink = std::function<void(std::string_view line)>;

/// Sends all further messages to `sink`; an empty one sends them to standard error again. At any time and
/// from any thread; calls of the former sink that are under way finish with it. `sink` is called on whatever
/// threads have something to say, at once if they do.
QELMODELS_EXPORT void setSink(Sink sink);

/// Hands `line` to the sink, or writes it and a line feed to standard error in one piece. A message is never
/// a reason to fail: should the sink throw, the line goes to standard error.
QELMODELS_EXPORT void write(std::string_view line) noexcept;

}  // namespace Log
}  // namespace QELMODELS_ABI
}  // namespace QELModels
