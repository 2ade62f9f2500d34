#pragma once

#include <cstdint>
#include <optional>

#include "QELModels/Mapping/FEMPath.h"
#include "QELModels/Platform/Export.h"
#include "QELModels/Records/ObjectClass.h"
#include "QELModels/Representation/Representation.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// What became of one rule.
enum class FEMOutcome : std::uint8_t {
    set,        ///< the property has a value
    missing,    ///< the document has nothing there
    null,       ///< the document has null there
    refused,    ///< the rule could not convert the value, or does not know the word
    wrongKind,  ///< the value does not fit the property, or is not the container that a list, root or element
                ///< is
    fault       ///< the value must never be there: the mapping ends with a `MappingFault`, or goes on
                ///< (`FEMOptions`)
};

/// What the engine tells an observer: the outcome of one rule, in the order in which rules are applied. What
/// it refers to is valid during the call alone.
struct FEMEvent {
    const FEMPath& path;
    const Property* property;  ///< what the rule fills; null for an element of a list and for a root
    FEMOutcome outcome;
    std::optional<RepresentationView> value;  ///< what the document has there; nothing when it is missing
};

/// Is told why each property is filled or empty. A mapping without an observer pays nothing for it.
class QELMODELS_EXPORT FEMObserver {
public:
    /// Called once for each rule that was applied, on the thread that maps. What it throws ends the mapping
    /// and reaches whoever asked for it.
    virtual void ruleApplied(const FEMEvent& event) = 0;

    // Virtual, although the library never deletes an observer: without it, every class of an application that
    // is not final would be warned of.
    constexpr virtual ~FEMObserver() = default;

protected:
    constexpr FEMObserver() noexcept = default;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
