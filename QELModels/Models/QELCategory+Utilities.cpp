#include "QELModels/Models/QELCategory+Utilities.h"

#include <optional>

#include "QELModels/Values/Number.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

namespace {

std::string keyFor(std::optional<Number> identifier) {
    return "category-" + (identifier ? identifier->toString() : "(null)");
}

}  // namespace

std::string editorialKey(const QELCategory& category) {
    return keyFor(category.categoryIdentifier());
}

std::string parentCategoryEditorialKey(const QELCategory& category) {
    return keyFor(category.parentIdentifier());
}

bool allowAllDevices(const QELCategory& category) noexcept {
    const QELCategoryAdditional* additional = category.additional();
    return additional == nullptr || additional->allowAllDevices();
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
