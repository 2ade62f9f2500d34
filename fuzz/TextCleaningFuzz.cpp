// Any text: every form of cleaning, decoding and encoding gives what the word-for-word versions give, and
// what comes out is well formed. Any bytes at all: nothing outside the two buffers is touched.

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "QELModels/Categories/NSString+HTMLRemoval.h"
#include "QELModels/Values/Text.h"
#include "fuzz/Require.h"
#include "tests/HTMLRemovalOracle.h"

namespace {

using namespace QELModels;

// The word-for-word versions take quadratic time.
constexpr std::size_t kMaxBytes = 2048;

// Cleans into a heap block of exactly the room that is promised to suffice.
std::string cleanedInPlace(std::string_view text) {
    const auto room = std::make_unique<char[]>(text.size());
    const std::size_t size = HTMLRemoval::withoutHTMLTags(text, room.get());
    require(size <= text.size(), "the cleaned text is not longer");
    return {room.get(), size};
}

void check(const std::u16string& units) {
    const std::string text = Text::fromUTF16(units);
    require(Text::isWellFormed(text), "a text made of code units is well formed");
    require(Text::toUTF16(text) == units, "code units survive");
    require(Text::codeUnitCount(text) == units.size(), "code units are counted");

    const std::string cleaned = Text::fromUTF16(HTMLRemovalOracle::stringByStrippingHTML(units));
    require(HTMLRemoval::withoutHTMLTags(text) == cleaned, "cleaning as the literal version does");
    require(cleanedInPlace(text) == cleaned, "cleaning without an allocation");
    require(HTMLRemoval::stringByStrippingHTML(text) == cleaned, "cleaning a text that may be null");
    require(HTMLRemoval::isPlainText(text) == (text.find_first_of("<&") == text.npos), "a plain text");

    const std::string decoded = Text::fromUTF16(HTMLRemovalOracle::qel_decodeHTMLCharacterEntities(units));
    require(HTMLRemoval::qel_decodeHTMLCharacterEntities(std::string_view(text)) == decoded,
            "decoding as the literal version does");
    require(HTMLRemoval::qel_decodeHTMLCharacterEntities(std::string(text)) == decoded, "decoding in place");

    const std::string encoded = Text::fromUTF16(HTMLRemovalOracle::mz_encodeHTMLCharacterEntities(units));
    require(HTMLRemoval::mz_encodeHTMLCharacterEntities(text) == encoded,
            "encoding as the literal version does");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), std::min(size, kMaxBytes));
    cleanedInPlace(bytes);
    check(Text::toUTF16(bytes));
    return 0;
}
