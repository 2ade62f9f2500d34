// expect: a relationship needs a record or a list of records
// A relationship cannot fill a text.

#include "Book.h"

constexpr auto declared = declare<Book>(property<&Book::title>("title"), property<&Book::pages>("pages"),
                                        property<&Book::sequel>("sequel"), property<&Book::isLong>("isLong"));

#ifdef FIXED
constexpr auto made = mapping<declared>(relationship<&Book::sequel>());
#else
constexpr auto made = mapping<declared>(relationship<&Book::title>());
#endif
