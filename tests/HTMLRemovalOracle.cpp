#include "HTMLRemovalOracle.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace HTMLRemovalOracle {

namespace {

const std::array<NamedReference, kNamedReferences> kTable = {
    {{u"&nbsp;", 160},   {u"&iexcl;", 161},  {u"&cent;", 162},   {u"&pound;", 163},  {u"&curren;", 164},
     {u"&yen;", 165},    {u"&brvbar;", 166}, {u"&sect;", 167},   {u"&uml;", 168},    {u"&copy;", 169},
     {u"&ordf;", 170},   {u"&laquo;", 171},  {u"&not;", 172},    {u"&shy;", 173},    {u"&reg;", 174},
     {u"&macr;", 175},   {u"&deg;", 176},    {u"&plusmn;", 177}, {u"&sup2;", 178},   {u"&sup3;", 179},
     {u"&acute;", 180},  {u"&micro;", 181},  {u"&para;", 182},   {u"&middot;", 183}, {u"&cedil;", 184},
     {u"&sup1;", 185},   {u"&ordm;", 186},   {u"&raquo;", 187},  {u"&frac14;", 188}, {u"&frac12;", 189},
     {u"&frac34;", 190}, {u"&iquest;", 191}, {u"&Agrave;", 192}, {u"&Aacute;", 193}, {u"&Acirc;", 194},
     {u"&Atilde;", 195}, {u"&Auml;", 196},   {u"&Aring;", 197},  {u"&AElig;", 198},  {u"&Ccedil;", 199},
     {u"&Egrave;", 200}, {u"&Eacute;", 201}, {u"&Ecirc;", 202},  {u"&Euml;", 203},   {u"&Igrave;", 204},
     {u"&Iacute;", 205}, {u"&Icirc;", 206},  {u"&Iuml;", 207},   {u"&ETH;", 208},    {u"&Ntilde;", 209},
     {u"&Ograve;", 210}, {u"&Oacute;", 211}, {u"&Ocirc;", 212},  {u"&Otilde;", 213}, {u"&Ouml;", 214},
     {u"&times;", 215},  {u"&Oslash;", 216}, {u"&Ugrave;", 217}, {u"&Uacute;", 218}, {u"&Ucirc;", 219},
     {u"&Uuml;", 220},   {u"&Yacute;", 221}, {u"&THORN;", 222},  {u"&szlig;", 223},  {u"&agrave;", 224},
     {u"&aacute;", 225}, {u"&acirc;", 226},  {u"&atilde;", 227}, {u"&auml;", 228},   {u"&aring;", 229},
     {u"&aelig;", 230},  {u"&ccedil;", 231}, {u"&egrave;", 232}, {u"&eacute;", 233}, {u"&ecirc;", 234},
     {u"&euml;", 235},   {u"&igrave;", 236}, {u"&iacute;", 237}, {u"&icirc;", 238},  {u"&iuml;", 239},
     {u"&eth;", 240},    {u"&ntilde;", 241}, {u"&ograve;", 242}, {u"&oacute;", 243}, {u"&ocirc;", 244},
     {u"&otilde;", 245}, {u"&ouml;", 246},   {u"&divide;", 247}, {u"&oslash;", 248}, {u"&ugrave;", 249},
     {u"&uacute;", 250}, {u"&ucirc;", 251},  {u"&uuml;", 252},   {u"&yacute;", 253}, {u"&thorn;", 254},
     {u"&yuml;", 255},   {u"&amp;", 38},     {u"&lt;", 60},      {u"&gt;", 62},      {u"&apos;", 39},
     {u"&quot;", 34}}};

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
