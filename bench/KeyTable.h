#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "QELModels/Platform/detail/PerfectHash.h"

namespace QELModels::bench {

/// From the keys of one record to their numbers, by a perfect hash that is found at compile time.
///
///     constexpr auto kKeys = keyTable("id", "title");
///     switch (kKeys.find(key)) {
///         case kKeys.at("id"): ...
template <std::size_t kCount>
class KeyTable {
public:
    consteval explicit KeyTable(const std::array<std::string_view, kCount>& keys)
        : hash_(signaturesOf(keys)) {
        if (!hash_.isFound()) throw "length and three bytes do not tell these keys apart";
        std::copy(keys.begin(), keys.end(), keys_.begin() + 1);
    }

    /// The number of `key`, or one that no key of the list has.
    constexpr std::size_t find(std::string_view key) const noexcept {
        const std::size_t number = hash_.find(signatureOf(key));
        return keys_[number] == key ? number : kNoKey;
    }

    /// The number of a key that is in the list; does not compile for another one.
    consteval std::size_t at(std::string_view key) const {
        const std::size_t number = find(key);
        if (number == kNoKey) throw "not a key of this record";
        return number;
    }

private:
    using Signature = std::uint32_t;
    static constexpr std::size_t kNoKey = 0;

    static constexpr Signature signatureOf(std::string_view key) noexcept {
        if (key.empty()) return 0;
        const auto byte = [key](std::size_t i) { return Signature{static_cast<unsigned char>(key[i])}; };
        return static_cast<std::uint8_t>(key.size()) | byte(0) << 8 | byte(key.size() / 2) << 16 |
               byte(key.size() - 1) << 24;
    }
    static consteval std::array<Signature, kCount> signaturesOf(
        const std::array<std::string_view, kCount>& keys) {
        std::array<Signature, kCount> signatures;
        std::transform(keys.begin(), keys.end(), signatures.begin(), signatureOf);
        return signatures;
    }

    std::array<std::string_view, kCount + 1> keys_;  // the first one belongs to no key
    detail::PerfectHash<Signature, std::bit_ceil(4 * kCount)> hash_;
};

template <class... Keys>
consteval KeyTable<sizeof...(Keys)> keyTable(Keys... keys) {
    return KeyTable<sizeof...(Keys)>({std::string_view(keys)...});
}

}  // namespace QELModels::bench
