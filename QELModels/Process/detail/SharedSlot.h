#pragma once

#include <atomic>
#include <cstddef>
#include <memory>
#include <utility>

#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

/// A variable of the process that any thread may use and replace at any time.
///
/// Constant-initialised and never destroyed, so static initialisers and destructors may use it. The value
/// that it has at the end of the process is not destroyed. While it is empty, `use` costs one load.
template <typename T>
class SharedSlot {
    struct Entry {
        explicit Entry(T&& held) : value(std::move(held)) {}
        const T value;
        std::atomic<std::size_t> uses{1};
    };

    struct Release {
        void operator()(Entry* entry) const noexcept {
            if (entry->uses.fetch_sub(1, std::memory_order_acq_rel) == 1) delete entry;
        }
    };

    using Owner = std::unique_ptr<Entry, Release>;

public:
    /// Keeps its value alive, even if the slot gets another one meanwhile.
    class Use {
    public:
        explicit operator bool() const noexcept { return entry_ != nullptr; }
        const T& operator*() const noexcept { return entry_->value; }

    private:
        friend class SharedSlot;
        explicit Use(Owner entry) noexcept : entry_(std::move(entry)) {}

        Owner entry_;
    };

    constexpr SharedSlot() noexcept = default;
    SharedSlot(const SharedSlot&) = delete;
    SharedSlot& operator=(const SharedSlot&) = delete;

    /// The value at this moment, or nothing.
    Use use() noexcept {
        if (entry_.load(std::memory_order_relaxed) == nullptr) return Use(nullptr);
        // Between reading the pointer and counting the use, nobody may release the entry.
        const Guard guard(busy_);
        Entry* const entry = entry_.load(std::memory_order_relaxed);
        if (entry != nullptr) entry->uses.fetch_add(1, std::memory_order_relaxed);
        return Use(Owner(entry));
    }

    /// Replaces the value. The former one is destroyed when its last use ends.
    void set(T value) { exchange(Owner(new Entry(std::move(value)))); }

    /// Leaves the slot empty.
    void clear() noexcept { exchange(nullptr); }

private:
    // Held for a few instructions, and never while code of others runs. A mutex would do, but not every
    // standard library has one without a destructor.
    class Guard {
    public:
        explicit Guard(std::atomic_flag& busy) noexcept : busy_(busy) {
            while (busy_.test_and_set(std::memory_order_acquire))
                busy_.wait(true, std::memory_order_relaxed);
        }
        ~Guard() {
            busy_.clear(std::memory_order_release);
            busy_.notify_one();
        }
        Guard(const Guard&) = delete;
        Guard& operator=(const Guard&) = delete;

    private:
        std::atomic_flag& busy_;
    };

    void exchange(Owner entry) noexcept {
        Owner former;
        {
            const Guard guard(busy_);
            former.reset(entry_.exchange(entry.release(), std::memory_order_relaxed));
        }
        // The former value is destroyed after the guard, since its destructor may use the slot.
    }

    std::atomic<Entry*> entry_{nullptr};
    std::atomic_flag busy_;
};

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
