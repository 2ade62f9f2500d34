#pragma once

#include <chrono>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace QELModels::bench {

/// What the command line asks for.
struct Options {
    bool help = false;
    bool checkOnly = false;
    bool csv = false;
    int rounds = 25;
    /// How long a way runs before the next one has its turn; longer if one call takes longer.
    std::chrono::milliseconds turn{10};
    std::string only;      ///< the part to run; empty for all
    std::string plotFile;  ///< where to draw the results; empty for nowhere
};

extern const std::string_view kUsage;

/// Nothing if an argument is unknown, lacks its value or has a wrong one. `parts` are the names that `--only`
/// may have.
std::optional<Options> parseOptions(std::span<const char* const> arguments,
                                    std::span<const std::string_view> parts);

}  // namespace QELModels::bench
