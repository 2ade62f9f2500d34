#include "tool/Session.h"

#include <optional>

#include "JSON/JSONReader.h"
#include "tool/ExitStatus.h"
#include "tool/Input.h"
#include "tool/Messages.h"

namespace QELModels::tool {

Representation Session::readDocument(const std::string& file) {
    Input input(file);
    const std::string text = input.readAll();
    JSONError error;
    std::optional<Representation> document = representationFromJSON(text, &error);
    if (!document)
        throw BadInput(messageAt(file, error.line, error.column, error.reason, text, error.offset));
    place_ = file;
    return *std::move(document);
}

}  // namespace QELModels::tool
