#pragma once

#include <cstdint>

#include "QELModels/Memory/Block.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Records/Field.h"
#include "QELModels/Representation/Representation.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// How a raw value of a document goes into a property of each kind, whose slot lies at `place`. False, and
/// nothing done, when it does not fit. This is every rule's road without a map rule, so each kind's is as
/// short as it can be.
template <PropertyKind Kind>
struct RawValue {
    static bool put(void* place, RepresentationView value, BlockWriter&) {
        // URLs, dates, colours and records are made of raw values by map rules and mappings alone.
        constexpr bool kTakesNumbers =
            Kind == PropertyKind::number || Kind == PropertyKind::boolean || Kind == PropertyKind::integer;
        const RepresentationNode& node = *value.node();
        if (!kTakesNumbers || !node.isNumber()) return false;
        [[maybe_unused]] const Number number = NumberBits::number(node.bits, node.origin());
        if constexpr (Kind == PropertyKind::number)
            *static_cast<NumberSlot*>(place) = {node.bits, node.origin(), true};
        else if constexpr (Kind == PropertyKind::boolean)
            *static_cast<bool*>(place) = number.boolValue();
        else if constexpr (Kind == PropertyKind::integer)
            *static_cast<std::int64_t*>(place) = number.int64Value();
        return true;
    }
};

template <>
struct QELMODELS_EXPORT RawValue<PropertyKind::text> {
    static bool put(void* place, RepresentationView value, BlockWriter& writer);
};
template <>
struct QELMODELS_EXPORT RawValue<PropertyKind::array> {
    static bool put(void* place, RepresentationView value, BlockWriter& writer);
};
template <>
struct QELMODELS_EXPORT RawValue<PropertyKind::dictionary> {
    static bool put(void* place, RepresentationView value, BlockWriter& writer);
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
