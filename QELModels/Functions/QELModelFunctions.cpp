#include "QELModels/Functions/QELModelFunctions.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

std::string NSStringFromQELStreamType(QELStreamType streamType) {
    // The table that mappings use, so that this remains their inverse when a type is added.
    for (const auto& [name, value] : kQELStreamTypeNames) {
        if (value == streamType) return std::string(name);
    }
    return {};
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
