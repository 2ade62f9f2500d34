#pragma once

#include <cstddef>
#include <string>

namespace QELModels::bench {

/// A sub-tree that nobody looks into, kept as its text in the document.
struct RawText {
    std::string text;

    friend bool operator==(const RawText&, const RawText&) = default;
};

/// The number of elements of an array or of members of a dictionary.
inline std::size_t countElements(const RawText& raw) {
    std::size_t depth = 0;
    std::size_t commas = 0;
    bool anything = false;
    bool inText = false;
    for (std::size_t i = 0; i < raw.text.size(); ++i) {
        const char c = raw.text[i];
        if (inText) {
            if (c == '\\') ++i;
            inText = c != '"';
            continue;
        }
        if (c == ' ' || c == '\n' || c == '\r' || c == '\t') continue;
        if (c == ']' || c == '}') --depth;
        if (depth == 1 && c == ',') ++commas;
        if (depth >= 1) anything = true;
        if (c == '[' || c == '{') ++depth;
        if (c == '"') inText = true;
    }
    return anything ? commas + 1 : 0;
}

}  // namespace QELModels::bench
