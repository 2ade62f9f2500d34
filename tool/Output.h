#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include "QELModels/Platform/Export.h"

namespace QELModels::tool {

/// The results have no reader any more: the command ends without a message.
struct ClosedPipe {};

/// The results could not be written.
struct OutputFailure : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Standard output, written in large pieces. Throws `ClosedPipe` or `OutputFailure` when writing fails.
class Output {
public:
    Output() = default;
    Output(const Output&) = delete;
    Output& operator=(const Output&) = delete;

    /// Adds to what is to be written. It is written by `flush`, or earlier when it is long.
    void write(std::string_view text);
    void flush();

    /// Whether results may be coloured: they are shown on a terminal, for a person who has not asked for
    /// plain text.
    static bool isColored();

private:
    std::string waiting_;
};

/// Writes all of a text to a file descriptor. The error number, or 0 when all has been written.
int writeAll(int file, std::string_view text);

/// Writes a message, of one line or several, to standard error in one piece.
void report(std::string message);

}  // namespace QELModels::tool
