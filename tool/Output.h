#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include "QELModels/Platform/Export.h"

namespace QELModels::tool {

/// Nobody reads the results any more: the command ends without a word.
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

    /// Adds to what is to be written. It is written by `flush`, and before that when there is much of it.
    void write(std::string_view text);
    void flush();

    /// Whether results may be coloured: a person watches them on a terminal and has not asked for plain text.
    static bool isColored();

private:
    std::string waiting_;
};

/// Writes all of a text to a file descriptor. The error number, or 0 when all has been written.
int writeAll(int file, std::string_view text);

/// Writes a message, of one line or several, to standard error in one piece.
void report(std::string message);

}  // namespace QELModels::tool
