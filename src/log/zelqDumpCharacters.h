#pragma once

#include <array>
#include <cstddef>

/// Which character the dump shows for each byte in its two text columns.
namespace zelqDumpCharacters {

using Table = std::array<char, 256>;

/// Stands in both columns for bytes that have no character.
inline constexpr char kNone = '.';
/// A blank in EBCDIC. The dump shows it as a byte without a character.
inline constexpr unsigned char kEbcdicBlank = 0x40;

[[nodiscard]] constexpr Table makeAscii() {
    Table table{};
    table.fill(kNone);
    for (std::size_t byte = 0x20; byte <= 0x7E; ++byte) {
        table[byte] = static_cast<char>(byte);
    }
    return table;
}

/// Letters, digits and a few signs. 0x40, a blank in EBCDIC, is shown as "."; 0xDF and 0xE1 are
/// shown as a backslash and "1". Readers of old listings expect it.
[[nodiscard]] constexpr Table makeEbcdic() {
    Table table{};
    table.fill(kNone);
    const auto run = [&table](std::size_t first, char character, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            table[first + i] = static_cast<char>(character + static_cast<char>(i));
        }
    };
    table[0x50] = '&';
    table[0x5B] = '$';
    table[0x7B] = '#';
    table[0x7C] = '@';
    run(0x81, 'a', 9);
    run(0x91, 'j', 9);
    table[0xA1] = '~';
    run(0xA2, 's', 8);
    table[0xC0] = '{';
    run(0xC1, 'A', 9);
    table[0xD0] = '}';
    run(0xD1, 'J', 9);
    table[0xDF] = '\\';
    table[0xE1] = '1';
    run(0xE2, 'S', 8);
    run(0xF0, '0', 10);
    table[0xFA] = '|';
    return table;
}

inline constexpr Table kAscii = makeAscii();
inline constexpr Table kEbcdic = makeEbcdic();

}  // namespace zelqDumpCharacters
