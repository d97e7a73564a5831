// An allocation that fails ends the program at once, also inside of a library. They ought to cope, and do not: the X
// libraries then wait for ever for an answer that they have dropped, with the keyboard still ours.
//
// What the program defines is what its libraries call; the C library offers its own functions under second names.

#include "base/Fatal.h"

#include <cstddef>
#include <cstdlib>

// NOLINTBEGIN: the C library's names, and memory without an owner, are what this is about
extern "C" {

void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t number, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void* __libc_memalign(std::size_t alignment, std::size_t size);

} // extern "C"

namespace {

void* orFatal(void* memory) {
    tapalong::verify(memory != nullptr, "memory must be had");
    return memory;
}

} // namespace

extern "C" {

void* malloc(std::size_t size) noexcept {
    return orFatal(__libc_malloc(size));
}

void* calloc(std::size_t number, std::size_t size) noexcept {
    return orFatal(__libc_calloc(number, size));
}

void* realloc(void* memory, std::size_t size) noexcept {
    void* const moved = __libc_realloc(memory, size);
    return size != 0 ? orFatal(moved) : moved; // of no size: freed
}

void* aligned_alloc(std::size_t alignment, std::size_t size) noexcept {
    return orFatal(__libc_memalign(alignment, size));
}

int posix_memalign(void** memory, std::size_t alignment, std::size_t size) noexcept {
    *memory = orFatal(__libc_memalign(alignment, size));
    return 0;
}

} // extern "C"
// NOLINTEND
