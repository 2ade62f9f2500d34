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
/// Every text is accepted, and every function takes time linear in its size. Texts are WTF-8 as `Text`
/// describes it, and remain so: where two surrogate halves meet, they become one character.
namespace HTMLRemoval {

/// `withoutHTMLTags(*text)`, and the empty text for null.
QELMODELS_EXPORT std::string stringByStrippingHTML(std::optional<std::string_view> text);
inline std::string stringByStrippingHTML(std::nullptr_t) {
    return {};
}

/// The text without its tags, and after that with its references decoded: "&lt;b&gt;" becomes "<b>" and
/// remains. A tag is a '<', at least one character other than '>', and the next '>', so the text between a
/// stray '<' and a later '>' is removed, too.
QELMODELS_EXPORT std::string withoutHTMLTags(std::string_view text);

/// The same without an allocation: writes the result to `to` and answers its size, which is not above that of
/// the text. Bytes after the result, up to that size, may be overwritten. Requires: `to` has room for
/// `text.size()` bytes and does not overlap the text.
QELMODELS_EXPORT std::size_t withoutHTMLTags(std::string_view text, char* to) noexcept;

/// Whether the text has neither '<' nor '&', so that cleaning does not change it. True for most texts, and
/// quick.
QELMODELS_EXPORT bool isPlainText(std::string_view text) noexcept;

/// The text with its character references decoded: the names of the Latin-1 characters from "&nbsp;" to
/// "&yuml;", "&amp;", "&lt;", "&gt;", "&apos;" and "&quot;", and then numeric ones. Other names remain.
///
/// A numeric reference that results from decoding is decoded again: "&amp;#65;" and "&#38;#65;" are both "A".
/// A name that results from "&amp;" is decoded only if the text also has the same name as it was. A number is
/// cut to 16 bits and makes one code unit; without digits it is U+0000.
QELMODELS_EXPORT std::string qel_decodeHTMLCharacterEntities(std::string_view text);
/// The same in place.
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
