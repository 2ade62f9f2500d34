#include "QELModels/Platform/RawValue.h"

#include "QELModels/Platform/RepresentationBuilder.h"

namespace QELModels::inline QELMODELS_ABI {

namespace {

void putCopy(void* place, RepresentationView value, BlockWriter& writer) {
    *static_cast<RepresentationSlot*>(place) = {copyRepresentation(value, writer), writer.block()};
}

}  // namespace

bool RawValue<PropertyKind::text>::put(void* place, RepresentationView value, BlockWriter& writer) {
    if (!value.isString()) return false;
    const std::string_view text = value.node()->string();
    *static_cast<TextSlot*>(place) = {writer.keepText(text), text.size()};
    return true;
}

bool RawValue<PropertyKind::array>::put(void* place, RepresentationView value, BlockWriter& writer) {
    if (!value.isArray()) return false;
    putCopy(place, value, writer);
    return true;
}

bool RawValue<PropertyKind::dictionary>::put(void* place, RepresentationView value, BlockWriter& writer) {
    if (!value.isDictionary()) return false;
    putCopy(place, value, writer);
    return true;
}

}  // namespace QELModels::inline QELMODELS_ABI
