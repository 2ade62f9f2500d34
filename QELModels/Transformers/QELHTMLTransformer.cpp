#include "QELModels/Transformers/QELHTMLTransformer.h"

#include "QELModels/Categories/NSString+HTMLRemoval.h"
#include "QELModels/Categories/detail/HTMLCleaning.h"
#include "QELModels/Records/detail/TextPlacer.h"
#include "QELModels/Representation/detail/RepresentationAccess.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

Value QELHTMLTransformer::transformedValue(std::optional<RepresentationView> value) const {
    const auto text = value ? value->text() : std::nullopt;
    return text ? Value::text(HTMLRemoval::withoutHTMLTags(*text)) : Value();
}

void QELHTMLTransformer::transformInto(PropertyWriter& to, RepresentationView value) const {
    if (!value.isString()) return;
    const std::string_view text = detail::RepresentationAccess::node(value)->string();
    detail::TextPlacer placer(to);
    if (placer.mayStay(text) && HTMLRemoval::isPlainText(text)) return to.putText(text);
    placer.putReserved(detail::withoutHTMLTagsOfBlock(text, placer.reserve(text.size())));
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
