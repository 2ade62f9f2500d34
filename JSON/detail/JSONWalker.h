#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cfloat>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <optional>
#include <string_view>
#include <vector>

#include "JSON/detail/JSONNumber.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Platform/detail/ASCII.h"
#include "QELModels/Platform/detail/KeyHash.h"
#include "QELModels/Representation/detail/RepresentationNodes.h"
#include "QELModels/Values/Text.h"

// The reader's own, and part of its source alone: nothing of it has a name outside, so that the compiler
// knows every call and what it changes (which is worth 2 % of all instructions).
namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {
namespace {

// What may follow a number or a literal. A quote may not: directly after a word it is not a structural
// character, and the text that it begins would go unseen.
inline constexpr auto kEndsWord = [] {
    std::array<bool, 256> table{};
    for (const char byte : {' ', '\t', '\n', '\r', ',', ':', '[', ']', '{', '}'})
        table[static_cast<unsigned char>(byte)] = true;
    return table;
}();

// The values of hexadecimal digits, as a table: escapes come in rows.
inline constexpr auto kHexValues = [] {
    std::array<std::uint8_t, 256> table{};
    for (std::size_t byte = 0; byte < table.size(); ++byte)
        table[byte] = static_cast<std::uint8_t>(hexDigitValue(static_cast<char>(byte)));
    return table;
}();

// What the letter of an escape of two bytes stands for; 0 for no such escape.
inline constexpr auto kEscapes = [] {
    std::array<char, 256> table{};
    constexpr std::string_view letters = "\"\\/bfnrt";
    constexpr std::string_view meanings = "\"\\/\b\f\n\r\t";
    for (std::size_t i = 0; i < letters.size(); ++i)
        table[static_cast<unsigned char>(letters[i])] = meanings[i];
    return table;
}();

inline bool endsWord(char byte) noexcept {
    return kEndsWord[static_cast<unsigned char>(byte)];
}

// Digits as a number, and where they end.
struct Digits {
    std::uint64_t value;
    const char* end;
};

// The digits at `at`, but no more than eight of them; eight bytes may be read there, whatever they are.
inline Digits eightDigits(const char* at) noexcept {
    constexpr std::size_t kAtOnce = 8;
    std::uint64_t digits = 0;
    std::memcpy(&digits, at, kAtOnce);
    digits ^= 0x3030303030303030;  // makes digits 0 to 9, and everything else something larger
    const std::uint64_t others = ((digits + 0x7676767676767676) | digits) & 0x8080808080808080;
    const auto count = static_cast<std::size_t>(std::countr_zero(others)) / 8;
    if (count == 0) return {0, at};
    // Zeros go before them, then neighbours are added up: two, four, eight at once.
    digits <<= 8 * (kAtOnce - count);
    digits = digits * 10 + (digits >> 8);
    digits = (((digits & 0x000000FF000000FF) * 0x000F424000000064) +
              ((digits >> 16 & 0x000000FF000000FF) * 0x0000271000000001)) >>
             32;
    return {digits, at + count};
}

// Powers of ten, as far as `eightDigits` reads.
inline constexpr std::uint64_t kPowersOfTen[] = {
    1, 10, 100, 1'000, 10'000, 100'000, 1'000'000, 10'000'000, 100'000'000};

// The digits at `at`, but no more than 18 of them, which fit into 64 bits.
inline Digits wholeDigits(const char* at) noexcept {
    constexpr std::ptrdiff_t kMostDigits = 18;
    Digits digits = eightDigits(at);
    if (digits.end - at != 8) return digits;
    for (; isDigit(*digits.end) && digits.end - at < kMostDigits; ++digits.end)
        digits.value = digits.value * 10 + static_cast<std::uint64_t>(*digits.end - '0');
    return digits;
}

// The magnitude of the number that begins with `whole` and goes on with a point, if it has so few digits that
// one division of exact doubles rounds correctly (`readNumber` says when) and then ends.
inline std::optional<double> shortReal(const char* first, Digits whole) noexcept {
    const Digits fraction = eightDigits(whole.end + 1);
    const std::ptrdiff_t places = fraction.end - whole.end - 1;
    const bool isExact = FLT_EVAL_METHOD == 0 && whole.end - first + places <= DBL_DIG;
    if (!isExact || places == 0 || !endsWord(*fraction.end)) return std::nullopt;
    const std::uint64_t power = kPowersOfTen[places];
    // Signed: the machine converts these at once.
    return static_cast<double>(static_cast<std::int64_t>(whole.value * power + fraction.value)) /
           static_cast<double>(static_cast<std::int64_t>(power));
}

// Reads the number at `at`, if it is written as nearly all are: an integer of at most 18 digits, or a few
// digits on both sides of a point.
inline bool readShortNumber(const char* at, RepresentationNode::Tag& tag, std::uint64_t& bits) noexcept {
    if constexpr (std::endian::native != std::endian::little) return false;
    const bool isNegative = *at == '-';
    const char* const first = at + isNegative;
    const Digits whole = wholeDigits(first);
    if (whole.end == first || (*first == '0' && whole.end - first != 1)) return false;
    if (endsWord(*whole.end)) {
        tag = RepresentationNode::Tag::int64;
        bits = isNegative ? 0 - whole.value : whole.value;
        return true;
    }
    if (*whole.end != '.') return false;
    const std::optional<double> magnitude = shortReal(first, whole);
    if (!magnitude) return false;
    tag = RepresentationNode::Tag::real;
    bits = std::bit_cast<std::uint64_t>(isNegative ? -*magnitude : *magnitude);
    return true;
}

constexpr bool isHighHalf(std::uint32_t unit) noexcept {
    return unit >> 10 == 0xD800 >> 10;
}
constexpr bool isLowHalf(std::uint32_t unit) noexcept {
    return unit >> 10 == 0xDC00 >> 10;
}

// Whether one of eight bytes is a backslash.
inline bool holdsBackslash(std::uint64_t bytes) noexcept {
    constexpr std::uint64_t kOnes = 0x0101010101010101;
    const std::uint64_t zeros = bytes ^ (kOnes * '\\');
    return ((zeros - kOnes) & ~zeros & (kOnes << 7)) != 0;
}

// The code unit that four hexadecimal digits stand for; nothing when they are not that.
inline std::optional<std::uint32_t> codeUnit(const char* digits) noexcept {
    std::uint32_t unit = 0;
    for (int i = 0; i < 4; ++i) {
        const std::uint8_t value = kHexValues[static_cast<unsigned char>(digits[i])];
        if (value == kNoHexDigit) return std::nullopt;
        unit = unit << 4 | value;
    }
    return unit;
}

// Replaces the escape at `from` by what it stands for, at `to`, and moves both past it. Requires: a quote
// comes after the text, so that an escape that is cut short is a bad one.
inline bool unescapeOne(const char*& from, char*& to) noexcept {
    const char letter = from[1];
    if (letter != 'u') {
        const char meaning = kEscapes[static_cast<unsigned char>(letter)];
        if (meaning == 0) return false;
        *to++ = meaning;
        from += 2;
        return true;
    }
    const std::optional<std::uint32_t> unit = codeUnit(from + 2);
    if (!unit) return false;
    from += 6;
    char32_t character = *unit;
    // Halves are kept as they are unless both are written, and written side by side.
    if (isHighHalf(*unit) && from[0] == '\\' && from[1] == 'u') {
        const std::optional<std::uint32_t> next = codeUnit(from + 2);
        if (!next) return false;
        if (isLowHalf(*next)) {
            character = Text::joined(character, static_cast<char32_t>(*next));
            from += 6;
        }
    }
    to += Text::encode(character, to);
    return true;
}

inline char* nextBackslash(char* from, char* end) noexcept {
    void* found = std::memchr(from, '\\', static_cast<std::size_t>(end - from));
    return found == nullptr ? end : static_cast<char*>(found);
}

// Unescapes a text in place, which never makes it longer; `first` is its first backslash or its end. Returns
// its new end, null when there is a bad escape.
inline char* unescape(char* first, const char* end) noexcept {
    const char* from = first;
    char* to = first;
    while (from < end) {
        if (*from == '\\') {
            if (!unescapeOne(from, to)) return nullptr;
            continue;
        }
        std::uint64_t bytes = 0;
        if (static_cast<std::size_t>(end - from) >= sizeof bytes) {
            std::memcpy(&bytes, from, sizeof bytes);
            if (!holdsBackslash(bytes)) {
                std::memcpy(to, &bytes, sizeof bytes);
                from += sizeof bytes;
                to += sizeof bytes;
                continue;
            }
        }
        while (from < end && *from != '\\')
            *to++ = *from++;
    }
    return to;
}

// A word that is a value: its last four bytes, how many it has, and what its node holds.
struct Literal {
    char tail[4];
    std::uint32_t size;
    RepresentationNode::Tag tag;
    std::uint64_t bits;
};

// The word that begins with that letter, which is one of three, by the bits in which these differ. No
// processor can predict which of them it is, so no branch depends on it.
inline const Literal& literalFor(char first) noexcept {
    using Tag = RepresentationNode::Tag;
    static constexpr Literal kLiterals[] = {
        {{'a', 'l', 's', 'e'}, 5, Tag::boolean, 0},
        {{'n', 'u', 'l', 'l'}, 4, Tag::null, 0},
        {{'t', 'r', 'u', 'e'}, 4, Tag::boolean, 1},
    };
    static_assert(('f' >> 3 & 3) == 0 && ('n' >> 3 & 3) == 1 && ('t' >> 3 & 3) == 2);
    return kLiterals[first >> 3 & 3];
}

// A container that is being read.
struct Container {
    // A bit for every key's hash: whether a key may have been there before.
    std::array<std::uint64_t, 4> keysSeen;
    bool isDictionary;
    bool mayRepeatKeys;
    std::uint32_t size;  // so far, while a container within it is read
    std::uint32_t node;
    std::uint32_t textBefore;  // bytes of text in the document before it
};

// Containers that are being read, the document itself before them. They are kept from document to
// document.
using Containers = std::vector<Container>;

// How many of them there is room for before more is made. Few documents nest deeper.
inline constexpr std::size_t kUsualDepth = 32;

// How many nodes a document needs, index nodes left aside, while up to `depth` containers are open. Most
// nodes have two structural characters: a value and the comma after it, a key and its colon, the brackets of
// a container. Only a container that is not closed yet has but one.
inline std::size_t nodesNeeded(std::size_t structurals, std::size_t depth) noexcept {
    return (structurals + depth) / 2 + 1;
}

// Where in a text a walker is.
struct WalkerPlace {
    const std::uint32_t* structural;  // the next structural character
    char* plainUntil;                 // no text before it, of those not read yet, holds a backslash
};

// Goes through one value of a text along its structural characters: brackets, colons, commas, and the first
// byte of every text and word. Whoever asks for more of them than there are is given the blank after the
// text, which fits nowhere. What reads a part of the value answers whether it is well formed.
//
// All of it is inlined and no address of a walker is handed out, so that its members live in registers. For
// that, no more of them than those in the first group may be needed by every value.
class Walker {
public:
    // Requires: a blank is at `end`, where the text ends; `nodes` has room for what `containers` allows.
    Walker(char* text, char* end, WalkerPlace place, Containers& containers, std::size_t maxDepth,
           RepresentationNodes& nodes) noexcept
        : text_(text),
          structural_(place.structural),
          plainUntil_(place.plainUntil),
          next_(nodes.first()),
          container_(containers.data()),
          end_(end),
          depthLeft_(maxDepth),
          containers_(containers),
          nodes_(nodes) {}

    // After what was read.
    WalkerPlace place() const noexcept { return {structural_, plainUntil_}; }

    // How many nodes the value takes; 0 when it is not JSON. Jumps, since what comes next depends on the
    // place in the grammar alone, and each place's jump is predicted by itself:
    //
    //     container --> member ---> memberEnd --+--> member
    //         ^   '---> element --> elementEnd -+--> element
    //         |                                 '--> containerEnd --> memberEnd, elementEnd or the end
    //         '-------- (a value that is a container)
    [[gnu::always_inline]] std::size_t walk() {
        char token = 0;
        char* at = take();
        if (!isBracket(*at)) return scalar(at) ? 1 : 0;

    container:
        if (!open(*at == '{')) return 0;
        if (*at == '{') {
            if (peek() != '}') goto member;
        } else {
            if (peek() != ']') goto element;
        }
        take();

    containerEnd:
        if (close()) return count();
        if (container_->isDictionary) goto memberEnd;

    elementEnd:
        token = *take();
        if (token == ']') goto containerEnd;
        if (token != ',') return 0;

    element:
        ++size_;
        at = take();
        if (scalar(at)) goto elementEnd;
        if (isBracket(*at)) goto container;
        return 0;

    memberEnd:
        token = *take();
        if (token == '}') goto containerEnd;
        if (token != ',') return 0;

    member:
        if (!key()) return 0;
        ++size_;
        at = take();
        if (scalar(at)) goto memberEnd;
        if (isBracket(*at)) goto container;
        return 0;
    }

    // Reads a dictionary's key and the colon after it, without a node.
    [[gnu::always_inline]] bool keyText(std::string_view& key) noexcept {
        char* const at = take();
        return *at == '"' && text(at, key) && *take() == ':';
    }

private:
    using Node = RepresentationNode;
    using Tag = Node::Tag;

    // How far backslashes are looked for in advance: no further than what is looked at stays in the nearest
    // cache.
    static constexpr std::ptrdiff_t kBytesAhead = 4096;

    static bool isBracket(char byte) noexcept { return (byte | 0x20) == '{'; }

    char* take() noexcept { return text_ + *structural_++; }
    char peek() const noexcept { return text_[*structural_]; }
    std::size_t count() const noexcept { return static_cast<std::size_t>(next_ - nodes_.first()); }

    // Field by field, which makes for the fewest instructions.
    [[gnu::always_inline]] void append(Tag tag, std::uint64_t bits) noexcept {
        Node& node = *next_++;
        node.tag = tag;
        node.indexed = false;
        node.keyHash = 0;
        node.size = 0;
        node.bits = bits;
    }
    [[gnu::always_inline]] void append(std::string_view text, std::uint16_t hash) noexcept {
        Node& node = *next_++;
        node.tag = Tag::string;
        node.indexed = false;
        node.keyHash = hash;
        node.size = static_cast<std::uint32_t>(text.size());
        node.text = text.data();
    }

    [[gnu::always_inline]] bool open(bool isDictionary) {
        if (depthLeft_ == 0) return false;
        --depthLeft_;
        container_->size = size_;
        if (container_ == &containers_.back()) [[unlikely]]
            deepen();
        ++container_;
        container_->isDictionary = isDictionary;
        container_->mayRepeatKeys = false;
        container_->node = static_cast<std::uint32_t>(count());
        container_->textBefore = textBytes_;
        if (isDictionary) container_->keysSeen = {};
        size_ = 0;
        append(isDictionary ? Tag::dictionary : Tag::array, 0);
        return true;
    }

    // Makes room for as many containers more, and for the nodes of as many that are not closed.
    void deepen() {
        const std::size_t depth = containers_.size();
        containers_.resize(2 * depth);
        container_ = &containers_[depth - 1];
        const std::size_t used = count();
        nodes_.grow(used, nodes_.capacity() + depth / 2);
        next_ = nodes_.first() + used;
    }

    // Whether it was the outermost container.
    [[gnu::always_inline]] bool close() {
        Node* node = nodes_.first() + container_->node;
        node->size = size_;
        if (container_->mayRepeatKeys || size_ > RepresentationNodes::kMostMembersScanned) [[unlikely]] {
            if (container_->isDictionary) {
                const std::size_t closed = nodes_.closeDictionary(container_->node, count());
                next_ = nodes_.first() + closed;
                node = nodes_.first() + container_->node;
            }
        }
        node->bits = static_cast<std::uint64_t>(next_ - node) |
                     static_cast<std::uint64_t>(textBytes_ - container_->textBefore) << 32;
        --container_;
        ++depthLeft_;
        size_ = container_->size;
        return container_ == containers_.data();
    }

    [[gnu::always_inline]] bool key() {
        std::string_view key;
        if (!keyText(key)) return false;
        const std::uint16_t hash = quotedKeyHash(key.data(), key.size());
        append(key, hash);
        std::uint64_t& word = container_->keysSeen[hash >> 14];
        const std::uint64_t seen = word;
        const unsigned bit = hash >> 8 & 63;
        if ((seen >> bit & 1) != 0) [[unlikely]]
            container_->mayRepeatKeys |= isAmong(nodes_.first() + container_->node + 1, size_, hash);
        word = seen | std::uint64_t{1} << bit;
        return true;
    }

    // Whether one of the members has a key of that hash; true also when they are too many to look at them all
    // for every key.
    [[gnu::noinline]] static bool isAmong(const Node* member, std::uint32_t members,
                                          std::uint16_t hash) noexcept {
        if (members > RepresentationNodes::kMostMembersScanned) return true;
        for (std::uint32_t left = members; left != 0; --left) {
            if (member->keyHash == hash) return true;
            member = member->nextMember();
        }
        return false;
    }

    [[gnu::always_inline]] bool scalar(char* at) {
        switch (*at) {
            case '"': {
                std::string_view string;
                if (!text(at, string)) return false;
                append(string, 0);
                textBytes_ += static_cast<std::uint32_t>(string.size());
                return true;
            }
            case '{':
            case '[':
                return false;
            case 't':
            case 'f':
            case 'n':
                return literal(at);
            default:
                return number(at);
        }
    }

    [[gnu::always_inline]] bool literal(const char* at) noexcept {
        const Literal& expected = literalFor(*at);
        append(expected.tag, expected.bits);
        const char* const end = at + expected.size;
        return std::memcmp(end - sizeof expected.tail, expected.tail, sizeof expected.tail) == 0 &&
               endsWord(*end);
    }

    [[gnu::always_inline]] bool number(const char* at) {
        Tag tag{};
        std::uint64_t bits = 0;
        if (readShortNumber(at, tag, bits)) {
            append(tag, bits);
            return true;
        }
        const std::optional<Node> node = otherNumber(at);
        if (!node) return false;
        *next_++ = *node;
        return true;
    }

    static std::optional<Node> otherNumber(const char* at) {
        Number number;
        if (readNumber(at, number) != NumberOutcome::read || !endsWord(*at)) return std::nullopt;
        return RepresentationNodes::node(number);
    }

    // Reads the text whose opening quote is at `quote`, unless it holds a bad escape. Between the closing
    // quote and the next structural character is nothing but white space, so the text need not be read to
    // find its end.
    [[gnu::always_inline]] bool text(char* quote, std::string_view& text) noexcept {
        char* const begin = quote + 1;
        char* end = text_ + *structural_ - 1;
        while (*end != '"')
            --end;
        if (plainUntil_ < end) [[unlikely]] {
            char* const closingQuote = end;
            end = unescape(nextBackslash(std::max(begin, plainUntil_), end), end);
            plainUntil_ =
                nextBackslash(closingQuote, closingQuote + std::min(kBytesAhead, end_ - closingQuote));
            if (end == nullptr) return false;
        }
        text = {begin, static_cast<std::size_t>(end - begin)};
        return true;
    }

    char* const text_;
    const std::uint32_t* structural_;  // the next one
    char* plainUntil_;                 // no text before it, of those not read yet, holds a backslash
    Node* next_;
    Container* container_;    // the innermost one
    std::uint32_t size_ = 0;  // its size so far
    std::uint32_t textBytes_ = 0;

    char* const end_;
    std::size_t depthLeft_;
    Containers& containers_;
    RepresentationNodes& nodes_;
};

}  // namespace
}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
