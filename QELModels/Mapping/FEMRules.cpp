#include "QELModels/Mapping/FEMRules.h"

#include "QELModels/Mapping/FEMMapping.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

constinit std::atomic<const void*> FEMCaptured::current{nullptr};

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

}  // namespace QELMODELS_ABI
}  // namespace QELModels
