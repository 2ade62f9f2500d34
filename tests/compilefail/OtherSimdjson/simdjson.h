#pragma once

// Another simdjson, in which the internal interface that the reader uses differs (with FIXED it does not):
// the names of the real one, without what they do.

#include <cstddef>
#include <cstdint>
#include <memory>

namespace simdjson {

enum error_code { SUCCESS, UNCLOSED_STRING };
enum class stage1_mode { regular };
constexpr std::size_t SIMDJSON_MAXSIZE_BYTES = 0xFFFFFFFF;
constexpr std::size_t SIMDJSON_PADDING = 64;

namespace internal {

struct dom_parser_implementation {
#ifdef FIXED
    std::size_t capacity() const;
    error_code set_capacity(std::size_t capacity);
    error_code stage1(const std::uint8_t* text, std::size_t size, stage1_mode mode);
    std::uint32_t n_structural_indexes;
    std::unique_ptr<std::uint32_t[]> structural_indexes;
#else
    std::size_t size() const;
    error_code stage1(const std::uint8_t* text, std::size_t size);
    std::uint64_t n_structural_indexes;
    std::unique_ptr<std::uint64_t[]> structural_indexes;
#endif
};

}  // namespace internal

struct implementation {
#ifdef FIXED
    error_code create_dom_parser_implementation(
        std::size_t capacity, std::size_t maxDepth,
        std::unique_ptr<internal::dom_parser_implementation>& parser) const;
#else
    std::unique_ptr<internal::dom_parser_implementation> create(std::size_t capacity) const;
#endif
    bool supported_by_runtime_system() const;
};

const implementation* get_active_implementation();

}  // namespace simdjson
