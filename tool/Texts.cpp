#include "tool/Texts.h"

#include <algorithm>
#include <cstddef>

namespace QELModels::tool {

std::vector<std::string> split(std::string_view text, char separator) {
    std::vector<std::string> pieces;
    for (std::size_t begin = 0; begin <= text.size();) {
        const std::size_t end = std::min(text.find(separator, begin), text.size());
        pieces.emplace_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return pieces;
}

std::string joined(const std::vector<std::string>& pieces, std::string_view separator) {
    std::string text;
    for (const std::string& piece : pieces) {
        if (!piece.empty() && !text.empty()) text += separator;
        text += piece;
    }
    return text;
}

std::string backslashed(std::string_view text, std::string_view characters) {
    std::string result;
    for (const char c : text) {
        if (characters.find(c) != std::string_view::npos) result += '\\';
        result += c;
    }
    return result;
}

}  // namespace QELModels::tool
