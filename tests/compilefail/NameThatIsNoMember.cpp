// expect: titel[^ ]* is not a member of|no member named .titel
// A property must be a member of its record.

#include "Book.h"

#ifdef FIXED
constexpr auto made = declare<Book>(property<&Book::title>("title"));
#else
constexpr auto made = declare<Book>(property<&Book::titel>("title"));
#endif
