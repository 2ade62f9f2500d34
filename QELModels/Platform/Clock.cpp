#include "QELModels/Platform/Clock.h"

#include <chrono>
#include <utility>

#include "QELModels/Platform/SharedSlot.h"

namespace QELModels::inline QELMODELS_ABI::Clock {

namespace {

constinit SharedSlot<std::function<Date()>> source;

}  // namespace

Date now() {
    if (const auto use = source.use()) return (*use)();
    return std::chrono::system_clock::now();
}

void setSource(std::function<Date()> replacement) {
    if (replacement) {
        source.set(std::move(replacement));
    } else {
        source.clear();
    }
}

}  // namespace QELModels::inline QELMODELS_ABI::Clock
