#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>
#include <type_traits>

#include "QELModels/Platform/Export.h"
#include "QELModels/Records/PropertyKind.h"
#include "QELModels/Records/PropertyWriter.h"
#include "QELModels/Representation/Representation.h"
#include "QELModels/Values/Number.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

namespace detail {
class FEMCaptured;
}

/// The JSON values that a rule has a use for, besides null.
enum class FEMAccepts : std::uint8_t {
    anything,    ///< not known: a map rule of an application decides
    nothing,     ///< the property holds what no raw value is
    text,        ///< a string
    reference,   ///< a string that is a URL
    color,       ///< a string that is a colour; all else but null is a fault
    word,        ///< a string that is in a table
    number,      ///< a number or a boolean, which are one kind here
    array,       ///< an array
    dictionary,  ///< a dictionary
};

/// A map rule as constant data: what is called, and what it is called with. The value given to it is never
/// absent, possibly null. `captured` is what its mapping captured when it was built.
struct FEMMapRule {
    using Apply = void (*)(const FEMMapRule&, const detail::FEMCaptured* captured, RepresentationView,
                           PropertyWriter&);
    using Word = std::string_view (*)(const FEMMapRule&, std::size_t);

    bool isGiven = false;        ///< without one, a value is taken as it is
    Apply apply = nullptr;       ///< null where none is given
    const void* data = nullptr;  ///< what `apply` works on: a transformer, a name, or a table's entries
    std::size_t size = 0;        ///< the transformer's place, the name's length, or the number of entries
    Word word = nullptr;         ///< of a table: the word of an entry by its position
    FEMAccepts accepts = FEMAccepts::anything;
    std::optional<PropertyKind> makes = {};       ///< what its results are, where that is known
    std::optional<const void*> enumeration = {};  ///< of a table: identifies the type of its numbers
};

namespace detail {

/// Its address identifies a type.
template <class T>
inline constexpr char kTypeMark = 0;

}  // namespace detail

/// One entry of a lookup table from a document's word to a number.
template <class T>
concept FEMLookupEntry = requires(const T& entry) {
    std::string_view(entry.name);
    static_cast<std::int64_t>(entry.value);
};

/// The map rule that looks a word up in a table: an exact match of the whole string; anything else has no
/// entry.
template <FEMLookupEntry Entry, std::size_t N>
constexpr FEMMapRule lookedUpIn(const std::array<Entry, N>& table) {
    return {
        .isGiven = true,
        .apply =
            [](const FEMMapRule& rule,
               const detail::FEMCaptured*,
               RepresentationView value,
               PropertyWriter& to) {
                const auto word = value.text();
                if (!word) return;
                for (const Entry& entry : std::span(static_cast<const Entry*>(rule.data), rule.size))
                    if (entry.name == *word) return to.put(Number(static_cast<std::int64_t>(entry.value)));
            },
        .data = table.data(),
        .size = N,
        .word = [](const FEMMapRule& rule, std::size_t i) -> std::string_view {
            return static_cast<const Entry*>(rule.data)[i].name;
        },
        .accepts = FEMAccepts::word,
        .makes = PropertyKind::integer,
        .enumeration = &detail::kTypeMark<std::remove_cv_t<decltype(Entry::value)>>,
    };
}

}  // namespace QELMODELS_ABI
}  // namespace QELModels
