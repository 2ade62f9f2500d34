// expect: a rule for a property that is not declared
// A rule needs a declared property.

#include "Book.h"

constexpr auto declared = declare<Book>(property<&Book::title>("title"));

#ifdef FIXED
constexpr auto made = mapping<declared>(attribute<&Book::title>());
#else
constexpr auto made = mapping<declared>(attribute<&Book::pages>());
#endif
