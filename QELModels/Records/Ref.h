#pragma once

#include <concepts>
#include <cstddef>
#include <functional>
#include <utility>

#include "QELModels/Records/Object.h"

namespace QELModels {
inline namespace QELMODELS_ABI {

/// Keeps a record or a list, and with it the block that it lives in. It can be made of any borrowed record,
/// nested ones included. One pointer wide; copying counts the block. Equality is identity; `EqualTo` compares
/// by value.
template <class T>
class Ref {
public:
    Ref() noexcept = default;
    /// Keeps nothing, or a borrowed record; null is nothing.
    Ref(std::nullptr_t) noexcept {}
    explicit Ref(const T* borrowed) noexcept : object_(borrowed) {
        if (object_ != nullptr) object_->block()->retain();
    }
    Ref(const Ref& other) noexcept : Ref(other.object_) {}
    Ref(Ref&& other) noexcept : object_(std::exchange(other.object_, nullptr)) {}
    /// From a reference to a more special record.
    template <std::derived_from<T> U>
    Ref(Ref<U> other) noexcept : object_(other.release()) {}
    Ref& operator=(Ref other) noexcept {
        std::swap(object_, other.object_);
        return *this;
    }
    ~Ref() {
        if (object_ != nullptr) object_->block()->release();
    }

    /// Takes over a use that is already counted.
    static Ref adopt(const T* counted) noexcept {
        Ref ref;
        ref.object_ = counted;
        return ref;
    }
    /// Gives the counted use away; the reference is null afterwards.
    const T* release() noexcept { return std::exchange(object_, nullptr); }

    /// What is kept, lent for as long as this reference keeps it; null when that is nothing.
    const T* get() const noexcept QELMODELS_LENT { return object_; }
    const T& operator*() const noexcept QELMODELS_LENT { return *object_; }
    const T* operator->() const noexcept QELMODELS_LENT { return object_; }
    explicit operator bool() const noexcept { return object_ != nullptr; }

    /// The same record as one of a class that its own is, or derives from; null when it is of another one,
    /// and when there is none.
    template <class U>
    Ref<U> as() const noexcept {
        return Ref<U>(object_ == nullptr ? nullptr : object_->template as<U>());
    }

    friend bool operator==(const Ref& a, const Ref& b) noexcept { return a.object_ == b.object_; }
    friend bool operator==(const Ref& a, std::nullptr_t) noexcept { return a.object_ == nullptr; }

private:
    const T* object_ = nullptr;
};

template <class T>
Ref(const T*) -> Ref<T>;

}  // namespace QELMODELS_ABI
}  // namespace QELModels

template <class T>
struct std::hash<QELModels::Ref<T>> {
    std::size_t operator()(const QELModels::Ref<T>& ref) const noexcept {
        return std::hash<const T*>()(ref.get());
    }
};
