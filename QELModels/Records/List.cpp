#include "QELModels/Records/List.h"

#include <algorithm>

namespace QELModels {
inline namespace QELMODELS_ABI {

bool ListBase::isEqual(const ListBase* other) const {
    if (other == this) return true;
    if (other == nullptr || other->size_ != size_) return false;
    return std::equal(elements_, elements_ + size_, other->elements_, [](const Object* a, const Object* b) {
        return a->isEqual(b);
    });
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
