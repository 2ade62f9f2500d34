#pragma once

#include <cstddef>
#include <iterator>
#include <span>

#include "QELModels/Platform/Export.h"
#include "QELModels/Records/Object.h"
#include "QELModels/Records/Ref.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// What all lists of records share; everybody but the engine uses `List<T>`.
class QELMODELS_EXPORT ListBase : public Counted {
public:
    std::size_t size() const noexcept { return size_; }
    bool empty() const noexcept { return size_ == 0; }
    /// The elements; none is null.
    std::span<const Object* const> objects() const noexcept QELMODELS_LENT { return {elements_, size_}; }

    /// Same count and pairwise equal elements, each pair compared by `isEqual`.
    bool isEqual(const ListBase* other) const;
    /// The number of elements.
    std::uint64_t hash() const noexcept { return size_; }

protected:
    friend struct detail::ObjectAccess;
    ListBase(const Block* block, const Object* const* elements, std::size_t size) noexcept
        : Counted(block), elements_(elements), size_(size) {}
    ~ListBase() = default;

private:
    const Object* const* elements_;
    std::size_t size_;
};

/// An immutable list of records. It lives in its owner's block, or in one of its own that keeps its elements.
template <class T>
class List : public ListBase {
public:
    /// Goes through the elements; valid as long as the list.
    class Iterator {
    public:
        using value_type = T;
        using difference_type = std::ptrdiff_t;
        using iterator_category = std::random_access_iterator_tag;
        using pointer = const T*;
        using reference = const T&;

        Iterator() noexcept = default;
        explicit Iterator(const Object* const* at) noexcept : at_(at) {}
        reference operator*() const noexcept { return static_cast<const T&>(**at_); }
        pointer operator->() const noexcept { return &**this; }
        reference operator[](difference_type n) const noexcept { return *(*this + n); }
        Iterator& operator++() noexcept { return *this += 1; }
        Iterator operator++(int) noexcept { return Iterator(at_++); }
        Iterator& operator--() noexcept { return *this -= 1; }
        Iterator operator--(int) noexcept { return Iterator(at_--); }
        Iterator& operator+=(difference_type n) noexcept {
            at_ += n;
            return *this;
        }
        Iterator& operator-=(difference_type n) noexcept { return *this += -n; }
        friend Iterator operator+(Iterator i, difference_type n) noexcept { return i += n; }
        friend Iterator operator+(difference_type n, Iterator i) noexcept { return i += n; }
        friend Iterator operator-(Iterator i, difference_type n) noexcept { return i -= n; }
        friend difference_type operator-(Iterator a, Iterator b) noexcept { return a.at_ - b.at_; }
        friend auto operator<=>(Iterator a, Iterator b) noexcept = default;

    private:
        const Object* const* at_ = nullptr;
    };
    using value_type = T;
    using const_iterator = Iterator;
    using iterator = Iterator;

    Iterator begin() const noexcept QELMODELS_LENT { return Iterator(objects().data()); }
    Iterator end() const noexcept QELMODELS_LENT { return begin() + static_cast<std::ptrdiff_t>(size()); }
    /// The element at a position. Requires: `position` is below `size()`; for the others, the list is not
    /// empty.
    const T& operator[](std::size_t position) const noexcept QELMODELS_LENT {
        return static_cast<const T&>(*objects()[position]);
    }
    const T& front() const noexcept QELMODELS_LENT { return (*this)[0]; }
    const T& back() const noexcept QELMODELS_LENT { return (*this)[size() - 1]; }

    friend bool operator==(const List& a, const List& b) { return a.isEqual(&b); }

private:
    friend struct detail::ObjectAccess;
    using ListBase::ListBase;
};

}  // namespace QELMODELS_ABI
}  // namespace QELModels
