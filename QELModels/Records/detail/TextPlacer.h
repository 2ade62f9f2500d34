#pragma once

#include <cstddef>
#include <string_view>

#include "QELModels/Memory/detail/BlockWriter.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Records/PropertyWriter.h"
#include "QELModels/Values/URL.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

/// How the library's own transformers put texts of a document where they stay, with one copy at the most.
/// Texts of a document have readable bytes after them (`kSlack`).
class TextPlacer {
public:
    explicit TextPlacer(PropertyWriter& to) noexcept : to_(to) {}

    /// Whether the record keeps what the text lies in, so that it may stay there.
    bool mayStay(std::string_view text) const noexcept { return to_.writer_.isBorrowed(text); }
    /// A URL of a document.
    void putURL(URLView url) {
        if (to_.accepts(PropertyKind::url)) to_.setText(to_.writer_.keepTextOfBlock(url.text()));
    }
    /// Room for a text of at most `bytes` bytes; `putReserved` says how many it has become.
    char* reserve(std::size_t bytes) { return to_.writer_.reserve(bytes); }
    void putReserved(std::size_t bytes) {
        const std::string_view text(to_.writer_.reserved(), bytes);
        if (!to_.accepts(PropertyKind::text)) return;
        to_.writer_.commit(bytes);
        to_.setText(text);
    }

private:
    PropertyWriter& to_;
};

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
