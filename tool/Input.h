#pragma once

#include <string>
#include <string_view>

#include "QELModels/Platform/Export.h"

namespace QELModels::tool {

/// The name of standard input among files.
inline constexpr std::string_view kStandardInput = "-";

/// Throws `BadInput` when it is known that a file cannot be read. Nothing is opened or read: a pipe can be
/// read only once.
void requireReadable(const std::string& file);

/// A file that is read from its start to its end.
class Input {
public:
    /// Opens a file, or standard input; throws `BadInput`.
    explicit Input(std::string name);
    Input(const Input&) = delete;
    Input& operator=(const Input&) = delete;
    ~Input();

    /// The name that messages have for it.
    const std::string& name() const noexcept { return name_; }
    /// Appends the next bytes, as many as come at once, to `text`; false at the end. Throws `BadInput`.
    bool readMore(std::string& text);
    /// Everything that is left. Throws `BadInput`.
    std::string readAll();

private:
    std::string name_;
    int file_;
};

}  // namespace QELModels::tool
