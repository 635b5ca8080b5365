#pragma once

#include <cstddef>
#include <cstdint>

/// While an object of this class lives, calls of one sort fail on all threads: the one with this
/// number, from 0 on, or that one and all later ones. One object at a time. A program that uses it
/// links Fault.cpp.
class Fault {
public:
    /// `Parts`: no call fails, but reading and writing are interrupted and take a part at a time.
    enum class Sort : std::uint8_t { Memory, Thread, Output, Parts };

    Fault(Sort sort, std::size_t number, bool laterToo);
    ~Fault();
    Fault(Fault&&) = delete;

    /// True if a call has failed.
    [[nodiscard]] bool hasStruck() const;
};
