#pragma once

#include <stdexcept>

#include "QELModels/Platform/Export.h"

/// @file
/// How a command ends, and what it throws to end early. Whatever else is thrown, a fault of a mapping
/// included, becomes a message and `badInput` where commands are run.

namespace QELModels::tool {

/// How a command ends.
enum class ExitStatus : int { success = 0, badInput = 1, badUsage = 2 };

/// What is wrong with a document, or with a file. The message is complete: where, what, and the place in the
/// text if there is one.
struct BadInput : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// The command cannot be called in this way: one line for people, who are then pointed to `--help`.
struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

}  // namespace QELModels::tool
