#include "log/zelqMemory.h"

#include <sys/mman.h>

zelqMemory allocateMemory(std::size_t size) noexcept {
    if (size < kHugePageSize) {
        return zelqMemory(static_cast<std::byte*>(std::malloc(size)));
    }
    const std::size_t rounded = (size + kHugePageSize - 1) / kHugePageSize * kHugePageSize;
    void* const memory = std::aligned_alloc(kHugePageSize, rounded);
    if (memory != nullptr) {
        ::madvise(memory, rounded, MADV_HUGEPAGE);  // a kernel without huge pages serves as well
    }
    return zelqMemory(static_cast<std::byte*>(memory));
}
