#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "Members.h"

namespace QELModels::bench {

/// Every kind of document that the content API sends.
enum class DocumentKind : std::uint8_t {
    asset,
    assets,
    category,
    categories,
    editorial,
    editorials,
    season,
    seasons,
};

/// Makes documents of the content API as compact JSON text: fictional Norwegian programmes whose keys, kinds
/// and sizes are in the proportions of real ones. An asset has about 5.5 KB. A third of its titles and
/// descriptions holds markup or entities, a tenth of its bytes is under keys that no mapping reads, and some
/// values are null or missing.
///
/// The same seed and the same sequence of calls give the same bytes on every platform.
class DocumentGenerator {
public:
    explicit DocumentGenerator(std::uint64_t seed) noexcept : state_(seed) {}

    std::string asset();
    std::string category();

    /// Pages of `count` elements; an editorial or a season of `count` assets.
    std::string assetsPage(std::size_t count);
    std::string categoriesPage(std::size_t count);
    std::string editorial(std::size_t count);
    std::string editorialsPage(std::size_t count);
    std::string season(std::size_t count);
    std::string seasonsPage(std::size_t count);

    /// A document of any kind; `count` as above; it is ignored for one asset or category.
    std::string document(DocumentKind kind, std::size_t count);

private:
    class Writer;

    /// The place of an asset in its series, and which asset is the newest of its category.
    struct Place {
        std::int64_t identifier;
        std::int64_t season;
        std::int64_t episode;
        std::int64_t newestIdentifier;
    };

    // Chance. The standard's distributions differ from library to library, so none is used.
    std::uint64_t next() noexcept;
    std::int64_t between(std::int64_t first, std::int64_t last) noexcept;
    bool once(int in) noexcept { return between(1, in) == 1; }
    bool coin() noexcept { return once(2); }
    std::string_view oneOf(std::span<const std::string_view> choices) noexcept;

    // Words.
    std::string_view word() noexcept;
    std::string plainText(std::size_t bytes);
    std::string markedUp(std::string text);
    std::string richText(std::size_t bytes);
    std::string slug();
    std::string imageURL(std::string_view use);

    // Parts of documents.
    template <class T>
    void writeAny(Writer& out, Form form, std::string_view key);
    /// Ends a record's dictionary. Before that, it adds the keys of those members of `Record` that are
    /// neither written nor left out, with values of their kind: a new member needs no line of its own here.
    template <class Record>
    void closeRecord(Writer& out);
    Place anyPlace() noexcept;
    void writeAsset(Writer& out, const Place& place);
    void writeImages(Writer& out);
    void writeStreams(Writer& out, const Place& place);
    void writeCategory(Writer& out, std::int64_t newestIdentifier);
    void writeCategoryAdditional(Writer& out);
    void writeAdditional(Writer& out, const Place& place);
    void writeSettings(Writer& out);
    void writeChapters(Writer& out, std::int64_t count, bool featured);
    void writeRawTrees(Writer& out, const Place& place);
    void writeUnread(Writer& out, const Place& place);
    void writeEditorial(Writer& out, std::size_t count);
    void writeSeason(Writer& out, std::size_t count);
    template <class WriteElement>
    std::string page(std::string_view listKey, std::size_t count, WriteElement writeElement);

    std::uint64_t state_;
};

}  // namespace QELModels::bench
