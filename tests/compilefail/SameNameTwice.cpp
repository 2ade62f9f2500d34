// expect: twoPropertiesOfARecordHaveTheSameName
// Two properties of a record cannot have one name.

#include "Book.h"

#ifdef FIXED
constexpr auto made = declare<Book>(property<&Book::title>("title"), property<&Book::pages>("pages"));
#else
constexpr auto made = declare<Book>(property<&Book::title>("title"), property<&Book::pages>("title"));
#endif
