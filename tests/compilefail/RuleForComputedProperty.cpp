// expect: a computed property cannot be set
// A rule cannot fill what is computed.

#include "Book.h"

constexpr auto declared = declare<Book>(property<&Book::title>("title"), property<&Book::pages>("pages"),
                                        property<&Book::sequel>("sequel"), property<&Book::isLong>("isLong"));

#ifdef FIXED
constexpr auto made = mapping<declared>(attribute<&Book::pages>());
#else
constexpr auto made = mapping<declared>(attribute<&Book::isLong>());
#endif
