#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "QELModels/Memory/Zone.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Representation/Representation.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// Why a document is not JSON, and where: of several mistakes the first.
///
/// The place is that of the cause: the opening quote of a text that never ends, the backslash of a bad
/// escape, the first byte of a bad number or of a sequence that is not UTF-8, the bracket that nests too
/// deep, the first byte that does not belong there, and the document's end when it is cut short or empty.
struct JSONError {
    std::size_t line = 1;    ///< from 1; lines end with a line feed
    std::size_t column = 1;  ///< in bytes, from 1; a byte-order mark takes three columns
    std::size_t offset = 0;  ///< in bytes from the document's first, 0
    std::string reason;      ///< an English phrase, without a full stop
};

/// Is told of the elements of a list while its document is read.
class QELMODELS_EXPORT JSONElementHandler {
public:
    /// The next element, lent for this call: who needs it longer makes a `Representation` of it. What this
    /// throws ends the reading and reaches whoever asked for it.
    virtual void element(RepresentationView element) = 0;
    /// A key on the way to the list was met. Elements that came before do not count any more: of a repeated
    /// key the last value does.
    virtual void startOver() = 0;

    virtual ~JSONElementHandler() = default;
};

/// Reads JSON (RFC 8259) into representations. It keeps its working memory from one document to the next, so
/// a reader that is used again allocates only what the documents themselves need. One thread at a time. The
/// destructors of static objects may read, too (where the system runs initialisers by priority, as ELF does;
/// elsewhere, those of objects that were constructed after something was read first).
///
/// Beyond the letter of the standard: a byte-order mark at the start is passed over; a lone surrogate escape
/// is kept as that code unit; an integer beyond 64 bits is read as a double. A number that no double can hold
/// is an error. Of a repeated key the first place and the last value count.
class QELMODELS_EXPORT JSONReader {
public:
    /// How deep containers may nest unless asked otherwise: far more than any document of the content API,
    /// and little enough for programs that read its output and handle nesting by recursion.
    static constexpr std::size_t kDefaultMaxDepth = 1024;

    /// How many bytes of a document are looked at together when its elements are lent one at a time, unless
    /// one of them needs more: all that is done with them finds it in a near cache.
    static constexpr std::size_t kUsualWindow = std::size_t{64} << 10;

    /// A reader that accepts `maxDepth` containers around a value. Reading takes no stack, so any limit is
    /// safe. The representations are allocated in `zone`; null is the usual one.
    explicit JSONReader(std::size_t maxDepth = kDefaultMaxDepth, Zone* zone = nullptr) noexcept;
    ~JSONReader();
    /// What a reader has lent moves with it. One that was moved from is as it was made, and may be used.
    JSONReader(JSONReader&&) noexcept;
    JSONReader& operator=(JSONReader&&) noexcept;

    /// The document's value, which does not need `bytes` any more. Nothing when it is not JSON, or 4 GB or
    /// more: then `error`, unless null, says why. It is written in no other case. Throws nothing but
    /// `std::bad_alloc`.
    std::optional<Representation> read(std::string_view bytes, JSONError* error = nullptr);

    /// The same value, lent until the reader is used again or destroyed, and in memory that is used again as
    /// well. A `Representation` that is made of the value keeps it for longer, and all of that memory with it
    /// (`kUsualWindow` or more).
    std::optional<RepresentationView> lend(std::string_view bytes, JSONError* error = nullptr) QELMODELS_LENT;

    /// Lends the elements of one array, one after the other, and holds no more of the document than a few of
    /// them at a time. `keyPath` leads there as in `RepresentationView::valueForKeyPath`; without an array at
    /// its end there are no elements. False when the document is not JSON: elements before the mistake were
    /// lent all the same. The handler leaves this reader alone. Throws `std::bad_alloc`, and what the
    /// handler throws.
    bool readElements(std::string_view bytes, std::string_view keyPath, JSONElementHandler& handler,
                      JSONError* error = nullptr);

private:
    struct Memory;

    template <class Read>
    bool attempt(std::string_view bytes, JSONError* error, const Read& read);

    std::size_t maxDepth_;
    Zone* zone_;
    std::unique_ptr<Memory> memory_;  // null before anything is read, and once it is moved away
};

/// Reads one document as a new `JSONReader` does.
QELMODELS_EXPORT std::optional<Representation> representationFromJSON(std::string_view bytes,
                                                                      JSONError* error = nullptr);

}  // namespace QELMODELS_ABI
}  // namespace QELModels
