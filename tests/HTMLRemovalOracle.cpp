#include "HTMLRemovalOracle.h"

#include <algorithm>
#include <cstdint>
#include <string_view>
#include <vector>

namespace HTMLRemovalOracle {

namespace {

// Of the code points from 160 on.
constexpr std::u16string_view kLatinNames =
    u"nbsp iexcl cent pound curren yen brvbar sect uml copy ordf laquo not shy reg macr deg "
    u"plusmn sup2 sup3 acute micro para middot cedil sup1 ordm raquo frac14 frac12 frac34 iquest "
    u"Agrave Aacute Acirc Atilde Auml Aring AElig Ccedil Egrave Eacute Ecirc Euml Igrave Iacute "
    u"Icirc Iuml ETH Ntilde Ograve Oacute Ocirc Otilde Ouml times Oslash Ugrave Uacute Ucirc Uuml "
    u"Yacute THORN szlig agrave aacute acirc atilde auml aring aelig ccedil egrave eacute ecirc "
    u"euml igrave iacute icirc iuml eth ntilde ograve oacute ocirc otilde ouml divide oslash "
    u"ugrave uacute ucirc uuml yacute thorn yuml ";

std::vector<NamedReference> allReferences() {
    std::vector<NamedReference> all;
    char16_t character = 160;
    for (std::size_t at = 0; at < kLatinNames.size();) {
        const std::size_t end = kLatinNames.find(u' ', at);
        all.push_back({u"&" + std::u16string(kLatinNames.substr(at, end - at)) + u";", character++});
        at = end + 1;
    }
    all.insert(all.end(),
               {{u"&amp;", u'&'}, {u"&lt;", u'<'}, {u"&gt;", u'>'}, {u"&apos;", u'\''}, {u"&quot;", u'"'}});
    return all;
}
const std::vector<NamedReference> kTable = allReferences();

bool contains(const std::u16string& text, const std::u16string& part) {
    return text.find(part) != std::u16string::npos;
}

void replaceAll(std::u16string& text, const std::u16string& part, const std::u16string& by) {
    for (auto at = text.find(part); at != std::u16string::npos; at = text.find(part, at + by.size())) {
        text.replace(at, part.size(), by);
    }
}

/// The first match of "<[^>]+>" from `begin` on: [begin, end). False if there is none.
bool findTag(const std::u16string& text, std::size_t& begin, std::size_t& end) {
    for (begin = 0; begin < text.size(); ++begin) {
        if (text[begin] != u'<') continue;
        end = begin + 1;
        while (end < text.size() && text[end] != u'>')
            ++end;
        if (end > begin + 1 && end < text.size()) {
            ++end;
            return true;
        }
    }
    return false;
}

/// A scanner of numbers, as platforms have them.
struct Scanner {
    std::u16string text;
    std::size_t at = 0;

    char16_t peek(std::size_t ahead = 0) const { return at + ahead < text.size() ? text[at + ahead] : u'\0'; }
    void skipSpace() {
        while (peek() == u' ' || (peek() >= u'\t' && peek() <= u'\r'))
            ++at;
    }
    int digit(int base) const {
        const auto found =
            std::u16string(u"0123456789abcdef")
                .find(peek() >= u'A' && peek() <= u'F' ? static_cast<char16_t>(peek() + 32) : peek());
        return found < static_cast<std::size_t>(base) ? static_cast<int>(found) : -1;
    }
    double digits(int base) {  // exact where it matters: what is above 2^53 is far above every limit
        double value = 0;
        for (; digit(base) >= 0; ++at)
            value = value * base + digit(base);
        return value;
    }

    std::int64_t hexadecimal() {
        skipSpace();
        if (peek() == u'0' && (peek(1) == u'x' || peek(1) == u'X')) at += 2;
        return static_cast<std::int64_t>(std::min(digits(16), 4294967295.0));
    }
    std::int64_t decimal() {
        skipSpace();
        const double sign = peek() == u'-' ? -1 : 1;
        if (peek() == u'-' || peek() == u'+') ++at;
        return static_cast<std::int64_t>(std::clamp(sign * digits(10), -2147483648.0, 2147483647.0));
    }
};

}  // namespace

const NamedReference& namedReference(std::size_t index) {
    return kTable[index];
}

std::u16string stringByStrippingHTML(std::u16string text) {
    std::size_t begin = 0;
    std::size_t end = 0;
    while (findTag(text, begin, end))
        text.erase(begin, end - begin);
    return qel_decodeHTMLCharacterEntities(text);
}

std::u16string qel_decodeHTMLCharacterEntities(std::u16string text) {
    if (!contains(text, u"&")) return text;
    std::u16string result = text;
    for (const auto& [reference, character] : kTable) {
        if (contains(text, reference)) replaceAll(result, reference, std::u16string(1, character));
    }
    for (std::size_t start = 0; start < result.size();) {
        const std::size_t ampersand = result.find(u"&#", start);
        const std::size_t semicolon = result.find(u';', start);
        if (ampersand == std::u16string::npos || semicolon == std::u16string::npos ||
            semicolon <= ampersand) {
            ++start;
            continue;
        }
        const std::u16string body = result.substr(ampersand + 2, semicolon - ampersand - 1);
        result.erase(ampersand, semicolon - ampersand + 1);
        const bool isHexadecimal = body.starts_with(u'x');
        Scanner scanner{isHexadecimal ? body.substr(1) : body};
        const std::int64_t value = isHexadecimal ? scanner.hexadecimal() : scanner.decimal();
        result.insert(ampersand, 1, static_cast<char16_t>(value & 0xFFFF));
        start = ampersand;
    }
    return result;
}

std::u16string mz_encodeHTMLCharacterEntities(std::u16string text) {
    replaceAll(text, u"&", u"&amp;");
    replaceAll(text, u"<", u"&lt;");
    replaceAll(text, u">", u"&gt;");
    return text;
}

}  // namespace HTMLRemovalOracle
