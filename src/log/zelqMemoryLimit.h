#pragma once

#include <cstddef>
#include <string>

namespace zelqMemoryLimit {

/// The bytes that the control groups of this process, of either version, let it take beyond what
/// they hold already; the largest number if none of them has a limit. File contents that the system
/// keeps in memory do not count, because it gives them up when the memory is wanted. `root` stands
/// before the names of the system's files. Any thread. Throws std::bad_alloc.
std::size_t left(const std::string& root = {});

/// The bytes that the limits of this process's address space and data let it take beyond what it
/// has; the largest number if it has no such limit. Any thread. Throws
/// std::bad_alloc.
std::size_t leftOfProcess();

}  // namespace zelqMemoryLimit
