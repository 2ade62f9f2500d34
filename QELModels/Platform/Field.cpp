#include "QELModels/Platform/Field.h"

#include <stdexcept>

namespace QELModels::inline QELMODELS_ABI {

void TextSlot::throwTooLong() {
    throw std::length_error("a text of 4 GB or more");
}

}  // namespace QELModels::inline QELMODELS_ABI
