// expect: noTransformerOfTheLibraryHasThatName
// Only the library's own transformers have rules that are constant data.

#include "Book.h"
#include "QELModels/Transformers/QELValueTransformerRegistry.h"

constexpr auto declared = declare<Book>(property<&Book::title>("title"), property<&Book::pages>("pages"),
                                        property<&Book::sequel>("sequel"), property<&Book::isLong>("isLong"));

#ifdef FIXED
constexpr auto made = mapping<declared>(attribute<&Book::title>("title", fetched(kQELHTMLTransformer)));
#else
constexpr auto made = mapping<declared>(attribute<&Book::title>("title", fetched("mine")));
#endif
