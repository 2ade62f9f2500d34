#pragma once

#include <cstddef>
#include <string>

/// HTML cleaning done word for word: code units, one search and one replacement at a time, quadratic. The
/// library's version must give the same for every text.
namespace HTMLRemovalOracle {

std::u16string stringByStrippingHTML(std::u16string text);
std::u16string qel_decodeHTMLCharacterEntities(std::u16string text);
std::u16string mz_encodeHTMLCharacterEntities(std::u16string text);

/// The name and the code point of the reference at an index: 96 of Latin-1, then five of ASCII.
struct NamedReference {
    std::u16string reference;
    char16_t character;
};
constexpr std::size_t kNamedReferences = 101;
const NamedReference& namedReference(std::size_t index);

}  // namespace HTMLRemovalOracle
