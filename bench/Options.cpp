#include "Options.h"

#include <algorithm>
#include <charconv>
#include <cstddef>

namespace QELModels::bench {

const std::string_view kUsage =
    "usage: qelmodels-bench [--check] [--only PART] [--rounds N] [--turn MILLISECONDS] [--csv] [--plot "
    "FILE]\n"
    "\n"
    "Compares the library with the same work written by hand; prints tables in Markdown.\n"
    "\n"
    "  --check   only check that both do the same work, and that no property is missing\n"
    "  --only    one part alone: documents, questions, texts or threads\n"
    "  --rounds  how often each way has its turn (25)\n"
    "  --turn    how long a turn takes at least (10)\n"
    "  --csv     for programs: part, subject, way, value, unit\n"
    "  --plot    also draw the ratios of documents and questions, as SVG\n"
    "  --help    this text\n";

namespace {

std::optional<int> positiveNumber(std::string_view text) {
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size() || value < 1) return std::nullopt;
    return value;
}

}  // namespace

std::optional<Options> parseOptions(std::span<const char* const> arguments,
                                    std::span<const std::string_view> parts) {
    Options options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string_view name = arguments[i];
        if (name == "--check") {
            options.checkOnly = true;
            continue;
        }
        if (name == "--csv") {
            options.csv = true;
            continue;
        }
        if (name == "--help" || name == "-h") {
            options.help = true;
            continue;
        }
        if (i + 1 == arguments.size()) return std::nullopt;
        const std::string_view value = arguments[++i];
        if (name == "--only") {
            if (std::find(parts.begin(), parts.end(), value) == parts.end()) return std::nullopt;
            options.only = value;
        } else if (name == "--plot") {
            if (value.empty()) return std::nullopt;
            options.plotFile = value;
        } else if (name == "--rounds" || name == "--turn") {
            const auto number = positiveNumber(value);
            if (!number) return std::nullopt;
            if (name == "--rounds") {
                options.rounds = *number;
            } else {
                options.turn = std::chrono::milliseconds(*number);
            }
        } else {
            return std::nullopt;
        }
    }
    return options;
}

}  // namespace QELModels::bench
