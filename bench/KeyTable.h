#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace QELModels::bench {

/// A perfect hash, found at compile time, from the keys of one record to their places in a list.
///
///     constexpr auto kKeys = keyTable("id", "title");
///     switch (kKeys.find(key)) {
///         case kKeys.at("id"): ...
template <std::size_t kCount>
class KeyTable {
public:
    consteval explicit KeyTable(const std::array<std::string_view, kCount>& keys) : keys_(keys) {
        while (!fill())
            factor_ = factor_ * 6364136223846793005u + 1442695040888963407u;  // try another one
    }

    /// The place of `key`, or a number beyond the list if it is not in it.
    constexpr std::size_t find(std::string_view key) const noexcept {
        if (key.empty()) return kCount;
        const std::size_t place = slots_[slotOf(key)];
        return place < kCount && keys_[place] == key ? place : kCount;
    }

    /// The place of a key that is in the list; does not compile for another one.
    consteval std::size_t at(std::string_view key) const {
        const std::size_t place = find(key);
        if (place == kCount) throw "not a key of this record";
        return place;
    }

private:
    static constexpr std::size_t kSlots = kCount <= 8 ? 32 : 128;

    constexpr std::size_t slotOf(std::string_view key) const noexcept {
        // Length and three bytes tell the keys of every record apart.
        const auto byte = [key](std::size_t i) {
            return static_cast<std::uint64_t>(static_cast<unsigned char>(key[i]));
        };
        const std::uint64_t signature = static_cast<std::uint64_t>(key.size()) | byte(0) << 8 |
                                        byte(key.size() / 2) << 16 | byte(key.size() - 1) << 24;
        return static_cast<std::size_t>(signature * factor_ >> 57) % kSlots;
    }

    constexpr bool fill() {
        slots_.fill(kCount);
        for (std::size_t i = 0; i < kCount; ++i) {
            auto& slot = slots_[slotOf(keys_[i])];
            if (slot != kCount) return false;
            slot = static_cast<std::uint8_t>(i);
        }
        return true;
    }

    std::array<std::string_view, kCount> keys_;
    std::array<std::uint8_t, kSlots> slots_{};
    std::uint64_t factor_ = 0x9E3779B97F4A7C15 | 1;
};

template <class... Keys>
consteval KeyTable<sizeof...(Keys)> keyTable(Keys... keys) {
    return KeyTable<sizeof...(Keys)>({std::string_view(keys)...});
}

}  // namespace QELModels::bench
