#pragma once

#include <cstdint>

#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// What a property holds. All but the last two are null when empty; those are false and 0.
enum class PropertyKind : std::uint8_t {
    number,
    text,
    url,
    date,
    color,
    array,       ///< a raw sub-tree of a document
    dictionary,  ///< a raw sub-tree of a document
    record,
    list,  ///< of records
    boolean,
    integer,  ///< an enumeration, or any 64-bit number
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
