#include "QELModels/Mapping/FEMRules.h"

#include <algorithm>

#include "QELModels/Mapping/FEMMapping.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

FEMAccepts FEMRule::accepts() const noexcept {
    if (isRelationship()) return toMany ? FEMAccepts::array : FEMAccepts::dictionary;
    if (map.apply != nullptr) return map.accepts;
    switch (property->kind) {
        case PropertyKind::text:
            return FEMAccepts::text;
        case PropertyKind::number:
        case PropertyKind::boolean:
        case PropertyKind::integer:
            return FEMAccepts::number;
        case PropertyKind::array:
            return FEMAccepts::array;
        case PropertyKind::dictionary:
            return FEMAccepts::dictionary;
        default:
            return FEMAccepts::nothing;
    }
}

const FEMRules& FEMRule::nestedRules() const noexcept {
    return mapping == nullptr ? *target : mapping->rules();
}

std::size_t FEMRules::positionOf(std::string_view key) const noexcept {
    return static_cast<std::size_t>(std::find(keys.begin(), keys.end(), key) - keys.begin());
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
