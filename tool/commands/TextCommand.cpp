#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "JSON/JSONReader.h"
#include "JSON/JSONWriter.h"
#include "QELModels/Categories/NSString+HTMLRemoval.h"
#include "QELModels/Values/Text.h"
#include "tool/Input.h"
#include "tool/Lines.h"
#include "tool/Messages.h"
#include "tool/Options.h"

namespace QELModels::tool {

namespace {

struct Action {
    std::string_view name;
    std::string (*apply)(std::string_view text);
};
constexpr std::array<Action, 3> kActions{{
    {"strip", &HTMLRemoval::withoutHTMLTags},
    {"decode", &HTMLRemoval::qel_decodeHTMLCharacterEntities},
    {"encode", &HTMLRemoval::mz_encodeHTMLCharacterEntities},
}};

struct Options {
    std::string action;
    bool isJSON = false;
};

void declare(CLI::App& command, Options& options) {
    addArgument(command,
                "ACTION",
                options.action,
                "strip: remove tags and decode references; decode: only decode; encode: escape &, < and >");
    addFlag(command, "--json", options.isJSON, "One JSON string a line in, and one out");
}

const Action& actionNamed(std::string_view name) {
    const auto* action = std::find_if(
        kActions.begin(), kActions.end(), [name](const Action& one) { return one.name == name; });
    if (action == kActions.end())
        throw UsageError(fmt::format("the actions are strip, decode and encode, not '{}'", name));
    return *action;
}

// The offset of the first lone surrogate half, or npos. All other text must be well formed.
std::size_t findHalf(std::string_view text, std::size_t from) {
    constexpr char kHalfLead = '\xED';
    for (std::size_t at = text.find(kHalfLead, from); at != std::string_view::npos;
         at = text.find(kHalfLead, at + 1)) {
        const std::string_view rest = text.substr(at, Text::kHalfBytes);
        if (Text::endsInHighHalf(rest) || Text::beginsWithLowHalf(rest)) return at;
    }
    return std::string_view::npos;
}

std::string withoutHalves(std::string text) {
    constexpr std::string_view kReplacement = "\xEF\xBF\xBD";  // as long as a half
    for (std::size_t at = 0; (at = findHalf(text, at)) != std::string_view::npos;)
        text.replace(at, Text::kHalfBytes, kReplacement);
    return text;
}

// UTF-8 has no halves: the first of them is a fault, as are bytes that make no character.
void requireUTF8(std::string_view name, std::string_view text) {
    const std::size_t malformed = Text::firstMalformedByte(text);
    const std::size_t offset = std::min(findHalf(text.substr(0, malformed), 0), malformed);
    if (offset == text.size()) return;
    const std::string_view before = text.substr(0, offset);
    const auto line = static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n')) + 1;
    const std::size_t column = offset - (before.rfind('\n') + 1) + 1;  // npos + 1 is 0
    throw BadInput(messageAt(name, line, column, "not UTF-8", text, offset));
}

ExitStatus applyToText(const Action& action, Session& session) {
    Input input{std::string(kStandardInput)};
    const std::string text = input.readAll();
    requireUTF8(input.name(), text);
    session.output.write(withoutHalves(action.apply(text)));
    return ExitStatus::success;
}

ExitStatus applyToLines(const Action& action, Session& session) {
    Input input{std::string(kStandardInput)};
    LineReader lines(input, [&session] { session.output.flush(); });
    JSONReader reader;
    while (lines.next()) {
        JSONError error{1, 1, 0, "not a string"};
        const auto document = reader.read(lines.line(), &error);
        const auto text = document ? document->view().text() : std::nullopt;
        if (!text) {
            session.output.flush();  // the lines before it were all right
            throw BadInput(messageAt(
                input.name(), lines.number(), error.column, error.reason, lines.line(), error.offset));
        }
        std::string line;
        JSONWriter(line).string(action.apply(*text));
        session.output.write(line + '\n');
    }
    return ExitStatus::success;
}

ExitStatus run(const Options& options, Session& session) {
    const Action& action = actionNamed(options.action);
    return options.isJSON ? applyToLines(action, session) : applyToText(action, session);
}

}  // namespace

void addTextCommand(CommandLine& commandLine) {
    commandLine.add<Options>("text",
                             "strip|decode|encode [--json]",
                             "Standard input without HTML, to standard output",
                             declare,
                             run);
}

}  // namespace QELModels::tool
