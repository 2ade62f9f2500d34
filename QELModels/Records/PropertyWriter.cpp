#include "QELModels/Records/PropertyWriter.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

void PropertyWriter::put(const Value& value) {
    if (value.isNull())
        result_ = Result::nothing;
    else
        result_ = detail::setValue(property_, object_, value, writer_) ? Result::filled : Result::wrongKind;
}

void PropertyWriter::put(Number number) {
    // Tables of words make integers; that is what most numbers are here.
    if (property_.kind != PropertyKind::integer) return put(Value(number));
    detail::slotOf<detail::IntegerSlot>(property_, object_).integer = number.int64Value();
    result_ = Result::filled;
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
