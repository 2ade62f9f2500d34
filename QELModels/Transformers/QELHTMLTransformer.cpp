#include "QELModels/Transformers/QELHTMLTransformer.h"

#include "QELModels/Categories/NSString+HTMLRemoval.h"

namespace QELModels::inline QELMODELS_ABI {

Value QELHTMLTransformer::transformedValue(std::optional<RepresentationView> value) const {
    const auto text = value ? value->text() : std::nullopt;
    return text ? Value::text(HTMLRemoval::withoutHTMLTags(*text)) : Value();
}

Value QELHTMLTransformer::transformedValueInto(RepresentationView value, BlockWriter& writer) const {
    const auto text = value.text();
    if (!text) return {};
    if (HTMLRemoval::isPlainText(*text)) return ValueAccess::lentText(*text);
    char* to = writer.reserve(text->size());
    const std::size_t size = HTMLRemoval::withoutHTMLTags(*text, to);
    writer.commit(size);
    return ValueAccess::textIn(writer.block(), {to, size});
}

}  // namespace QELModels::inline QELMODELS_ABI
