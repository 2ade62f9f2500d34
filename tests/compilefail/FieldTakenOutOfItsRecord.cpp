// expect: (use of|call to)[a-z -]* ?.?deleted (function|copy constructor)
// A field lives in its record; what it holds is read by calling it.

#include "QELModels/Models/QELAsset.h"

using namespace QELModels;

auto title(const QELAsset& asset) {
#ifdef FIXED
    const std::optional<std::string_view> title = asset.title();
#else
    const Field<Text> title = asset.title;
#endif
    return sizeof(title);
}
