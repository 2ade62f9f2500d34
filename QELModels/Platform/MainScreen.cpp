#include "QELModels/Platform/MainScreen.h"

#include <atomic>

namespace QELModels::inline QELMODELS_ABI::MainScreen {

namespace {

constinit std::atomic<double> pixelsPerPoint = 1.0;

}  // namespace

double scale() noexcept {
    return pixelsPerPoint.load(std::memory_order_relaxed);
}

void setScale(double scale) noexcept {
    pixelsPerPoint.store(scale, std::memory_order_relaxed);
}

}  // namespace QELModels::inline QELMODELS_ABI::MainScreen
