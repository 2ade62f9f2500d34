#include "QELModels/Records/ObjectClass.h"

#include <algorithm>

namespace QELModels {
inline namespace QELMODELS_ABI {

bool ObjectClass::isSameOrDerivedFrom(const ObjectClass& other) const noexcept {
    const ObjectClass* isa = this;
    while (isa != nullptr && isa != &other)
        isa = isa->superclass();
    return isa != nullptr;
}

const Property* ObjectClass::property(std::string_view name) const noexcept {
    const std::span<const Property> own = properties();
    const auto found = std::find_if(
        own.begin(), own.end(), [name](const Property& property) { return property.name == name; });
    if (found != own.end()) return &*found;
    const ObjectClass* inherited = modelSuperclass();
    return inherited == nullptr ? nullptr : inherited->property(name);
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
