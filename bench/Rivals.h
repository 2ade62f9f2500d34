#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "Measuring.h"

namespace QELModels::bench {

/// A document as the network layer delivers it.
struct Document {
    /// Readers that work in blocks may read this many bytes beyond the end.
    static constexpr std::size_t kPadding = 64;

    Document(std::string_view documentName, std::string documentText, std::size_t assetCount, bool page)
        : name(documentName), text(std::move(documentText)), assets(assetCount), isPage(page) {
        text.reserve(text.size() + kPadding);
    }

    std::string_view name;
    std::string text;
    std::size_t assets;  ///< how many are read from it
    bool isPage;         ///< a page of assets, or one asset's own document
};

/// One way from bytes to filled assets. Parsers and their buffers are reused from call to call, as a good
/// application would; results are not.
struct Rival {
    std::string_view name;
    /// Reads a document and frees the result.
    void (*read)(const Document&);
    /// Reads a document and returns an owner of the result.
    std::shared_ptr<const void> (*keep)(const Document&);
    /// The digest of all filled fields; null when no records are filled, which makes it a limit, not a rival.
    std::uint64_t (*digest)(const Document&);
    /// Frees what is reused from call to call, so that the memory of a first call can be measured.
    void (*forgetBuffers)();
};

extern const Rival kLibrary;
extern const Rival kLibraryByTheDocument;
extern const Rival kNlohmann;
extern const Rival kRapidJSON;
extern const Rival kOnDemand;
extern const Rival kDOMParse;
extern const Rival kStructuralIndex;

/// The functions of a rival whose `Way` has `static Result read(const Document&)`,
/// `static std::uint64_t digest(const Result&)` and `static void forgetBuffers()`.
template <class Way>
constexpr Rival rivalOf(std::string_view name) {
    return {name,
            [](const Document& document) { lookAt(Way::read(document)); },
            [](const Document& document) -> std::shared_ptr<const void> {
                using Result = decltype(Way::read(document));
                return std::make_shared<const Result>(Way::read(document));
            },
            [](const Document& document) { return Way::digest(Way::read(document)); },
            Way::forgetBuffers};
}

}  // namespace QELModels::bench
