#include "QELModels/Process/Log.h"

#include <array>
#include <cstdio>
#include <new>
#include <string>
#include <utility>

#include "QELModels/Process/detail/SharedSlot.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace Log {

namespace {

constinit detail::SharedSlot<Sink> sink;

// The stream has no buffer: one call is one piece of output, in which other threads cannot write.
void writeToStandardError(std::string_view line) noexcept {
    std::array<char, 512> buffer;
    if (line.size() < buffer.size()) {
        buffer[line.copy(buffer.data(), line.size())] = '\n';
        std::fwrite(buffer.data(), 1, line.size() + 1, stderr);
        return;
    }
    try {
        std::string withLineFeed;
        withLineFeed.reserve(line.size() + 1);
        withLineFeed.append(line).push_back('\n');
        std::fwrite(withLineFeed.data(), 1, withLineFeed.size(), stderr);
    } catch (const std::bad_alloc&) {
        std::fwrite(line.data(), 1, line.size(), stderr);
        std::fputc('\n', stderr);
    }
}

}  // namespace

void setSink(Sink replacement) {
    if (replacement) {
        sink.set(std::move(replacement));
    } else {
        sink.clear();
    }
}

void write(std::string_view line) noexcept {
    try {
        if (const auto use = sink.use()) return (*use)(line);
    } catch (...) {
        // The line is written below.
    }
    writeToStandardError(line);
}

}  // namespace Log
}  // namespace QELMODELS_ABI
}  // namespace QELModels
