#include "Allocations.h"

#include <cstdlib>
#include <new>

namespace quillon {

namespace {

std::uint64_t& counter() {
    static std::uint64_t count = 0;
    return count;
}

} // namespace

std::uint64_t allocationCount() {
    return counter();
}

} // namespace quillon

// All other forms of new and delete end in these.
void* operator new(std::size_t size) {
    ++quillon::counter();
    if (void* memory = std::malloc(size == 0 ? 1 : size)) {
        return memory;
    }
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept {
    std::free(memory);
}
