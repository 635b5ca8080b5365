#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>

/// Bytes as hexadecimal digits, two for each, in lower case and without blanks.
namespace zelqHexText {

/// The two digits of every byte.
inline constexpr std::array<std::array<char, 2>, 256> kDigits = [] {
    constexpr std::string_view kOfHalves = "0123456789abcdef";
    std::array<std::array<char, 2>, 256> digits{};
    for (std::size_t byte = 0; byte < digits.size(); ++byte) {
        digits[byte] = {kOfHalves[byte >> 4U], kOfHalves[byte & 0xFU]};
    }
    return digits;
}();

inline void append(std::span<const std::byte> bytes, std::string& text) {
    const std::size_t start = text.size();
    text.resize(start + 2 * bytes.size());
    char* to = text.data() + start;
    for (const std::byte byte : bytes) {
        const std::array<char, 2>& digits = kDigits[std::to_integer<std::size_t>(byte)];
        *to++ = digits[0];
        *to++ = digits[1];
    }
}

}  // namespace zelqHexText
