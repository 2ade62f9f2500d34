#include "tool/Answers.h"

#include <fmt/format.h>

#include <utility>

#include "JSON/JSONReader.h"
#include "QELModels/Records/MappingFault.h"
#include "tool/Input.h"
#include "tool/Lines.h"
#include "tool/Messages.h"

namespace QELModels::tool {

namespace {

// Appends the answer to one line to `text`. Returns what is wrong with the line, or an empty text.
std::string appendAnswer(std::string& text, const LineReader& lines, std::string_view file,
                         JSONReader& reader, const Answer& answer) {
    JSONError error;
    const auto document = reader.read(lines.line(), &error);
    if (!document)
        return messageAt(file, lines.number(), error.column, error.reason, lines.line(), error.offset);
    try {
        JSONWriter writer(text);
        answer(*document, writer);
        return {};
    } catch (const MappingFault& fault) {
        return faultMessage(fmt::format("{}:{}", file, lines.number()), fault);
    }
}

}  // namespace

ExitStatus answerDocument(Session& session, const std::string& file, JSONWriter::Layout layout,
                          const Answer& answer) {
    const Representation document = session.readDocument(file);
    std::string text;
    JSONWriter writer(text, layout);
    answer(document, writer);
    session.output.write(text + '\n');
    return ExitStatus::success;
}

ExitStatus answerLines(Session& session, const std::string& file, const Answer& answer) {
    Input input(file);
    LineReader lines(input, [&session] { session.output.flush(); });
    JSONReader reader;
    auto status = ExitStatus::success;
    std::string text;
    while (lines.next()) {
        text.clear();
        if (std::string problem = appendAnswer(text, lines, file, reader, answer); !problem.empty()) {
            text = "null";
            status = ExitStatus::badInput;
            session.output.flush();  // on a terminal, earlier results come before the message
            report(std::move(problem));
        }
        session.output.write(text + '\n');
    }
    return status;
}

}  // namespace QELModels::tool
