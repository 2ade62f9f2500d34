#include "QELModels/Process/Clock.h"

#include <chrono>
#include <utility>

#include "QELModels/Process/detail/SharedSlot.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace Clock {

namespace {

constinit detail::SharedSlot<std::function<Date()>> source;

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

}  // namespace Clock
}  // namespace QELMODELS_ABI
}  // namespace QELModels
