// What is wrong in the list of a record's properties, or of the fields that it compares.

#include "Book.h"

class Shelf : public Record<Shelf> {
public:
    Field<Number> width;
    Field<Number> height;
    static const ObjectClassOf<Shelf> objectClass;
};
class Sign : public Record<Sign> {
public:
    Field<Text> inscription;
    static const ObjectClassOf<Sign> objectClass;
};
class Crate : public Record<Crate> {
public:
#ifdef FIXED
    Field<Text> contents;
#else
    Field<std::string> contents;
#endif
    static const ObjectClassOf<Crate> objectClass;
};
class Vase : public Record<Vase> {
public:
#ifdef FIXED
    Field<bool> isCracked;
#else
    bool isCracked;
#endif
    static const ObjectClassOf<Vase> objectClass;
};
class Lamp : public Record<Lamp> {
public:
    Field<Number> watts;
    double brightness() const { return 0; }
    bool isBright() const { return false; }
    static const ObjectClassOf<Lamp> objectClass;
};
class Clip : public Record<Clip> {
public:
    Field<Number> size;
    Field<Number> other;
    bool isSmall() const { return false; }
    static const ObjectClassOf<Clip> objectClass;
};

#ifdef FIXED
constexpr auto ofShelf = declare<Shelf>(property<&Shelf::width>("width"), property<&Shelf::height>("height"));
constexpr auto ofSign = declare<Sign>(property<&Sign::inscription>("inscription"));
constexpr auto named = property<&Book::title>("title");
constexpr auto lamp = declare<Lamp>(property<&Lamp::watts>("watts"), property<&Lamp::isBright>("bright"));
constexpr auto ofClip = declare<Clip>(property<&Clip::size>("size"), property<&Clip::other>("other"),
                                      property<&Clip::isSmall>("isSmall"));
using Compared = FieldsOf<&Book::title>;
#else
// expect: this position from 0, is not declared as a property | Position = 1|Shelf, 1,
constexpr auto ofShelf = declare<Shelf>(property<&Shelf::width>("width"));
// expect: a member of another class | Sign::inscription
constexpr auto ofSign = declare<Shelf>(property<&Shelf::width>("width"), property<&Shelf::height>("height"),
                                       property<&Sign::inscription>("inscription"));
// expect: titel.+ is not a member of .+Book|no member named .titel. in .Book | titel
constexpr auto named = property<&Book::titel>("titel");
// expect: a computed property is a boolean or an integer | Lamp::brightness
constexpr auto lamp = property<&Lamp::brightness>("brightness");
// expect: twoPropertiesOfARecordHaveTheSameName | Clip
constexpr auto ofClip = declare<Clip>(property<&Clip::size>("size"), property<&Clip::other>("size"));
// expect: a computed property is not compared, but what it is computed from | Book::isLong
// expect: a field that is compared is not declared | Clip::other
using Compared = FieldsOf<&Book::isLong, &Clip::other>;
#endif
// expect: a Field holds no value of this type | Crate::contents
constexpr auto ofCrate = property<&Crate::contents>("contents");
// expect: the members of a class of records are fields alone | Vase
constexpr auto ofVase = declare<Vase>(property<&Vase::isCracked>("isCracked"));

constexpr auto described = describe<declared, Compared, Compared>("Book");
