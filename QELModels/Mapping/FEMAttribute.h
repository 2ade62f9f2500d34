#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "QELModels/Platform/Export.h"
#include "QELModels/Records/Value.h"
#include "QELModels/Representation/Representation.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// One attribute rule that an application makes, not yet part of any mapping: which property is filled from
/// which key path, and what is done to the value on the way.
class FEMAttribute {
public:
    /// Called with what the key path yields: never absent, possibly null. A null result means that there is
    /// none.
    using Map = std::function<Value(RepresentationView)>;

    /// A rule that takes the value as it is.
    static FEMAttribute mappingOfProperty(std::string_view property, std::string_view keyPath) {
        return {property, keyPath, nullptr};
    }
    /// A rule that takes what `map` makes of the value.
    static FEMAttribute mappingOfProperty(std::string_view property, std::string_view keyPath, Map map) {
        return {property, keyPath, std::move(map)};
    }

    /// The name of the property that is filled, and where in a document its value is.
    const std::string& property() const noexcept QELMODELS_LENT { return property_; }
    const std::string& keyPath() const noexcept QELMODELS_LENT { return keyPath_; }
    /// The map rule; empty when the value is taken as it is.
    const Map& map() const noexcept QELMODELS_LENT { return map_; }

private:
    FEMAttribute(std::string_view property, std::string_view keyPath, Map map)
        : property_(property), keyPath_(keyPath), map_(std::move(map)) {}

    std::string property_;
    std::string keyPath_;
    Map map_;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
