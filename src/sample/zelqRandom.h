#pragma once

#include <cstdint>

/// Random numbers that are the same on every machine for the same seed, which the distributions of
/// the standard library are not (splitmix64). Two calls in one expression would leave their order
/// to the compiler: one call a statement.
class zelqRandom {
public:
    explicit constexpr zelqRandom(std::uint64_t seed) noexcept : state_(seed) {}

    constexpr std::uint64_t next() noexcept {
        state_ += 0x9E3779B97F4A7C15U;
        std::uint64_t bits = state_;
        bits = (bits ^ (bits >> 30)) * 0xBF58476D1CE4E5B9U;
        bits = (bits ^ (bits >> 27)) * 0x94D049BB133111EBU;
        return bits ^ (bits >> 31);
    }

    /// 0 to `count` - 1; `count` is at least 1.
    constexpr std::uint32_t below(std::uint32_t count) noexcept {
        return static_cast<std::uint32_t>(((next() >> 32) * count) >> 32);
    }

    /// True once in `count` times on average.
    constexpr bool onceIn(std::uint32_t count) noexcept { return below(count) == 0; }

private:
    std::uint64_t state_;
};
