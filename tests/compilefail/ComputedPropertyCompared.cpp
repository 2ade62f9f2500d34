// expect: a computed property is not compared
// Equality goes through stored properties only.

#include "Book.h"

constexpr auto declared = declare<Book>(property<&Book::title>("title"), property<&Book::isLong>("isLong"));

#ifdef FIXED
constexpr auto made = describe<declared, FieldsOf<&Book::title>, FieldsOf<&Book::title>>("Book");
#else
constexpr auto made = describe<declared, FieldsOf<&Book::title>, FieldsOf<&Book::isLong>>("Book");
#endif
