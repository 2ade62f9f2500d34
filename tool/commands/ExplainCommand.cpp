#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "JSON/JSONWriter.h"
#include "QELModels/Records/MappingFault.h"
#include "QELModels/Values/Text.h"
#include "tool/Display.h"
#include "tool/Explanation.h"
#include "tool/Kinds.h"
#include "tool/Members.h"
#include "tool/Options.h"
#include "tool/Texts.h"

namespace QELModels::tool {

namespace {

struct Options {
    std::string kind;
    std::string file;
    bool isJSON = false;
    std::optional<std::string> keyPath;
};

void declare(CLI::App& command, Options& options) {
    addKind(command, options.kind, "What the document is: " + kindNames());
    addFile(command, options.file);
    addFlag(command, "--json", options.isJSON, "One JSON object a line");
    addKeyPath(command, options.keyPath);
}

// How an outcome is shown to people: a filled property is faint, and a wrong value is easily seen.
struct Appearance {
    std::string_view outcome;
    std::string_view label;    // at the start of a line
    std::string_view counted;  // in the summary
    Style style;
    bool showsValue;
    bool isAlwaysCounted = true;
};
constexpr std::array<Appearance, 7> kAppearances{{
    {"set", "set", "set", Style::faint, false},
    {"missing", "missing", "missing", Style::yellow, false},
    {"null", "null", "null", Style::yellow, false},
    {"refused", "refused", "refused", Style::red, true},
    {"wrongKind", "wrong kind", "of the wrong kind", Style::red, true},
    {"fault", "fault", "faulty", Style::alarm, true, false},
    {kUnread, "unread", "unread", Style::cyan, true},
}};

std::size_t appearanceOf(std::string_view outcome) {
    const auto* found = std::find_if(kAppearances.begin(),
                                     kAppearances.end(),
                                     [outcome](const Appearance& one) { return one.outcome == outcome; });
    return static_cast<std::size_t>(found - kAppearances.begin());
}

// A value as JSON, for one line of a table. Large values are not written as a whole.
std::string shownValue(RepresentationView value) {
    constexpr std::size_t kColumns = 48;
    constexpr std::size_t kMostNodes = 64;
    constexpr std::size_t kMostBytes = 1024;
    if (const auto text = value.text()) {
        std::size_t size = std::min(text->size(), kMostBytes);
        while (size < text->size() && size != 0 && Text::isContinuation((*text)[size]))
            --size;
        std::string json;
        JSONWriter(json).string(text->substr(0, size));
        return shown(json, kColumns).text;
    }
    if (value.nodeCount() > kMostNodes || value.textBytes() > kMostBytes)
        return value.isArray() ? fmt::format("[{} elements]", value.size())
                               : fmt::format("{{{} members}}", value.size());
    return shown(jsonFromRepresentation(value), kColumns).text;
}

// The findings for people, as they come.
class FindingsTable {
public:
    explicit FindingsTable(bool isColored) : isColored_(isColored) {}

    void add(const Finding& finding) {
        Row row;
        row.appearance = appearanceOf(finding.outcome);
        ++counts_[row.appearance];
        // A root and a key that is not read have no property: their place is shown instead.
        const std::string place = finding.path.empty() ? "the document" : finding.path;
        row.name = shown(finding.property.empty() ? place : finding.property, kUncut);
        if (!finding.property.empty()) row.place = shown(finding.path, kUncut).text;
        if (finding.value && kAppearances[row.appearance].showsValue) row.value = shownValue(*finding.value);
        rows_.push_back(std::move(row));
    }

    void writeTo(Output& output) const {
        // Few properties lie deeper than this; those push their places to the right.
        constexpr std::size_t kMostNameWidth = 52;
        std::size_t nameWidth = 0;
        for (const Row& row : rows_)
            if (row.name.width <= kMostNameWidth) nameWidth = std::max(nameWidth, row.name.width);
        for (const Row& row : rows_)
            output.write(line(row, nameWidth) + '\n');
        output.write((rows_.empty() ? "" : "\n") + summary() + '\n');
    }

private:
    struct Row {
        std::size_t appearance = 0;
        Shown name;
        std::string place;
        std::string value;
    };

    std::string inStyle(Style style, std::string_view text) const { return styled(text, style, isColored_); }

    std::string line(const Row& row, std::size_t nameWidth) const {
        constexpr std::string_view kGap = "  ";
        const Appearance& appearance = kAppearances[row.appearance];
        std::string text = fmt::format("{:<10}", appearance.label);
        std::string name = row.name.text;
        if (!row.place.empty() || !row.value.empty())
            name.append(nameWidth - std::min(nameWidth, row.name.width), ' ');
        const std::string place = row.place.empty() ? "" : fmt::format("{}{}", kGap, row.place);
        // The whole line of a filled property is faint, and only the place of any other.
        if (appearance.style == Style::faint)
            return inStyle(Style::faint, fmt::format("{}{}{}{}", text, kGap, name, place));
        text = fmt::format("{}{}{}", inStyle(appearance.style, text), kGap, name);
        text += inStyle(Style::faint, place);
        const Style valueStyle = appearance.outcome == kUnread ? Style::faint : appearance.style;
        if (!row.value.empty()) text += fmt::format("{}{}", kGap, inStyle(valueStyle, row.value));
        return text;
    }

    std::string summary() const {
        std::vector<std::string> counts;
        for (std::size_t i = 0; i < kAppearances.size(); ++i) {
            const Appearance& appearance = kAppearances[i];
            if (counts_[i] == 0 && !appearance.isAlwaysCounted) continue;
            counts.push_back(inStyle(counts_[i] == 0 ? Style::faint : appearance.style,
                                     fmt::format("{} {}", counts_[i], appearance.counted)));
        }
        return joined(counts, ", ");
    }

    bool isColored_;
    std::vector<Row> rows_;
    std::array<std::size_t, kAppearances.size()> counts_{};
};

std::string jsonLine(const Finding& finding) {
    std::string line;
    JSONWriter writer(line);
    writer.beginDictionary();
    writeMember(writer, "path", finding.path);
    if (finding.outcome != kUnread) writeMember(writer, "property", finding.property);
    writeMember(writer, "outcome", finding.outcome);
    writer.endDictionary();
    return line + '\n';
}

ExitStatus run(const Options& options, Session& session) {
    const Kind& kind = kindNamed(options.kind);
    const std::string keyPath = keyPathFor(kind, options.keyPath);
    const Representation document = session.readDocument(options.file);
    FindingsTable table(Output::isColored());
    const auto visit = [&](const Finding& finding) {
        if (options.isJSON)
            session.output.write(jsonLine(finding));
        else
            table.add(finding);
    };
    const SilentLog silentLog;
    try {
        explain(kind, document, keyPath, visit);
    } catch (const MappingFault&) {
        if (!options.isJSON) table.writeTo(session.output);
        session.output.flush();  // what became of the rules before the fault comes before its message
        throw;
    }
    if (!options.isJSON) table.writeTo(session.output);
    return ExitStatus::success;
}

}  // namespace

void addExplainCommand(CommandLine& commandLine) {
    commandLine.add<Options>("explain",
                             "KIND [FILE] [--json] [--key-path PATH]",
                             "Every property: filled, or why not, and where",
                             declare,
                             run);
}

}  // namespace QELModels::tool
