#pragma once

#include <cstddef>
#include <cstdint>

/// Reading and writing of integers at any address, aligned or not. The caller checks the bounds.
namespace zelqByteOrder {

[[nodiscard]] constexpr std::uint16_t loadBig16(const std::byte* from) noexcept {
    return static_cast<std::uint16_t>((std::to_integer<unsigned>(from[0]) << 8) |
                                      std::to_integer<unsigned>(from[1]));
}

[[nodiscard]] constexpr std::uint32_t loadBig32(const std::byte* from) noexcept {
    return (static_cast<std::uint32_t>(loadBig16(from)) << 16) | loadBig16(from + 2);
}

[[nodiscard]] constexpr std::uint16_t loadLittle16(const std::byte* from) noexcept {
    return static_cast<std::uint16_t>((std::to_integer<unsigned>(from[1]) << 8) |
                                      std::to_integer<unsigned>(from[0]));
}

[[nodiscard]] constexpr std::uint32_t loadLittle32(const std::byte* from) noexcept {
    return (static_cast<std::uint32_t>(loadLittle16(from + 2)) << 16) | loadLittle16(from);
}

[[nodiscard]] constexpr std::uint32_t reversed(std::uint32_t value) noexcept {
    return value << 24 | (value & 0xFF00) << 8 | (value >> 8 & 0xFF00) | value >> 24;
}

constexpr void storeBig16(std::byte* to, std::uint16_t value) noexcept {
    to[0] = static_cast<std::byte>(value >> 8);
    to[1] = static_cast<std::byte>(value & 0xFF);
}

constexpr void storeBig32(std::byte* to, std::uint32_t value) noexcept {
    storeBig16(to, static_cast<std::uint16_t>(value >> 16));
    storeBig16(to + 2, static_cast<std::uint16_t>(value & 0xFFFF));
}

constexpr void storeLittle16(std::byte* to, std::uint16_t value) noexcept {
    to[0] = static_cast<std::byte>(value & 0xFF);
    to[1] = static_cast<std::byte>(value >> 8);
}

constexpr void storeLittle32(std::byte* to, std::uint32_t value) noexcept {
    storeLittle16(to, static_cast<std::uint16_t>(value & 0xFFFF));
    storeLittle16(to + 2, static_cast<std::uint16_t>(value >> 16));
}

}  // namespace zelqByteOrder
