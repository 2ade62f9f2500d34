#include "QELModels/Mapping/FEMPath.h"

namespace QELModels::inline QELMODELS_ABI {

namespace {

// The keys of a key path as a pointer's tokens, in which "~" and "/" are escaped.
void appendTokens(std::string& pointer, std::string_view keyPath) {
    pointer += '/';
    for (const char c : keyPath) {
        if (c == '.')
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

std::string FEMPath::pointer() const {
    std::string pointer = parent_ == nullptr ? std::string() : parent_->pointer();
    if (isElement())
        pointer += '/' + std::to_string(index_);
    else if (parent_ != nullptr || !keyPath_.empty())
        appendTokens(pointer, keyPath_);
    return pointer;
}

std::string FEMPath::property() const {
    std::string property = parent_ == nullptr ? std::string() : parent_->property();
    if (isElement()) return property + '[' + std::to_string(index_) + ']';
    if (!property.empty() && !property_.empty()) property += '.';
    return property += property_;
}

}  // namespace QELModels::inline QELMODELS_ABI
