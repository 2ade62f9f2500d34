#include "QELModels/Records/MappingFault.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

// Here, so that the class has one home and is caught across the borders of shared libraries.
MappingFault::~MappingFault() = default;

}  // namespace QELMODELS_ABI
}  // namespace QELModels
