// expect: a field that is not declared
// Equality goes through declared properties only.

#include "Book.h"

constexpr auto declared = declare<Book>(property<&Book::title>("title"));

#ifdef FIXED
constexpr auto made = describe<declared, FieldsOf<&Book::title>, FieldsOf<&Book::title>>("Book");
#else
constexpr auto made = describe<declared, FieldsOf<&Book::title>, FieldsOf<&Book::pages>>("Book");
#endif
