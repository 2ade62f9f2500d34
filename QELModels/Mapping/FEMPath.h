#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "QELModels/Platform/Export.h"

namespace QELModels::inline QELMODELS_ABI {

/// Where in a document, and in a model, the engine is: one step, which knows the step before. Steps live on
/// the engine's stack while it works, so that nothing is made for those who do not ask.
class QELMODELS_EXPORT FEMPath {
public:
    /// The root of a document, or, with a key path, where in it the mapping begins.
    explicit FEMPath(std::string_view keyPath = {}) noexcept : keyPath_(keyPath) {}
    /// What a rule reads and the property that it fills.
    FEMPath(const FEMPath& parent, std::string_view keyPath, std::string_view property) noexcept
        : parent_(&parent), keyPath_(keyPath), property_(property) {}
    /// An element of a list.
    FEMPath(const FEMPath& parent, std::size_t index) noexcept : parent_(&parent), index_(index) {}

    bool isElement() const noexcept { return index_ != kNoIndex; }

    /// The place in the document: a JSON Pointer (RFC 6901), such as "/additional/chapters/2/title".
    std::string pointer() const;
    /// The place in the model, such as "assetAdditional.chapters[2].title".
    std::string property() const;

private:
    static constexpr std::size_t kNoIndex = static_cast<std::size_t>(-1);

    const FEMPath* parent_ = nullptr;
    std::string_view keyPath_;
    std::string_view property_;
    std::size_t index_ = kNoIndex;
};

}  // namespace QELModels::inline QELMODELS_ABI
