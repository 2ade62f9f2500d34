#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string_view>

namespace QELModels::test {

/// A copy in a heap block of exactly its size, so that an address sanitizer sees one byte too many.
struct ExactCopy {
    explicit ExactCopy(std::string_view text) : size(text.size()), bytes(new char[size]) {
        std::copy(text.begin(), text.end(), bytes.get());
    }
    std::string_view view() const { return {bytes.get(), size}; }

    std::size_t size;
    std::unique_ptr<char[]> bytes;
};

}  // namespace QELModels::test
