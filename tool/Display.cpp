#include "tool/Display.h"

#include <algorithm>
#include <array>
#include <deque>
#include <utility>

#include "QELModels/Values/Text.h"

namespace QELModels::tool {

namespace {

constexpr std::string_view kCut = "...";
constexpr std::string_view kSoftHyphen = "\xC2\xAD";  // visible only where a line breaks
// An excerpt fits an 80-column terminal, and shows more of what follows the place than of what precedes it.
constexpr std::size_t kColumnsBefore = 32;
constexpr std::size_t kColumnsFrom = 40;

constexpr char32_t kReplacement = 0xFFFD;
constexpr char32_t kControlPictures = 0x2400;
constexpr char32_t kDeletePicture = 0x2421;
constexpr char32_t kDelete = 0x7F;

struct Range {
    char32_t first, last;
};
template <std::size_t N>
bool isIn(const std::array<Range, N>& ranges, char32_t character) {
    return std::any_of(ranges.begin(), ranges.end(), [character](const Range& range) {
        return range.first <= character && character <= range.last;
    });
}

// Marks that combine with the character before them, and marks that show nothing.
constexpr std::array<Range, 6> kNoWidth{{{0x300, 0x36F},
                                         {0x200B, 0x200F},
                                         {0x202A, 0x202E},
                                         {0x20D0, 0x20FF},
                                         {0xFE00, 0xFE0F},
                                         {0xFEFF, 0xFEFF}}};
// Scripts and pictures that terminals show two columns wide.
constexpr std::array<Range, 8> kDoubleWidth{{{0x1100, 0x115F},
                                             {0x2E80, 0xA4CF},
                                             {0xAC00, 0xD7A3},
                                             {0xF900, 0xFAFF},
                                             {0xFE30, 0xFE6F},
                                             {0xFF00, 0xFF60},
                                             {0x1F300, 0x1FAFF},
                                             {0x20000, 0x3FFFD}}};

// Marks that make a terminal show the text around them in another order.
bool isDirection(char32_t character) {
    return (character >= 0x202A && character <= 0x202E) || (character >= 0x2066 && character <= 0x2069);
}

char32_t visible(char32_t character) {
    if (character < ' ') return kControlPictures + character;
    if (character == kDelete) return kDeletePicture;
    const bool isControl = character >= 0x80 && character < 0xA0;
    const bool isHalf = character >= 0xD800 && character < 0xE000;
    return isControl || isHalf || isDirection(character) ? kReplacement : character;
}

std::size_t widthOf(char32_t character) {
    if (character < kNoWidth.front().first) return 1;
    if (isIn(kNoWidth, character)) return 0;
    return isIn(kDoubleWidth, character) ? 2 : 1;
}

// The length in bytes of the well-formed character that a text begins with; 0 when there is none.
std::size_t lengthOf(std::string_view text) {
    for (std::size_t length = 1; length <= std::min(text.size(), Text::kMaxCharacterBytes); ++length)
        if (Text::isWellFormed(text.substr(0, length))) return length;
    return 0;
}

// A part of a line that fits a terminal, and whether more of the line was left out.
struct CutLine {
    std::string text;
    std::size_t width = 0;
    bool isCut = false;
};

// As much of the end of a text as is shown before the place. Lines may be as long as the document: what
// cannot be shown is not looked at.
CutLine endOfLine(std::string_view text) {
    constexpr std::size_t kMostBytes = kColumnsBefore * Text::kMaxCharacterBytes;
    CutLine line;
    if (text.size() > kMostBytes) {
        line.isCut = true;
        text.remove_prefix(text.size() - kMostBytes);
        while (!text.empty() && Text::isContinuation(text.front()))
            text.remove_prefix(1);
    }
    std::deque<Character> characters;
    for (; !text.empty(); text.remove_prefix(characters.back().bytes)) {
        characters.push_back(firstCharacter(text));
        line.width += characters.back().width;
    }
    for (; line.width > kColumnsBefore; characters.pop_front()) {
        line.isCut = true;
        line.width -= characters.front().width;
    }
    for (const Character& character : characters)
        line.text += character.text;
    return line;
}

// As much of the start of a text as is shown from the place on.
CutLine startOfLine(std::string_view text) {
    constexpr std::size_t kMostBytes = kColumnsFrom * Text::kMaxCharacterBytes;
    CutLine line;
    std::size_t size = 0;
    while (size < std::min(text.size(), kMostBytes)) {
        const Character character = firstCharacter(text.substr(size));
        if (line.width + character.width > kColumnsFrom) break;
        line.text += character.text;
        line.width += character.width;
        size += character.bytes;
    }
    line.isCut = size < text.size();
    return line;
}

// The line around a byte of a text: what comes before that byte, and the rest.
std::pair<std::string_view, std::string_view> lineAround(std::string_view text, std::size_t offset) {
    const std::size_t begin = text.substr(0, offset).rfind('\n') + 1;  // npos + 1 is 0
    std::size_t end = std::min(text.find('\n', offset), text.size());
    if (end > offset && text[end - 1] == '\r') --end;
    return {text.substr(begin, offset - begin), text.substr(offset, end - offset)};
}

char32_t decoded(std::string_view character) {
    const std::u16string units = Text::toUTF16(character);
    return units.size() == 1 ? char32_t{units[0]} : Text::joined(char32_t{units[0]}, char32_t{units[1]});
}

}  // namespace

Character firstCharacter(std::string_view text) {
    const std::size_t length = lengthOf(text);
    const char32_t character = visible(length == 0 ? kReplacement : decoded(text.substr(0, length)));
    std::array<char, Text::kMaxCharacterBytes> bytes{};
    const std::size_t size = Text::encode(character, bytes.data());
    return {std::string(bytes.data(), size), widthOf(character), std::max<std::size_t>(length, 1)};
}

Shown shown(std::string_view text, std::size_t columns) {
    Shown result;
    std::size_t cutSize = 0, cutWidth = 0;  // of the part that leaves columns for kCut
    while (!text.empty()) {
        Character character = firstCharacter(text);
        const char byte = text.front();
        if (character.text == kSoftHyphen) character = {"", 0, character.bytes};
        if (byte == '\n' || byte == '\r' || byte == '\t') character.text = " ";
        text.remove_prefix(character.bytes);
        if (result.width + character.width > columns) {
            result.text.resize(cutSize);
            result.text += kCut;
            return {result.text, cutWidth + kCut.size()};
        }
        result.text += character.text;
        result.width += character.width;
        if (result.width + kCut.size() <= columns) {
            cutSize = result.text.size();
            cutWidth = result.width;
        }
    }
    return result;
}

std::string styled(std::string_view text, Style style, bool isColored) {
    // In the order of the styles.
    constexpr std::array<std::string_view, 7> kCodes{
        "", "\x1b[1m", "\x1b[2m", "\x1b[36m", "\x1b[33m", "\x1b[1;31m", "\x1b[1;37;41m"};
    constexpr std::string_view kReset = "\x1b[0m";
    std::string result(text);
    if (!isColored || text.empty()) return result;
    result.insert(0, kCodes[static_cast<std::size_t>(style)]);
    return result.append(kReset);
}

std::string excerpt(std::string_view text, std::size_t offset) {
    offset = std::min(offset, text.size());
    const auto [before, after] = lineAround(text, offset);
    const CutLine left = endOfLine(before);
    const CutLine right = startOfLine(after);
    const std::string start = (left.isCut ? std::string(kCut) : std::string()) + left.text;
    const std::string end = right.text + (right.isCut ? std::string(kCut) : std::string());
    const std::size_t column = left.width + (left.isCut ? kCut.size() : 0);
    return start + end + '\n' + std::string(column, ' ') + '^';
}

}  // namespace QELModels::tool
