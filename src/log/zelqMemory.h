#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>

/// Raw heap memory for bulk data.
struct zelqFreeMemory {
    void operator()(std::byte* memory) const noexcept { std::free(memory); }
};
using zelqMemory = std::unique_ptr<std::byte[], zelqFreeMemory>;

inline constexpr std::size_t kHugePageSize = std::size_t{2} << 20;

/// Memory that is touched for the first time costs a page fault a page, which is a third of the
/// time it takes to read a log. From one huge page up the memory therefore lies on huge pages,
/// where the system has them. Null if there is not so much.
zelqMemory allocateMemory(std::size_t size) noexcept;
