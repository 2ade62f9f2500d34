// expect: CharacterOrTooWideForANumber = char
// A character is neither a text nor a number, and a `long double` may be more than a number holds.

#include "QELModels/Representation/Representation.h"

using namespace QELModels;

Representation initial(std::string_view name) {
#ifdef FIXED
    return Representation(name.substr(0, 1));
#else
    return Representation(name.front());
#endif
}

#ifdef FIXED
Representation pi() {
    return Representation(static_cast<double>(3.14L));
}
#endif
