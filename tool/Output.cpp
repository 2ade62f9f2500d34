#include "tool/Output.h"

#include <cerrno>
#include <cstddef>
#include <cstdlib>
#include <system_error>

#include "tool/System.h"

namespace QELModels::tool {

namespace {

constexpr std::size_t kMostWaiting = std::size_t{1} << 20;

bool isSet(const char* variable) {
    const char* value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

}  // namespace

int writeAll(int file, std::string_view text) {
    while (!text.empty()) {
        const std::ptrdiff_t written = system::write(file, text.data(), text.size());
        if (written < 0) return errno;
        text.remove_prefix(static_cast<std::size_t>(written));
    }
    return 0;
}

void Output::write(std::string_view text) {
    waiting_ += text;
    if (waiting_.size() >= kMostWaiting) flush();
}

void Output::flush() {
    const int error = writeAll(system::kOutput, waiting_);
    waiting_.clear();
    if (error == EPIPE) throw ClosedPipe();
    if (error != 0) throw OutputFailure("cannot write: " + std::generic_category().message(error));
}

bool Output::isColored() {
    const char* terminal = std::getenv("TERM");
    const bool isDumb = terminal == nullptr || std::string_view(terminal) == "dumb";
    return !isSet("NO_COLOR") && !isDumb && system::isTerminal(system::kOutput);
}

void report(std::string message) {
    message += '\n';
    writeAll(system::kErrors, message);  // a failure cannot be reported either
}

}  // namespace QELModels::tool
