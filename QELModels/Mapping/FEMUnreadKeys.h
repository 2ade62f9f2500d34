#pragma once

#include <functional>
#include <string_view>

#include "QELModels/Mapping/FEMPath.h"
#include "QELModels/Mapping/FEMRules.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Representation/Representation.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// Finds what a document says and no rule of a mapping asks for, by walking the document beside the rules.
///
/// A value that a rule asks for is read, whatever its kind and whatever became of it, and so is all of a raw
/// sub-tree that a rule keeps. Nested records, and the elements of lists of them, are looked into. A key that
/// is in the middle of a key path is read in part: its other members may be unread.
class QELMODELS_EXPORT FEMUnreadKeys {
public:
    /// Is told of one unread key, in the document's order, and of its value: an unread sub-tree is
    /// one place. The path is valid during the call alone; its `pointer()` is the place in the document.
    using Visit = std::function<void(const FEMPath& path, RepresentationView value)>;

    /// For a document in which one record is at a key path, or which is that record (an empty key path).
    static void inObject(RepresentationView document, std::string_view keyPath, const FEMRules& rules,
                         const Visit& visit);
    /// The same for an array of records.
    static void inCollection(RepresentationView document, std::string_view keyPath, const FEMRules& rules,
                             const Visit& visit);
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
