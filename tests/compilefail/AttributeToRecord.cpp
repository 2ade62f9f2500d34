// expect: an attribute cannot be a record or a list of records
// An attribute cannot fill a nested record.

#include "Book.h"

constexpr auto declared = declare<Book>(property<&Book::title>("title"), property<&Book::pages>("pages"),
                                        property<&Book::sequel>("sequel"), property<&Book::isLong>("isLong"));

#ifdef FIXED
constexpr auto made = mapping<declared>(attribute<&Book::title>());
#else
constexpr auto made = mapping<declared>(attribute<&Book::sequel>());
#endif
