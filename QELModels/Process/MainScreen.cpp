#include "QELModels/Process/MainScreen.h"

#include <atomic>

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace MainScreen {

namespace {

constinit std::atomic<double> pixelsPerPoint = 1.0;

}  // namespace

double scale() noexcept {
    return pixelsPerPoint.load(std::memory_order_relaxed);
}

void setScale(double scale) noexcept {
    pixelsPerPoint.store(scale, std::memory_order_relaxed);
}

}  // namespace MainScreen
}  // namespace QELMODELS_ABI
}  // namespace QELModels
