#pragma once

#include <string>
#include <string_view>

#include "QELModels/Platform/Export.h"
#include "QELModels/Representation/Representation.h"
#include "tool/Output.h"

namespace QELModels::tool {

/// The name of the program in its messages.
inline constexpr std::string_view kProgram = "qelmodels";

/// What a command works with: the documents that it reads, and where its results go.
class Session {
public:
    /// Reads the one document of a file; throws `BadInput`. It is the document at hand from now on.
    Representation readDocument(const std::string& file);

    /// Where the document at hand comes from. A mapping that faults is reported as a fault of this document,
    /// so that no command has to catch faults itself.
    const std::string& place() const noexcept { return place_; }

    Output output;  ///< standard output

private:
    std::string place_{kProgram};
};

}  // namespace QELModels::tool
