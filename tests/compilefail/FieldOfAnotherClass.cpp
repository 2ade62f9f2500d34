// expect: a field of another class
// A record cannot declare another record's field.

#include "Book.h"

class Film : public QELBaseModel {
public:
    using QELBaseModel::QELBaseModel;
    Field<Text> title;
};

#ifdef FIXED
constexpr auto made = declare<Book>(property<&Book::title>("title"));
#else
constexpr auto made = declare<Book>(property<&Book::title>("title"), property<&Film::title>("other"));
#endif
