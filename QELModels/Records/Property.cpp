#include "QELModels/Records/Property.h"

#include <string>

#include "QELModels/Records/MappingFault.h"
#include "QELModels/Records/ObjectClass.h"
#include "QELModels/Records/detail/PropertySlot.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

Value Property::value(const Object& object) const {
    if (isComputed()) return compute(object);
    return detail::withSlotOf(
        kind, [&]<class Slot>() { return detail::slotOf<Slot>(*this, object).value(object); });
}

namespace detail {

namespace {

[[noreturn]] void throwCannotBeSet(const Property& property, const Object& object) {
    throw MappingFault(std::string(object.isa().name()) + ": the property '" + std::string(property.name) +
                       "' cannot be set");
}

}  // namespace

bool setValue(const Property& property, Object& object, const Value& value, BlockWriter& writer) {
    if (property.isComputed()) throwCannotBeSet(property, object);
    if (value.isNull()) {
        clear(property, object);
        return true;
    }
    return withSlotOf(property.kind, [&]<class Slot>() {
        return slotOf<Slot>(property, object).assign(value, property.target, writer);
    });
}

void clear(const Property& property, Object& object) {
    withSlotOf(property.kind, [&]<class Slot>() { slotOf<Slot>(property, object).clear(); });
}

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
