#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// A fault of a mapping: a rule or a copy that sets a property which cannot be set, or a value that a
/// transformer must never be given (a colour that is neither null nor a string). A mapper that throws it has
/// made nothing.
class QELMODELS_EXPORT MappingFault : public std::logic_error {
public:
    /// `what` names the class and the key or value that is at fault.
    explicit MappingFault(const std::string& what) : std::logic_error(what) {}
    MappingFault(const MappingFault&) noexcept = default;
    MappingFault& operator=(const MappingFault&) noexcept = default;
    ~MappingFault() override;

    /// Where in the document the value is that is at fault: a JSON Pointer (RFC 6901). Empty for a fault
    /// that no document caused, and for the document's root.
    std::string_view pointer() const noexcept QELMODELS_LENT {
        return pointer_ ? std::string_view(*pointer_) : std::string_view();
    }
    /// For the engine, which alone knows where it was.
    void setPointer(std::string pointer) {
        pointer_ = std::make_shared<const std::string>(std::move(pointer));
    }
    bool hasPointer() const noexcept { return pointer_ != nullptr; }

private:
    std::shared_ptr<const std::string> pointer_;  // shared, since exceptions are copied without failing
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
