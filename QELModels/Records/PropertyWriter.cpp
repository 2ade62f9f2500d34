#include "QELModels/Records/PropertyWriter.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

void PropertyWriter::put(const Value& value) {
    if (value.isNull())
        result_ = Result::nothing;
    else
        result_ = property_.setValue(object_, value, writer_) ? Result::filled : Result::wrongKind;
}

void PropertyWriter::put(Number number) {
    if (property_.kind != PropertyKind::integer) return put(Value(number));
    property_.slot<std::int64_t>(object_) = number.int64Value();
    result_ = Result::filled;
}

void PropertyWriter::put(Date date) {
    if (accepts(PropertyKind::date)) property_.slot<DateSlot>(object_) = {secondsSince1970(date), true};
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
