#include "QELModels/Functions/QELModels_vers.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

static_assert(QELMODELS_VERSION_MAJOR == 1 && QELMODELS_VERSION_MINOR == 0,
              "a new version needs new values below");

constinit const double QELModelsVersionNumber = 1.0;

// The form has two blanks before PROJECT.
constinit const char QELModelsVersionString[] = "@(#)PROGRAM:QELModels  PROJECT:QELModels-1\n";

}  // namespace QELMODELS_ABI
}  // namespace QELModels
