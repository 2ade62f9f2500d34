#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#include "QELModels/Platform/Export.h"

namespace QELModels {
inline namespace QELMODELS_ABI {
namespace detail {

/// Sixteen bytes of text, or the result of comparing each of them: a byte of it has all bits set where the
/// comparison is true, and none where it is false. A few instructions on machines that have vectors of this
/// size, and correct on all others.
class ByteBlock {
public:
    static constexpr std::size_t kSize = 16;
    static constexpr unsigned kAllBits = (1U << kSize) - 1;

    explicit ByteBlock(const char* from) noexcept { std::memcpy(&bytes_, from, kSize); }
    void store(char* to) const noexcept { std::memcpy(to, &bytes_, kSize); }

#if defined(__GNUC__)
    friend ByteBlock operator|(ByteBlock a, ByteBlock b) noexcept {
        return ByteBlock(a.bytes_ | b.bytes_);
    }
    friend ByteBlock operator&(ByteBlock a, ByteBlock b) noexcept {
        return ByteBlock(a.bytes_ & b.bytes_);
    }
    ByteBlock operator~() const noexcept {
        return ByteBlock(~bytes_);
    }
    friend ByteBlock operator==(ByteBlock block, char byte) noexcept {
        return ByteBlock(Bytes(block.bytes_ == static_cast<unsigned char>(byte)));
    }
    /// Whether `other` points to the same sixteen bytes.
    bool equals(const char* other) const noexcept {
        return ByteBlock(Bytes(bytes_ == ByteBlock(other).bytes_)).bits() == kAllBits;
    }
    /// Compares: is a byte one of those from `first` to `last`?
    ByteBlock isWithin(char first, char last) const noexcept {
        const auto low = static_cast<unsigned char>(first);
        return ByteBlock(Bytes(bytes_ - low <= static_cast<unsigned char>(last - first)));
    }
    /// Compares: is a byte an ASCII letter?
    ByteBlock isLetter() const noexcept {
        return ByteBlock(bytes_ | 0x20).isWithin('a', 'z');
    }

private:
    using Bytes [[gnu::vector_size(kSize)]] = unsigned char;
    explicit ByteBlock(Bytes bytes) noexcept : bytes_(bytes) {}
    Bytes bytes_;
#else
    friend ByteBlock operator|(ByteBlock a, ByteBlock b) noexcept {
        for (std::size_t i = 0; i < kSize; ++i)
            a.bytes_[i] |= b.bytes_[i];
        return a;
    }
    friend ByteBlock operator&(ByteBlock a, ByteBlock b) noexcept {
        for (std::size_t i = 0; i < kSize; ++i)
            a.bytes_[i] &= b.bytes_[i];
        return a;
    }
    bool equals(const char* other) const noexcept {
        return std::memcmp(bytes_, other, kSize) == 0;
    }
    ByteBlock operator~() const noexcept {
        return where([](unsigned char byte) { return byte == 0; });
    }
    friend ByteBlock operator==(ByteBlock block, char wanted) noexcept {
        return block.isWithin(wanted, wanted);
    }
    ByteBlock isWithin(char first, char last) const noexcept {
        return where([=](unsigned char byte) {
            return byte >= static_cast<unsigned char>(first) && byte <= static_cast<unsigned char>(last);
        });
    }
    ByteBlock isLetter() const noexcept {
        return where([](unsigned char byte) { return (byte | 0x20) >= 'a' && (byte | 0x20) <= 'z'; });
    }

private:
    template <class Test>
    ByteBlock where(Test holds) const noexcept {
        ByteBlock result = *this;
        for (unsigned char& byte : result.bytes_)
            byte = holds(byte) ? 0xFF : 0;
        return result;
    }
    unsigned char bytes_[kSize];
#endif

    // The sixteen bytes from `kMasks + kSize - count` on have all bits set in the first `count` of them.
    static constexpr char kMasks[2 * kSize + 1] =
        "\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF";

public:
    /// Its first `count` bytes, then NULs.
    ByteBlock first(std::size_t count) const noexcept {
        return *this & ByteBlock(kMasks + kSize - count);
    }

    /// Of a comparison: one bit for each byte, the lowest for the first.
    unsigned bits() const noexcept {
#if defined(__SSE2__)
        using Signed [[gnu::vector_size(kSize)]] = char;
        return static_cast<unsigned>(__builtin_ia32_pmovmskb128(Signed(bytes_)));
#else
        // Each half keeps another bit of each of its bytes, and a multiplication adds them up in its highest
        // byte.
        constexpr std::uint64_t kBits = 0x8040201008040201;
        constexpr std::uint64_t kSumOfBytes = 0x0101010101010101;
        std::uint64_t halves[2];
        std::memcpy(halves, &bytes_, kSize);
        unsigned bits = 0;
        for (int i = 0; i < 2; ++i) {
            if constexpr (std::endian::native == std::endian::little)
                bits |= static_cast<unsigned>((halves[i] & kBits) * kSumOfBytes >> 56) << (8 * i);
            else
                for (unsigned byte = 0; byte < 8; ++byte)
                    bits |= static_cast<unsigned>(halves[i] >> (56 - 8 * byte) & 1) << (8 * i + byte);
        }
        return bits;
#endif
    }
    /// Of a comparison: the position of the first byte for which it is true; `kSize` if it is true for none.
    std::size_t first() const noexcept {
        return static_cast<std::size_t>(std::countr_zero(bits() | 1U << kSize));
    }
};

}  // namespace detail
}  // namespace QELMODELS_ABI
}  // namespace QELModels
