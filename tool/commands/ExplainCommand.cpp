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
#include "tool/CommandLine.h"
#include "tool/Display.h"
#include "tool/Documents.h"
#include "tool/Explanation.h"
#include "tool/Kinds.h"

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

// How an outcome is shown to people: what is as it should be is faint, and what is wrong stands out.
struct Look {
    std::string_view outcome;
    std::string_view label;    // in front of a line
    std::string_view counted;  // in the summary
    std::string_view color;    // for a terminal
    bool showsValue;
    bool isAlwaysCounted = true;
};
constexpr std::string_view kFaint = "\x1b[2m";
constexpr std::string_view kPlain = "\x1b[0m";
constexpr std::array<Look, 7> kLooks{{
    {"set", "set", "set", kFaint, false},
    {"missing", "missing", "missing", "\x1b[33m", false},
    {"null", "null", "null", "\x1b[33m", false},
    {"refused", "refused", "refused", "\x1b[1;31m", true},
    {"wrongKind", "wrong kind", "of the wrong kind", "\x1b[1;31m", true},
    {"fault", "fault", "faulty", "\x1b[1;37;41m", true, false},
    {kUnread, "unread", "unread", "\x1b[36m", true},
}};

std::size_t lookOf(std::string_view outcome) {
    const auto* look = std::find_if(
        kLooks.begin(), kLooks.end(), [outcome](const Look& one) { return one.outcome == outcome; });
    return static_cast<std::size_t>(look - kLooks.begin());
}

std::string colored(std::string_view text, std::string_view color) {
    if (color.empty()) return std::string(text);
    return fmt::format("{}{}{}", color, text, kPlain);
}

// A value as JSON, for one line of a table. Of large ones only as much is written as is shown.
std::string shownValue(RepresentationView value) {
    constexpr std::size_t kColumns = 48;
    constexpr std::size_t kMostNodes = 64;
    constexpr std::size_t kMostBytes = 1024;
    if (const auto text = value.text()) {
        std::size_t size = std::min(text->size(), kMostBytes);
        while (size < text->size() && size != 0 && (static_cast<unsigned char>((*text)[size]) & 0xC0) == 0x80)
            --size;
        std::string json;
        JSONWriter(json).string(text->substr(0, size));
        return shown(json, kColumns).text;
    }
    if (value.node()->extent() > kMostNodes || value.node()->textBytes() > kMostBytes)
        return value.isArray() ? fmt::format("[{} elements]", value.size())
                               : fmt::format("{{{} members}}", value.size());
    return shown(jsonFromRepresentation(value), kColumns).text;
}

// Takes the findings as they come, for people.
class Table {
public:
    explicit Table(bool isColored) : isColored_(isColored) {}

    void add(const Finding& finding) {
        Row row;
        row.look = lookOf(finding.outcome);
        ++counts_[row.look];
        // A root has no property, and a key that is not read has none either: the place stands in for it.
        constexpr std::size_t kWhole = static_cast<std::size_t>(-1);
        const std::string place = finding.path.empty() ? "the document" : finding.path;
        row.name = shown(finding.property.empty() ? place : finding.property, kWhole);
        if (!finding.property.empty()) row.place = shown(finding.path, kWhole).text;
        if (finding.value && kLooks[row.look].showsValue) row.value = shownValue(*finding.value);
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
        std::size_t look = 0;
        Shown name;
        std::string place;
        std::string value;
    };

    std::string_view color(std::string_view color) const { return isColored_ ? color : std::string_view(); }

    std::string line(const Row& row, std::size_t nameWidth) const {
        constexpr std::string_view kGap = "  ";
        const Look& look = kLooks[row.look];
        std::string text = fmt::format("{:<10}", look.label);
        std::string name = row.name.text;
        if (!row.place.empty() || !row.value.empty())
            name.append(nameWidth - std::min(nameWidth, row.name.width), ' ');
        const std::string place = row.place.empty() ? "" : fmt::format("{}{}", kGap, row.place);
        // Of a filled property all is faint, of another one only its place.
        if (look.color == kFaint)
            return colored(fmt::format("{}{}{}{}", text, kGap, name, place), color(kFaint));
        text = fmt::format("{}{}{}", colored(text, color(look.color)), kGap, name);
        if (!place.empty()) text += colored(place, color(kFaint));
        const std::string_view valueColor = look.outcome == kUnread ? kFaint : look.color;
        if (!row.value.empty()) text += fmt::format("{}{}", kGap, colored(row.value, color(valueColor)));
        return text;
    }

    std::string summary() const {
        std::string text;
        for (std::size_t i = 0; i < kLooks.size(); ++i) {
            const Look& look = kLooks[i];
            if (counts_[i] == 0 && !look.isAlwaysCounted) continue;
            if (!text.empty()) text += ", ";
            const std::string part = fmt::format("{} {}", counts_[i], look.counted);
            text += colored(part, color(counts_[i] == 0 ? kFaint : look.color));
        }
        return text;
    }

    bool isColored_;
    std::vector<Row> rows_;
    std::array<std::size_t, kLooks.size()> counts_{};
};

std::string jsonLine(const Finding& finding) {
    std::string line;
    JSONWriter writer(line);
    writer.beginDictionary();
    writer.key("path");
    writer.string(finding.path);
    if (finding.outcome != kUnread) {
        writer.key("property");
        writer.string(finding.property);
    }
    writer.key("outcome");
    writer.string(finding.outcome);
    writer.endDictionary();
    return line + '\n';
}

ExitStatus run(const Options& options, Output& output) {
    const Kind& kind = kindNamed(options.kind);
    const std::string keyPath = keyPathFor(kind, options.keyPath);
    const Representation document = readDocument(options.file);
    Table table(Output::isColored());
    const auto visit = [&](const Finding& finding) {
        if (options.isJSON)
            output.write(jsonLine(finding));
        else
            table.add(finding);
    };
    std::optional<MappingFault> fault;
    const SilentLog silentLog;
    try {
        explain(kind, document, keyPath, visit);
    } catch (const MappingFault& thrown) {
        fault = thrown;
    }
    if (!options.isJSON) table.writeTo(output);
    if (!fault) return ExitStatus::success;
    output.flush();  // the rules before the fault stand before the message
    throw BadInput(faultMessage(options.file, *fault));
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
