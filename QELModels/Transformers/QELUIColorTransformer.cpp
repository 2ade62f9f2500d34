#include "QELModels/Transformers/QELUIColorTransformer.h"

#include <string>

#include "QELModels/Categories/UIColor+QELUtils.h"
#include "QELModels/Records/MappingFault.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

namespace {

// A value that is not a string, for a message.
std::string described(RepresentationView value) {
    if (const auto number = value.number()) {
        if (number->isBoolean()) return number->boolValue() ? "true" : "false";
        return number->toString();
    }
    return value.isArray() ? "an array" : "a dictionary";
}

}  // namespace

Value QELUIColorTransformer::transformedValue(std::optional<RepresentationView> value) const {
    if (!value || value->isNull()) return {};
    const auto text = value->text();
    // A mistake of the API that must be noticed: null would look like a category without a colour.
    if (!text)
        throw MappingFault("QELUIColorTransformer: a colour must be a string, not " + described(*value));
    const auto color = QELUtils::colorFromRGBHexString(*text);
    return color ? Value(*color) : Value();
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
