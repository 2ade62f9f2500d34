#include "QELModels/Transformers/QELNSURLTransformer.h"

#include <string>

#include "QELModels/Platform/Log.h"
#include "QELModels/Platform/URL.h"

namespace QELModels::inline QELMODELS_ABI {

namespace {

std::optional<URLView> parsed(std::optional<RepresentationView> value) {
    const auto text = value ? value->text() : std::nullopt;
    if (!text) return std::nullopt;
    const auto url = URLView::parse(*text);
    if (!url) Log::write("Unable to transform URL " + std::string(*text));
    return url;
}

}  // namespace

Value QELNSURLTransformer::transformedValue(std::optional<RepresentationView> value) const {
    const auto url = parsed(value);
    return url ? Value::url(*url) : Value();
}

void QELNSURLTransformer::transformInto(PropertyWriter& to, RepresentationView value) const {
    if (const auto url = parsed(value)) to.putURL(*url);
}

Value QELNSURLTransformer::reverseTransformedValue(const Value& value) const {
    const auto url = value.url();
    return url ? Value::text(url->text()) : Value();
}

}  // namespace QELModels::inline QELMODELS_ABI
