#pragma once

#include <memory>
#include <optional>
#include <string_view>

#include "QELModels/Mapping/FEMMapping.h"
#include "QELModels/Mapping/FEMObserver.h"
#include "QELModels/Memory/Zone.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Records/List.h"
#include "QELModels/Records/Object.h"
#include "QELModels/Records/Ref.h"
#include "QELModels/Representation/Representation.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

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

/// Makes the list that `FEMDeserializer::collectionFromRepresentation` makes of an array, from one element
/// after the other: for documents that are not held as a whole. After an exception it goes on as if that
/// element had not been given. The mapping and what the options refer to outlive it.
class QELMODELS_EXPORT FEMCollection {
public:
    /// A list without elements.
    explicit FEMCollection(const FEMMapping& mapping, const FEMOptions& options = {});
    ~FEMCollection();
    FEMCollection(const FEMCollection&) = delete;
    FEMCollection& operator=(const FEMCollection&) = delete;

    /// Maps the next element, which is not needed afterwards. Throws what `FEMDeserializer` does.
    void add(RepresentationView element);
    /// Forgets all elements.
    void clear() noexcept;
    /// The list of all elements; then there are none.
    Ref<ListBase> finish();

private:
    struct Elements;
    std::unique_ptr<Elements> elements_;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
