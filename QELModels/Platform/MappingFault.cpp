#include "QELModels/Platform/MappingFault.h"

namespace QELModels::inline QELMODELS_ABI {

// Here, so that the class has one home and is caught across the borders of shared libraries.
MappingFault::~MappingFault() = default;

}  // namespace QELModels::inline QELMODELS_ABI
