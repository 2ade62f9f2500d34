#include "QELModels/Memory/detail/BlockWriter.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

void BlockWriter::borrowTexts(const Block& texts) {
    keeper().keepBlock(&texts);
    borrowed_ = reinterpret_cast<std::uintptr_t>(&texts);
    borrowedSize_ = texts.size_;
}

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
