#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// Titles and descriptions as plain text: tags removed, then character references decoded.
///
/// Any text is accepted and every function takes time in proportion to the text, whatever it holds. Texts are
/// WTF-8 as `Text` describes it, and stay so: where two surrogate halves come together, they become one
/// character.
namespace HTMLRemoval {

/// `withoutHTMLTags(*text)`, and the empty text for null.
QELMODELS_EXPORT std::string stringByStrippingHTML(std::optional<std::string_view> text);
inline std::string stringByStrippingHTML(std::nullptr_t) {
    return {};
}

/// The text without its tags, and with its references decoded afterwards: "&lt;b&gt;" comes out as "<b>" and
/// stays. A tag is a '<', at least one character other than '>', and the next '>', so the text between a
/// stray '<' and a later '>' goes too.
QELMODELS_EXPORT std::string withoutHTMLTags(std::string_view text);

/// The same without an allocation: writes at most `text.size()` bytes to `to`, which must not overlap the
/// text, and returns how many of them are the result. The result is never longer than the text.
QELMODELS_EXPORT std::size_t withoutHTMLTags(std::string_view text, char* to) noexcept;

/// For the engine: the same of a text that lies in a `Block`, to room in another one, both with their slack.
QELMODELS_EXPORT std::size_t withoutHTMLTagsOfBlock(std::string_view text, char* to) noexcept;

/// Whether the text holds neither '<' nor '&', so that cleaning returns it unchanged. True of most texts, and
/// cheap to ask.
QELMODELS_EXPORT bool isPlainText(std::string_view text) noexcept;

/// The text with its character references decoded: the names of the Latin-1 characters from "&nbsp;" to
/// "&yuml;", "&amp;", "&lt;", "&gt;", "&apos;" and "&quot;", and then numeric ones. Any other name stays.
///
/// Numeric references are decoded until none is left where one was decoded: "&amp;#65;" and "&#38;#65;" are
/// both "A". A name that arises from "&amp;" is decoded only if the same name also stands in the text as
/// such. A number is cut to 16 bits and makes one code unit; without digits it is U+0000.
QELMODELS_EXPORT std::string qel_decodeHTMLCharacterEntities(std::string_view text);
/// Works in place, and hands a text without '&' back as it is.
QELMODELS_EXPORT std::string qel_decodeHTMLCharacterEntities(std::string&& text);
inline std::string qel_decodeHTMLCharacterEntities(const char* text) {
    return qel_decodeHTMLCharacterEntities(std::string_view(text));
}

/// The text with '&', '<' and '>' as "&amp;", "&lt;" and "&gt;", and nothing else. Not the inverse of
/// decoding.
QELMODELS_EXPORT std::string mz_encodeHTMLCharacterEntities(std::string_view text);

}  // namespace HTMLRemoval

}  // namespace QELMODELS_ABI
}  // namespace QELModels
