#pragma once

#include <cstddef>
#include <functional>
#include <stdexcept>
#include <string>
#include <string_view>

#include "JSON/JSONWriter.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Records/MappingFault.h"
#include "QELModels/Representation/Representation.h"
#include "tool/Output.h"

namespace QELModels::tool {

/// How a command ends.
enum class ExitStatus : int { success = 0, badInput = 1, badUsage = 2 };

/// The name of standard input among files.
inline constexpr std::string_view kStandardInput = "-";

/// What is wrong with a document, or with a file. The message is complete: where, what, and the place in the
/// text if there is one.
struct BadInput : std::runtime_error {
    using std::runtime_error::runtime_error;
};

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
    /// Puts the next bytes, as many as come at once, behind `text`; false at the end. Throws `BadInput`.
    bool readMore(std::string& text);
    /// Everything that is left.
    std::string readAll();

private:
    std::string name_;
    int file_;
};

/// The lines of an input, one after the other. It holds one line in memory, and what was read behind it.
class LineReader {
public:
    /// `beforeWaiting` is called each time before more is read, which may take as long as the writer at the
    /// other end wants.
    LineReader(Input& input, std::function<void()> beforeWaiting)
        : input_(input), beforeWaiting_(std::move(beforeWaiting)) {}

    /// Goes to the next line that has more than white space on it; false at the end.
    bool next();
    /// The line, without what ends it.
    std::string_view line() const noexcept { return line_; }
    /// Its number, from 1; the lines passed over count.
    std::size_t number() const noexcept { return number_; }

private:
    bool nextOfAny();

    Input& input_;
    std::function<void()> beforeWaiting_;
    std::string buffer_;
    std::size_t at_ = 0;        // where in the buffer the next line begins
    std::size_t searched_ = 0;  // how far the buffer is known to have no end of line
    bool isAtEnd_ = false;
    std::string_view line_;
    std::size_t number_ = 0;
};

/// A message about a place in a text, with the text's line around it: `name:line:column: reason`.
std::string messageAt(std::string_view name,
                      std::size_t line,
                      std::size_t column,
                      std::string_view reason,
                      std::string_view text,
                      std::size_t offset);

/// A message about a value that a mapping does not accept: `place: /pointer: reason`.
std::string faultMessage(std::string_view place, const MappingFault& fault);

/// Reads the one document of a file; throws `BadInput`.
Representation readDocument(const std::string& file);

/// The document of a file as an application's mapper makes it; throws `BadInput`, for a mapping that faults
/// too.
template <class Mapper>
auto mappedDocument(const std::string& file) {
    const Representation document = readDocument(file);
    try {
        return Mapper().mappedResponseFromJSONObject(document);
    } catch (const MappingFault& fault) {
        throw BadInput(faultMessage(file, fault));
    }
}

/// What a command makes of one document: a JSON value. It may throw `MappingFault`.
using Answer = std::function<void(RepresentationView document, JSONWriter& writer)>;

/// Writes what `answer` makes of the document of a file. Throws `BadInput`.
ExitStatus answerDocument(const std::string& file,
                          JSONWriter::Layout layout,
                          Output& output,
                          const Answer& answer);

/// The same for a file that holds a document on every line, one line of output for each, written as it is
/// made. A line that is broken is reported, makes a null, and does not stop the others. Throws `BadInput`
/// when the file cannot be read.
ExitStatus answerLines(const std::string& file, Output& output, const Answer& answer);

}  // namespace QELModels::tool
