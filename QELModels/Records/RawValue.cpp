#include "QELModels/Records/RawValue.h"

#include "QELModels/Representation/RepresentationBuilder.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

namespace {

void putCopy(void* place, RepresentationView value, BlockWriter& writer) {
    *static_cast<RepresentationSlot*>(place) = {copyRepresentation(value, writer), writer.block()};
}

}  // namespace

bool RawValue<PropertyKind::text>::put(void* place, RepresentationView value, BlockWriter& writer) {
    if (!value.isString()) return false;
    *static_cast<TextSlot*>(place) = TextSlot(writer.keepTextOfBlock(value.node()->string()));
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

}  // namespace QELMODELS_ABI
}  // namespace QELModels
