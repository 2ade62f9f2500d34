#pragma once

#include <optional>
#include <string_view>

#include "QELModels/Mapping/FEMMapping.h"
#include "QELModels/Mapping/FEMObserver.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Platform/List.h"
#include "QELModels/Platform/Object.h"
#include "QELModels/Platform/Ref.h"
#include "QELModels/Platform/Representation.h"
#include "QELModels/Platform/Zone.h"

namespace QELModels::inline QELMODELS_ABI {

/// What may be asked of one deserialization besides its result.
struct FEMOptions {
    FEMObserver* observer = nullptr;  ///< is told the outcome of every rule; null costs nothing
    Zone* zone = nullptr;             ///< where the models' memory comes from; null: the usual place
    std::string_view keyPath = {};    ///< where in its document the representation stands; begins all paths
};

/// Applies mappings to representations. Data never throws, save for values that a map rule calls a fault:
/// `MappingFault`, with the JSON Pointer of the value; the whole result is lost then, and nothing is left
/// half made. What map rules of an application throw passes through unchanged.
class QELMODELS_EXPORT FEMDeserializer {
public:
    /// A new record, filled, in a block of its own. What is no dictionary (null, absent, a list) counts as an
    /// empty one. Never null.
    static Ref<Object> objectFromRepresentation(std::optional<RepresentationView> representation,
                                                const FEMMapping& mapping, const FEMOptions& options = {});

    /// A new record for each element of an array, in order, each in a block of its own. What is no array
    /// makes an empty list; an element that is no dictionary makes an empty record. Never null.
    static Ref<ListBase> collectionFromRepresentation(std::optional<RepresentationView> representation,
                                                      const FEMMapping& mapping,
                                                      const FEMOptions& options = {});
};

}  // namespace QELModels::inline QELMODELS_ABI
