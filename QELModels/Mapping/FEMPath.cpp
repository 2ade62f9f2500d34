#include "QELModels/Mapping/FEMPath.h"

#include <optional>

namespace QELModels {
inline namespace QELMODELS_ABI {

namespace {

// Keys as a pointer's tokens, in which "~" and "/" are escaped. The separator is between the keys.
void appendTokens(std::string& pointer, std::string_view keys, std::optional<char> separator) {
    pointer += '/';
    for (const char c : keys) {
        if (c == separator)
            pointer += '/';
        else if (c == '~')
            pointer += "~0";
        else if (c == '/')
            pointer += "~1";
        else
            pointer += c;
    }
}

}  // namespace

std::string FEMPath::pointer(Indices indices) const {
    std::string pointer = parent_ == nullptr ? std::string() : parent_->pointer(indices);
    if (isElement())
        pointer += '/' + indexText(indices);
    else if (parent_ != nullptr || !keyPath_.empty())
        appendTokens(pointer, keyPath_, index_ == kDocumentKey ? std::nullopt : std::optional('.'));
    return pointer;
}

std::string FEMPath::property(Indices indices) const {
    std::string property = parent_ == nullptr ? std::string() : parent_->property(indices);
    if (isElement()) return property + '[' + indexText(indices) + ']';
    if (!property.empty() && !property_.empty()) property += '.';
    return property += property_;
}

std::string FEMPath::indexText(Indices indices) const {
    return indices == Indices::any ? "*" : std::to_string(index_);
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
