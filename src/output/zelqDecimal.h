#pragma once

#include <array>
#include <charconv>
#include <cstdint>
#include <string>

/// Numbers as decimal digits, for texts that are written by the million.
namespace zelqDecimal {

inline void append(std::uint64_t value, std::string& text) {
    std::array<char, 20> digits;
    text.append(digits.data(), std::to_chars(digits.begin(), digits.end(), value).ptr);
}

}  // namespace zelqDecimal
