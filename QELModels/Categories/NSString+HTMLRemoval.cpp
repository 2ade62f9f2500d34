#include "QELModels/Categories/NSString+HTMLRemoval.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cassert>
#include <cstdint>
#include <cstring>
#include <utility>

#include "QELModels/Categories/detail/HTMLCleaning.h"
#include "QELModels/Platform/detail/ASCII.h"
#include "QELModels/Platform/detail/ByteBlock.h"
#include "QELModels/Platform/detail/PerfectHash.h"
#include "QELModels/Platform/detail/Word.h"
#include "QELModels/Values/Text.h"

// Cleaning is three passes over one buffer: tags, named references, numeric references. No pass writes beyond
// the place where it reads, so the last two work in place. Each pass moves forward only; what it looks up
// ahead it either consumes, or looks up once for the whole text. So the time is linear. In most texts no pass
// depends on what another one has made, and one quicker pass does the work of all three.

namespace QELModels {
inline namespace QELMODELS_ABI {

namespace {

using detail::ByteBlock;
using detail::Word;

// --- Looking for bytes, several at a step -----------------------------------------------------------------

constexpr Word kEachByte = 0x0101010101010101;
constexpr Word kHighBits = 0x80 * kEachByte;

/// Eight bytes of text.
Word wordAt(const char* text) noexcept {
    if constexpr (std::endian::native != std::endian::little) return detail::firstWord({text, sizeof(Word)});
    Word word = 0;
    std::memcpy(&word, text, sizeof word);
    return word;
}

/// The same of text that may end within the word; NULs for what is missing.
Word wordAt(const char* text, const char* end) noexcept {
    const auto size = static_cast<std::size_t>(end - text);
    return size >= sizeof(Word) ? wordAt(text) : detail::firstWord({text, size});
}

/// Has the high bit of the first byte that is equal to an ASCII character, and no lower bit. Higher bits mean
/// nothing: the subtraction may borrow from them.
constexpr Word firstOf(char byte, Word word) noexcept {
    const Word zero = word ^ static_cast<unsigned char>(byte) * kEachByte;
    return (zero - kEachByte) & ~word & kHighBits;
}

constexpr Word firstMark(Word word) noexcept {
    return firstOf('<', word) | firstOf('&', word);
}

constexpr std::size_t placeOf(Word first) noexcept {
    return static_cast<std::size_t>(std::countr_zero(first)) / 8;
}

/// Compares: is a byte '<' or '&'?
ByteBlock marksIn(ByteBlock block) noexcept {
    return (block == '<') | (block == '&');
}

/// The place of the first such byte; `end` if there is none.
const char* find(const char* from, const char* end, char byte) noexcept {
    const void* found = std::memchr(from, byte, static_cast<std::size_t>(end - from));
    return found == nullptr ? end : static_cast<const char*>(found);
}

// --- Named references --------------------------------------------------------------------------------------

// Every named reference: one for each code point from 160 to 255, in order, then five of ASCII characters.
constexpr std::array<std::string_view, 101> kNames = {
    "nbsp",   "iexcl",  "cent",   "pound",  "curren", "yen",    "brvbar", "sect",   "uml",    "copy",
    "ordf",   "laquo",  "not",    "shy",    "reg",    "macr",   "deg",    "plusmn", "sup2",   "sup3",
    "acute",  "micro",  "para",   "middot", "cedil",  "sup1",   "ordm",   "raquo",  "frac14", "frac12",
    "frac34", "iquest", "Agrave", "Aacute", "Acirc",  "Atilde", "Auml",   "Aring",  "AElig",  "Ccedil",
    "Egrave", "Eacute", "Ecirc",  "Euml",   "Igrave", "Iacute", "Icirc",  "Iuml",   "ETH",    "Ntilde",
    "Ograve", "Oacute", "Ocirc",  "Otilde", "Ouml",   "times",  "Oslash", "Ugrave", "Uacute", "Ucirc",
    "Uuml",   "Yacute", "THORN",  "szlig",  "agrave", "aacute", "acirc",  "atilde", "auml",   "aring",
    "aelig",  "ccedil", "egrave", "eacute", "ecirc",  "euml",   "igrave", "iacute", "icirc",  "iuml",
    "eth",    "ntilde", "ograve", "oacute", "ocirc",  "otilde", "ouml",   "divide", "oslash", "ugrave",
    "uacute", "ucirc",  "uuml",   "yacute", "thorn",  "yuml",   "amp",    "lt",     "gt",     "apos",
    "quot"};
constexpr std::size_t kIndexOfAmp = 96;        // what follows "amp" may arise from decoding it
constexpr char32_t kFirstLatin = 160;          // the code point of the name at index 0
constexpr std::string_view kAscii = "&<>'\"";  // the characters of the names from "amp" on
static_assert(kNames[kIndexOfAmp] == "amp" && kIndexOfAmp + kAscii.size() == kNames.size());

/// A name and its ';' as a word, NULs after it. The ';' keeps names apart from those that go on with a NUL.
constexpr Word keyOf(std::string_view name) noexcept {
    return detail::firstWord(name) | Word{';'} << (8 * name.size());
}
static_assert(std::all_of(kNames.begin(), kNames.end(),
                          [](auto name) { return name.size() < sizeof(Word); }));

// Names are numbered from 1.
constexpr std::size_t kNoName = 0;
constexpr std::size_t kAmp = kIndexOfAmp + 1;

constexpr auto kKeys = [] {
    std::array<Word, kNames.size()> keys{};
    std::transform(kNames.begin(), kNames.end(), keys.begin(), keyOf);
    return keys;
}();
// Many slots, so that a multiplier is soon found; so few names occur in a text that hardly any are touched.
constexpr detail::PerfectHash<Word, 2048> kNameHash(kKeys);
static_assert(kNameHash.isFound());
constexpr auto kKeyOfNumber = [] {
    std::array<Word, kNames.size() + 1> keys{};  // 0, the first one, is the key of no name
    std::copy(kKeys.begin(), kKeys.end(), keys.begin() + 1);
    return keys;
}();

/// The number of the name that a key is of; `kNoName` if it is of none.
constexpr std::size_t numberOf(Word key) noexcept {
    const std::size_t number = kNameHash.find(key);
    return kKeyOfNumber[number] == key ? number : kNoName;
}

static_assert(std::all_of(kNames.begin(), kNames.end(),
                          [](auto name) { return detail::isLetter(name.front()); }));

/// What a reference is replaced by.
struct Character {
    char bytes[2];  // UTF-8
    std::uint8_t size;
};
/// The character of each number; of `kNoName`, the '&' that begins what is not a reference.
constexpr auto kCharacters = [] {
    std::array<Character, kNames.size() + 1> characters{};
    characters[kNoName] = {{'&'}, 1};
    for (std::size_t number = 1; number < kAmp; ++number) {
        char bytes[Text::kMaxCharacterBytes] = {};
        Text::encode(kFirstLatin + static_cast<char32_t>(number - 1), bytes);
        characters[number] = {{bytes[0], bytes[1]}, 2};
    }
    for (std::size_t number = kAmp; number < characters.size(); ++number)
        characters[number] = {{kAscii[number - kAmp]}, 1};
    return characters;
}();

/// What follows an '&': which name, and how many bytes it takes with its ';'.
struct Reference {
    std::size_t number = kNoName;
    std::size_t length = 0;
    constexpr bool found() const noexcept { return number != kNoName; }
    constexpr bool isAmp() const noexcept { return number == kAmp; }
    /// Whether it is one of the last four, which are decoded after "&amp;".
    constexpr bool isAfterAmp() const noexcept { return number > kAmp; }
    constexpr const Character& character() const noexcept { return kCharacters[number]; }
};

constexpr Reference referenceIn(Word word) noexcept {
    const Word semicolon = firstOf(';', word);
    if (semicolon == 0) return {};
    const Word upToSemicolon = ((semicolon & (0 - semicolon)) << 1) - 1;
    const std::size_t number = numberOf(word & upToSemicolon);
    return {number, number == kNoName ? 0 : placeOf(semicolon) + 1};
}

/// The text that a pass has made so far, in a buffer of at least the size of what it reads.
class Output {
public:
    Output(char* begin, char* end) noexcept : begin_(begin), end_(end) {}

    char* end() const noexcept { return end_; }
    void put(char byte) noexcept { *end_++ = byte; }
    /// The same in a buffer that holds the text: a byte written anew would have to reach the cache before the
    /// search that goes on after it can read there.
    void putUnlessThere(char byte) noexcept {
        if (*end_ != byte) *end_ = byte;
        ++end_;
    }
    void putCharacter(char32_t character) noexcept { end_ += Text::encode(character, end_); }
    /// The character of a reference. The reference was longer, so both bytes have room.
    void put(const Character& character) noexcept {
        std::memcpy(end_, character.bytes, sizeof character.bytes);
        end_ += character.size;
    }

    /// Adds bytes that followed the output in the text, which may be in the same buffer.
    void putUnjoined(const char* from, const char* to) noexcept {
        const auto size = static_cast<std::size_t>(to - from);
        if (from != end_) std::memmove(end_, from, size);
        end_ += size;
    }

    /// Adds bytes that did not follow the output in the text: two halves that meet become one character.
    void putJoined(const char* from, const char* to) noexcept {
        const std::string_view made(begin_, static_cast<std::size_t>(end_ - begin_));
        const std::string_view next(from, static_cast<std::size_t>(to - from));
        if (Text::endsInHighHalf(made) && Text::beginsWithLowHalf(next)) {
            const char32_t pair = Text::joined(made, next);
            end_ -= Text::kHalfBytes;
            putCharacter(pair);
            from += Text::kHalfBytes;
        }
        putUnjoined(from, to);
    }

private:
    char* begin_;
    char* end_;
};

/// Copies the text without its tags. The first '<' is known.
///
/// After a tag is removed, the search need not begin again at the start of the text: each '<' before it is
/// followed by a '>', and the last byte before it is not a '<', or that would have begun the tag. A '<'
/// without a later '>' ends the pass, since no '<' after it has one.
char* removeTags(const char* text, const char* tag, const char* end, char* to) noexcept {
    Output out(to, to);
    out.putUnjoined(text, tag);
    while (tag != end) {
        const char* rest = tag;
        const char* next = tag + 1;
        if (next == end || *next != '>') {
            const char* close = find(next, end, '>');
            if (close == end) {
                out.putJoined(tag, end);
                break;
            }
            rest = next = close + 1;
        }
        tag = find(next, end, '<');
        out.putJoined(rest, tag);
    }
    return out.end();
}

/// Decodes named references in place, from the first '&' on.
///
/// By definition, the names are decoded one after another, each in the whole text: Latin-1 first, then
/// "&amp;", then four more. One pass gives the same result. References cannot overlap, and of the characters
/// that decoding inserts, only '&' can be a part of another reference. So the order matters for one thing:
/// "&amp;" directly before the rest of one of the last four. That is decoded only if the text also has the
/// same reference as it was.
class NamedReferences {
public:
    NamedReferences(char* first, char* end) noexcept : in_(first), end_(end), out_(first, first) {}

    void decode() noexcept {
        while (in_ != end_) {
            const Reference reference = referenceIn(wordAt(++in_, end_));
            in_ += reference.length;
            if (reference.isAmp()) {
                decodeAfterAmp();
            } else if (reference.found()) {
                if (reference.isAfterAmp()) asWritten_ |= bit(reference);
                out_.put(reference.character());
            } else {
                putAmpersand();
            }
            const char* next = find(in_, end_, '&');
            out_.putUnjoined(in_, next);
            in_ = next;
        }
    }

    char* end() const noexcept { return out_.end(); }

    /// The first "&#" of the decoded text; null if there is none.
    char* firstNumeric() const noexcept { return firstNumeric_; }

private:
    static unsigned bit(const Reference& reference) noexcept { return 1u << (reference.number - kAmp); }

    // Every '&' of the decoded text is put by this function, and a '#' is never inserted.
    void putAmpersand() noexcept {
        if (firstNumeric_ == nullptr && in_ != end_ && *in_ == '#') firstNumeric_ = out_.end();
        out_.putUnlessThere('&');
    }

    void decodeAfterAmp() noexcept {
        const Reference arisen = referenceIn(wordAt(in_, end_));
        if (!arisen.isAfterAmp() || !isWritten(arisen)) {
            putAmpersand();
            return;
        }
        in_ += arisen.length;
        out_.put(arisen.character());
    }

    /// Whether the text, before any decoding, has the reference. What was read is known; what is ahead is
    /// searched once, when it is needed first.
    bool isWritten(const Reference& wanted) noexcept {
        if (!lookedAhead_) {
            lookedAhead_ = true;
            for (const char* at = find(in_, end_, '&'); at != end_; at = find(at + 1, end_, '&')) {
                const Reference reference = referenceIn(wordAt(at + 1, end_));
                if (reference.isAfterAmp()) asWritten_ |= bit(reference);
            }
        }
        return (asWritten_ & bit(wanted)) != 0;
    }

    const char* in_;
    const char* const end_;
    Output out_;
    char* firstNumeric_ = nullptr;
    unsigned asWritten_ = 0;
    bool lookedAhead_ = false;
};

/// The number of the digits at the start of the text, or `limit` if that is less. Requires: `limit` is below
/// 2^59, so that no step exceeds 64 bits.
constexpr std::uint64_t readDigits(std::string_view text, unsigned base, std::uint64_t limit) noexcept {
    assert(limit >> 59 == 0);
    std::uint64_t value = 0;
    for (const char byte : text) {
        const unsigned digit = detail::hexDigitValue(byte);
        if (digit >= base) break;
        value = std::min(value * base + digit, limit);
    }
    return value;
}

/// The code unit of a numeric reference, from the text between "&#" and ';'.
char32_t codeUnitOf(std::string_view body) noexcept {
    constexpr std::uint64_t kUnitMask = 0xFFFF;
    const bool isHexadecimal = body.starts_with('x');
    if (isHexadecimal) body.remove_prefix(1);
    while (!body.empty() && detail::isWhiteSpace(body.front()))
        body.remove_prefix(1);

    if (isHexadecimal) {
        if (body.starts_with("0x") || body.starts_with("0X")) body.remove_prefix(2);
        return static_cast<char32_t>(readDigits(body, 16, UINT32_MAX) & kUnitMask);
    }
    // Clamped to 32 bits with a sign, then cut to the low 16 bits.
    const bool isNegative = body.starts_with('-');
    if (isNegative || body.starts_with('+')) body.remove_prefix(1);
    const std::uint64_t limit = std::uint64_t{INT32_MAX} + (isNegative ? 1 : 0);
    const std::uint64_t magnitude = readDigits(body, 10, limit);
    return static_cast<char32_t>((isNegative ? 0 - magnitude : magnitude) & kUnitMask);
}

const char* findNumeric(const char* from, const char* end) noexcept {
    for (const char* at = find(from, end, '&'); at != end; at = find(at + 1, end, '&')) {
        if (at + 1 != end && at[1] == '#') return at;
    }
    return end;
}

/// Decodes numeric references in place. `first` is the first "&#".
///
/// A reference is an "&#" and all up to the next ';'. It is replaced by its character, and the search goes on
/// at that character. This matters only for an '&' before a '#': a '#' would need an '&' before the place of
/// the search, and a ';' before the next "&#" is skipped. A reference without ';' ends the pass, since no
/// later one has a ';'.
///
/// The output cannot overtake the input: a reference has at least three bytes, a code unit at most three.
char* decodeNumericReferences(char* text, char* first, char* end) noexcept {
    Output out(text, first);
    char* in = first;
    while (in != end) {
        char* const body = in + 2;
        char* const semicolon = in + (find(body, end, ';') - in);
        if (semicolon == end) break;
        const char32_t unit = codeUnitOf({body, static_cast<std::size_t>(semicolon - body)});
        char* const rest = semicolon + 1;
        if (unit == '&' && rest != end && *rest == '#') {
            *semicolon = '&';
            in = semicolon;
            continue;
        }
        char bytes[Text::kMaxCharacterBytes];
        out.putJoined(bytes, bytes + Text::encode(unit, bytes));
        in = rest + (findNumeric(rest, end) - rest);
        out.putJoined(rest, in);
    }
    out.putJoined(in, end);
    return out.end();
}

/// Decodes all references in place; returns the new end.
char* decodeReferences(char* text, char* end) noexcept {
    char* const ampersand = text + (find(text, end, '&') - text);
    if (ampersand == end) return end;
    NamedReferences named(ampersand, end);
    named.decode();
    if (named.firstNumeric() == nullptr) return named.end();
    return decodeNumericReferences(text, named.firstNumeric(), named.end());
}

// --- All in one pass --------------------------------------------------------------------------------------

/// Does the work of all passes as long as none depends on what another one has made, as in nearly all texts.
/// It gives up at a tag shortly after an '&', at a reference that may result from another one, and at
/// surrogate halves; then the passes begin at the start. If text and result have a block's slack, it reads
/// and writes whole blocks.
template <bool kSlack>
class SinglePass {
public:
    SinglePass(std::string_view text, char* to) noexcept
        : in_(text.data()), end_(text.data() + text.size()), to_(to), out_(to) {}

    /// The end of the result; null if it gave up.
    char* clean() noexcept {
        while (!copyPlain()) {
            if (!(*in_ == '<' ? passTag() : decode())) return nullptr;
        }
        return out_;
    }

private:
    std::size_t left() const noexcept { return static_cast<std::size_t>(end_ - in_); }

    /// The next eight bytes; NULs for what is missing.
    Word word() const noexcept {
        if constexpr (kSlack && std::endian::native == std::endian::little)
            return wordAt(in_) & detail::kFirstBytes[std::min(left(), sizeof(Word))];
        else
            return wordAt(in_, end_);
    }

    bool passTag() noexcept {
        const char* const next = in_ + 1;
        if (next != end_ && *next == '>') {
            *out_++ = '<';
            in_ = next;
            return true;
        }
        const char* const close = findClose(next);
        if (close == end_) return false;
        in_ = close + 1;
        return !Text::beginsWithLowHalf({in_, left()}) ||
               !Text::endsInHighHalf({to_, static_cast<std::size_t>(out_ - to_)});
    }

    /// The next '>', which is seldom far; the end if there is none.
    const char* findClose(const char* from) const noexcept {
        if constexpr (kSlack) {
            const std::size_t close = (ByteBlock(from) == '>').first();
            if (close != ByteBlock::kSize)
                return from + std::min(close, static_cast<std::size_t>(end_ - from));
        }
        return find(from, end_, '>');
    }

    bool decode() noexcept {
        ++in_;
        const Word next = word();
        return (next & 0xFF) == '#' ? decodeNumeric(next) : decodeNamed(next);
    }

    bool decodeNamed(Word word) noexcept {
        const Reference reference = referenceIn(word);
        // Without a reference, the '&' may be the last byte for which there is room.
        const Character& character = reference.character();
        std::memcpy(out_, character.bytes, kSlack ? sizeof character.bytes : character.size);
        out_ += character.size;
        in_ += reference.length;
        return (reference.found() && !reference.isAmp()) || isInert(this->word());
    }

    /// Whether what follows cannot make a reference with an '&' before it, even without its tags. A reference
    /// goes on with '#' or a letter, and no name is longer than the word, so the word shows a tag in a name.
    static bool isInert(Word word) noexcept {
        const auto next = static_cast<char>(word & 0xFF);
        if (next == '#' || next == '<') return false;
        return !detail::isLetter(next) || (firstOf('<', word) == 0 && !referenceIn(word).found());
    }

    /// A numeric reference that has a short body without marks.
    bool decodeNumeric(Word word) noexcept {
        const Word semicolon = firstOf(';', word);
        if (semicolon == 0) return false;
        const std::size_t length = placeOf(semicolon);
        const Word mark = firstMark(word);
        if (mark != 0 && placeOf(mark) < length) return false;
        const char32_t unit = shortCodeUnit(word, length);
        if (unit == '&' || (unit >= 0xD800 && unit <= 0xDFFF)) return false;
        put(unit, length + 1);
        return true;
    }

    /// The code unit of a reference within a word. Most are a few decimal digits.
    char32_t shortCodeUnit(Word word, std::size_t length) const noexcept {
        char32_t unit = 0;
        for (std::size_t at = 1; at < length; ++at) {
            const auto digit = static_cast<char32_t>(word >> 8 * at & 0xFF) - U'0';
            if (digit > 9) return codeUnitOf({in_ + 1, length - 1});
            unit = unit * 10 + digit;
        }
        return unit & 0xFFFF;
    }

    void put(char32_t character, std::size_t length) noexcept {
        out_ += Text::encode(character, out_);
        in_ += length;
    }

    /// Copies up to the next mark. Answers whether the text ends without one. Whole blocks may be written,
    /// since no more was written than read.
    bool copyPlain() noexcept {
        constexpr std::size_t kAtOnce = 2 * ByteBlock::kSize;
        for (; left() > kAtOnce; pass(kAtOnce)) {
            const std::uint64_t marks = copyTwoBlocks();
            if (marks == 0) continue;
            pass(static_cast<std::size_t>(std::countr_zero(marks)));
            return false;
        }
        if constexpr (kSlack) {
            pass(static_cast<std::size_t>(std::countr_zero(copyTwoBlocks() | ~std::uint64_t{0} << left())));
            return in_ == end_;
        }
        while (in_ != end_ && *in_ != '<' && *in_ != '&')
            *out_++ = *in_++;
        return in_ == end_;
    }

    std::uint64_t copyTwoBlocks() noexcept {
        const ByteBlock first(in_);
        const ByteBlock second(in_ + ByteBlock::kSize);
        first.store(out_);
        second.store(out_ + ByteBlock::kSize);
        return marksIn(first).bits() | std::uint64_t{marksIn(second).bits()} << ByteBlock::kSize;
    }

    void pass(std::size_t bytes) noexcept {
        in_ += bytes;
        out_ += bytes;
    }

    const char* in_;
    const char* const end_;
    char* const to_;
    char* out_;
};

template <bool kSlack>
std::size_t clean(std::string_view text, char* to) noexcept {
    if (const char* const end = SinglePass<kSlack>(text, to).clean(); end != nullptr) {
        return static_cast<std::size_t>(end - to);
    }
    const char* const end = text.data() + text.size();
    const char* const tag = find(text.data(), end, '<');
    char* const stripped = removeTags(text.data(), tag, end, to);
    return static_cast<std::size_t>(decodeReferences(to, stripped) - to);
}

}  // namespace

std::size_t detail::withoutHTMLTagsOfBlock(std::string_view text, char* to) noexcept {
    return clean<true>(text, to);
}

namespace HTMLRemoval {

std::string stringByStrippingHTML(std::optional<std::string_view> text) {
    return text ? withoutHTMLTags(*text) : std::string();
}

std::size_t withoutHTMLTags(std::string_view text, char* to) noexcept {
    if (isPlainText(text)) {
        text.copy(to, text.size());
        return text.size();
    }
    return clean<false>(text, to);
}

std::string withoutHTMLTags(std::string_view text) {
    if (isPlainText(text)) return std::string(text);
    std::string result(text.size(), '\0');
    result.resize(withoutHTMLTags(text, result.data()));
    return result;
}

bool isPlainText(std::string_view text) noexcept {
    if (text.size() < ByteBlock::kSize) {
        if (text.size() >= sizeof(Word)) {
            if (firstMark(wordAt(text.data())) != 0) return false;
            text.remove_prefix(sizeof(Word));
        }
        return std::none_of(text.begin(), text.end(), [](char byte) { return byte == '<' || byte == '&'; });
    }
    const char* const last = text.data() + text.size() - ByteBlock::kSize;
    for (const char* at = text.data(); at < last; at += ByteBlock::kSize)
        if (marksIn(ByteBlock(at)).bits() != 0) return false;
    // The last block overlaps the one before it.
    return marksIn(ByteBlock(last)).bits() == 0;
}

std::string qel_decodeHTMLCharacterEntities(std::string_view text) {
    return qel_decodeHTMLCharacterEntities(std::string(text));
}

std::string qel_decodeHTMLCharacterEntities(std::string&& text) {
    char* const begin = text.data();
    text.resize(static_cast<std::size_t>(decodeReferences(begin, begin + text.size()) - begin));
    return std::move(text);
}

std::string mz_encodeHTMLCharacterEntities(std::string_view text) {
    constexpr std::string_view kSpecial = "&<>";
    std::string encoded;
    encoded.reserve(text.size());
    while (true) {
        const std::size_t plain = std::min(text.find_first_of(kSpecial), text.size());
        encoded.append(text.substr(0, plain));
        if (plain == text.size()) return encoded;
        encoded.append(text[plain] == '&' ? "&amp;" : text[plain] == '<' ? "&lt;" : "&gt;");
        text.remove_prefix(plain + 1);
    }
}

}  // namespace HTMLRemoval

}  // namespace QELMODELS_ABI
}  // namespace QELModels
