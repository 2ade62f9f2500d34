#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

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
    /// A member of a dictionary, by a key of the document's own, in which a dot is only a dot.
    static FEMPath ofKey(const FEMPath& parent, std::string_view key) noexcept {
        FEMPath path(parent, key, {});
        path.index_ = kDocumentKey;
        return path;
    }

    /// Whether this step is an element of a list, or a key of the document's own.
    bool isElement() const noexcept { return index_ < kDocumentKey; }
    bool isDocumentKey() const noexcept { return index_ == kDocumentKey; }
    /// The step before; null at the root.
    const FEMPath* parent() const noexcept { return parent_; }
    /// What a rule reads, or a key of the document's own; where in it the mapping begins, for the root.
    std::string_view keyPath() const noexcept { return keyPath_; }
    /// The name of what a rule fills; empty for every other step.
    std::string_view propertyName() const noexcept { return property_; }
    /// Which element of its list this is.
    std::size_t index() const noexcept { return index_; }

    /// A place for an observer to leave what it knows of this step, for as long as the step lasts; null until
    /// then. Events under one record share the steps above it, so that nothing need be found twice.
    void*& note() const noexcept { return note_; }

    /// How the indices of lists are written: as they are, or as "*", alike for all elements.
    enum class Indices : bool { exact, any };
    /// The place in the document: a JSON Pointer (RFC 6901), such as "/additional/chapters/2/title".
    std::string pointer(Indices indices = Indices::exact) const;
    /// The place in the model, such as "assetAdditional.chapters[2].title".
    std::string property(Indices indices = Indices::exact) const;

private:
    // Lists are shorter than the last indices, which tell the other kinds of steps apart.
    static constexpr std::size_t kNoIndex = static_cast<std::size_t>(-1);
    static constexpr std::size_t kDocumentKey = kNoIndex - 1;

    std::string indexText(Indices indices) const;

    const FEMPath* parent_ = nullptr;
    std::string_view keyPath_;
    std::string_view property_;
    std::size_t index_ = kNoIndex;
    mutable void* note_ = nullptr;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
