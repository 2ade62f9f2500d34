// The test program's own `operator new`, of which chosen requests fail. All forms, since those of a sanitizer
// do not call each other, and memory has to go back to where it came from: `malloc` and `free`, which the
// sanitizers watch too. What is aligned for more than any scalar type has a pair of its own, which nothing
// here uses.

#include <cstdlib>
#include <new>

#include "tests/TestSupport.h"

namespace QELModels::test {

constinit thread_local Requests requests;

namespace {

void* ifGranted(std::size_t bytes) noexcept {
    ++requests.made;
    const bool fails = requests.firstFailing <= requests.made && requests.made <= requests.lastFailing;
    requests.haveFailed |= fails;
    void* const memory = fails ? nullptr : std::malloc(bytes == 0 ? 1 : bytes);
    requests.pieces += memory != nullptr;
    return memory;
}

void* granted(std::size_t bytes) {
    if (void* const memory = ifGranted(bytes)) return memory;
    throw std::bad_alloc();
}

void giveBack(void* memory) noexcept {
    requests.pieces -= memory != nullptr;
    std::free(memory);
}

}  // namespace
}  // namespace QELModels::test

// Inlined, the pairs would look unequal to the compiler.
// clang-format off
using QELModels::test::giveBack, QELModels::test::granted, QELModels::test::ifGranted;
[[gnu::noinline]] void* operator new(std::size_t bytes) { return granted(bytes); }
[[gnu::noinline]] void* operator new[](std::size_t bytes) { return granted(bytes); }
[[gnu::noinline]] void* operator new(std::size_t bytes, const std::nothrow_t&) noexcept { return ifGranted(bytes); }
[[gnu::noinline]] void* operator new[](std::size_t bytes, const std::nothrow_t&) noexcept { return ifGranted(bytes); }
[[gnu::noinline]] void operator delete(void* memory) noexcept { giveBack(memory); }
[[gnu::noinline]] void operator delete[](void* memory) noexcept { giveBack(memory); }
[[gnu::noinline]] void operator delete(void* memory, std::size_t) noexcept { giveBack(memory); }
[[gnu::noinline]] void operator delete[](void* memory, std::size_t) noexcept { giveBack(memory); }
[[gnu::noinline]] void operator delete(void* memory, const std::nothrow_t&) noexcept { giveBack(memory); }
[[gnu::noinline]] void operator delete[](void* memory, const std::nothrow_t&) noexcept { giveBack(memory); }
