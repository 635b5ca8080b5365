#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

/// Hashes values that come out of files. A log can be made so that its values collide under any
/// hash that is known beforehand, which makes a hash table quadratic. So this one has a key, drawn
/// at random once a process.
struct zelqKeyedHash {
    /// Numbers of 32 bits, the hash in the lower half. Two numbers agree in the lowest n bits of
    /// their hashes for two keys in 2^n at most: multiplying by a random odd number is universal.
    [[nodiscard]] std::size_t operator()(std::uint32_t value) const noexcept {
        return static_cast<std::size_t>((value * multiplier) >> 32);
    }
    /// Addresses.
    [[nodiscard]] std::size_t operator()(const char* place) const noexcept {
        const auto product = reinterpret_cast<std::uintptr_t>(place) * multiplier;
        return static_cast<std::size_t>(product ^ (product >> 32));
    }
    /// All 64 bits of the hash are good.
    [[nodiscard]] static std::uint64_t ofText(std::string_view text) noexcept;

    std::uint64_t multiplier = randomMultiplier();

private:
    static std::uint64_t randomMultiplier() noexcept;
};
