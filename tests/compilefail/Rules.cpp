// What is wrong in the rules of a record's mapping.

#include "Book.h"

constexpr auto declaredInPart =
    declare<Book>(property<&Book::title>("title"), property<&Book::pages>("pages"),
                  property<&Book::sequel>("sequel"), property<&Book::binding>("binding"));

#ifdef FIXED
constexpr auto toRecord = attribute<&Book::title>();
constexpr auto computed = attribute<&Book::pages>();
constexpr auto toText = relationship<&Book::sequel>();
constexpr auto undeclared = mapping<declared>(attribute<&Book::title>());
constexpr auto twice = mapping<declared>(attribute<&Book::title>("a"), attribute<&Book::pages>("a"));
constexpr auto cleaned = attribute<&Book::title>("pages", fetched(kQELHTMLTransformer));
constexpr auto address = attribute<&QELAsset::articleUrl>("title", captured(kQELNSURLTransformer));
constexpr auto word = attribute<&Book::pages>("language", lookedUpIn(kLanguages));
constexpr auto raw = attribute<&QELAsset::articleUrl>("url", fetched(kQELNSURLTransformer));
#else
// expect: aRawValueIsByItselfNoURLDateOrColour | QELAsset::articleUrl
constexpr auto raw = attribute<&QELAsset::articleUrl>("url");
// expect: an attribute cannot fill a record or a list of records | Book::sequel
constexpr auto toRecord = attribute<&Book::sequel>();
// expect: a computed property cannot be set | Book::isLong
constexpr auto computed = attribute<&Book::isLong>();
// expect: a relationship needs a record or a list of records | Book::title
constexpr auto toText = relationship<&Book::title>();
// expect: a rule for a property that is not declared | QELAsset::status
constexpr auto undeclared = mapping<declaredInPart>(attribute<&QELAsset::status>());
// expect: two rules for one property | Book::pages
constexpr auto twice = mapping<declared>(attribute<&Book::pages>("a"), attribute<&Book::pages>("b"));
// expect: theMapRuleMakesWhatThePropertyCannotHold | Book::pages
constexpr auto cleaned = attribute<&Book::pages>("pages", fetched(kQELHTMLTransformer));
// expect: theMapRuleMakesWhatThePropertyCannotHold | QELAsset::status
constexpr auto address = attribute<&QELAsset::status>("title", captured(kQELNSURLTransformer));
// expect: theTableIsOfAnotherEnumeration | Book::binding
constexpr auto word = attribute<&Book::binding>("language", lookedUpIn(kLanguages));
#endif
