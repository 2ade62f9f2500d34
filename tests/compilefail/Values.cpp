// What is wrong where a raw value is made.

#include "QELModels/Representation/Representation.h"

using namespace QELModels;

// A character is neither a text nor a number, and a `long double` may be more than a number holds.
Representation initial(std::string_view name) {
#ifdef FIXED
    return Representation(name.substr(0, 1));
#else
    // expect: CharacterOrTooWideForANumber | char
    return Representation(name.front());
#endif
}
Representation pi() {
#ifdef FIXED
    return Representation(static_cast<double>(3.14L));
#else
    // expect: CharacterOrTooWideForANumber | long double
    return Representation(3.14L);
#endif
}
