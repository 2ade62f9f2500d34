#include "QELModels/Records/Field.h"

#include <stdexcept>

namespace QELModels {
inline namespace QELMODELS_ABI {

void TextSlot::throwTooLong() {
    throw std::length_error("a text of 4 GB or more");
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
