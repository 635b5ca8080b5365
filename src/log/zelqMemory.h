#pragma once

#include <cstddef>
#include <cstdlib>
#include <memory>

/// Raw heap memory for bulk data.
struct zelqFreeMemory {
    void operator()(std::byte* memory) const noexcept { std::free(memory); }
};
// NOLINTNEXTLINE(modernize-avoid-c-arrays): a pointer to an array of any length
using zelqMemory = std::unique_ptr<std::byte[], zelqFreeMemory>;

inline constexpr std::size_t kHugePageSize = std::size_t{2} << 20;

namespace zelqHeap {

/// Allocates memory; null if there is not enough. Memory that is touched for the first time costs a
/// page fault a page, which is a third of the time it takes to read a log. Memory of at least one
/// huge page therefore lies on huge pages, if the system has them.
zelqMemory allocate(std::size_t size) noexcept;

/// The bytes that the system could give out now, by its own estimate, the limits of the process and
/// those of its control groups; the largest number if there are none of these.
std::size_t available() noexcept;

/// Whether so many bytes can be taken and enough is left to go on with. To be asked before much
/// memory is touched: the system promises more than it has, and ends the program when that is used.
/// Always true for less than 8 MiB.
bool has(std::size_t size) noexcept;
/// Throws std::bad_alloc if it has not.
void require(std::size_t size);

}  // namespace zelqHeap
