#pragma once

#include <cstddef>

/// While an object of this class lives, memory runs out for its thread: the first `allocations`
/// calls of operator new succeed, all further ones fail. A program that uses it links
/// OutOfMemory.cpp.
class OutOfMemory {
public:
    explicit OutOfMemory(std::size_t allocations);
    ~OutOfMemory();
    OutOfMemory(OutOfMemory&&) = delete;

    /// True if an allocation has failed.
    [[nodiscard]] bool hasFailed() const;
};
