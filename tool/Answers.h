#pragma once

#include <functional>
#include <string>

#include "JSON/JSONWriter.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Representation/Representation.h"
#include "tool/ExitStatus.h"
#include "tool/Session.h"

namespace QELModels::tool {

/// What a command makes of one document: a JSON value. It may throw `MappingFault`.
using Answer = std::function<void(RepresentationView document, JSONWriter& writer)>;

/// Writes what `answer` makes of the document of a file. Throws `BadInput`, and what `answer` throws.
ExitStatus answerDocument(Session& session, const std::string& file, JSONWriter::Layout layout,
                          const Answer& answer);

/// The same for a file that holds a document on every line: one line of output for each, written as it is
/// made. A line that is broken, or whose mapping faults, is reported, makes a null, and does not stop the
/// others. Throws `BadInput` when the file cannot be read.
ExitStatus answerLines(Session& session, const std::string& file, const Answer& answer);

}  // namespace QELModels::tool
