#pragma once

#include <memory>

#include "QELModels/Mapping/FEMDeserializer.h"
#include "QELModels/Mapping/FEMMapping.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Records/List.h"
#include "QELModels/Records/Ref.h"
#include "QELModels/Representation/Representation.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// Makes the list that `FEMDeserializer::collectionFromRepresentation` makes of an array, from one element
/// after the other: for documents that are not held as a whole. After an exception it goes on as if that
/// element had not been given. What the options refer to outlives it.
class QELMODELS_EXPORT FEMCollection {
public:
    /// A list without elements. The mapping is kept.
    explicit FEMCollection(FEMMapping mapping, const FEMOptions& options = {});
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
