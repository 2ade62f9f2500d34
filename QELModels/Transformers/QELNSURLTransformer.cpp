#include "QELModels/Transformers/QELNSURLTransformer.h"

#include <string>

#include "QELModels/Process/Log.h"
#include "QELModels/Records/detail/TextPlacer.h"
#include "QELModels/Values/URL.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

using detail::RepresentationAccess;

namespace {

void writeRefusal(std::string_view text) {
    Log::write("Unable to transform URL " + std::string(text));
}

}  // namespace

Value QELNSURLTransformer::transformedValue(std::optional<RepresentationView> value) const {
    const auto text = value ? value->text() : std::nullopt;
    if (!text) return {};
    if (const auto url = URLView::parse(*text)) return Value::url(*url);
    writeRefusal(*text);
    return {};
}

void QELNSURLTransformer::transformInto(PropertyWriter& to, RepresentationView value) const {
    if (!value.isString()) return;
    const std::string_view text = RepresentationAccess::node(value)->string();
    if (const auto url = URLView::parse(text))
        detail::TextPlacer(to).putURL(*url);
    else
        writeRefusal(text);
}

Value QELNSURLTransformer::reverseTransformedValue(const Value& value) const {
    const auto url = value.url();
    return url ? Value::text(url->text()) : Value();
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
