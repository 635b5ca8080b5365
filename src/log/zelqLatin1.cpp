#include "log/zelqLatin1.h"

#include <array>

namespace {

struct Character {
    unsigned long value;
    std::size_t size;  ///< in bytes
};

/// The character at the start of a text that is not empty.
Character firstOf(std::string_view text) {
    const auto byteAt = [text](std::size_t at) { return static_cast<unsigned char>(text[at]); };
    constexpr std::array<unsigned long, 5> kSmallest{0, 0, 0x80, 0x800, 0x10000};
    const unsigned first = byteAt(0);
    const std::size_t size = first < 0xC0 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    if (size == 1 || first >= 0xF8 || size > text.size()) {
        return {.value = first, .size = 1};
    }
    unsigned long value = first & (0x7FU >> size);
    for (std::size_t at = 1; at < size; ++at) {
        if ((byteAt(at) & 0xC0U) != 0x80U) {
            return {.value = first, .size = 1};
        }
        value = value << 6 | (byteAt(at) & 0x3FU);
    }
    const bool valid = value >= kSmallest[size];  // the shortest form is the only one
    return valid ? Character{.value = value, .size = size} : Character{.value = first, .size = 1};
}

}  // namespace

zelqLatin1::Text zelqLatin1::fromUtf8(std::string_view utf8) {
    Text text;
    for (std::size_t number = 0; !utf8.empty(); ++number) {
        const Character character = firstOf(utf8);
        if (character.value <= 0xFF) {
            text.bytes += static_cast<char>(character.value);
        } else if (!text.unknown) {
            text.unknown = number;
        }
        utf8.remove_prefix(character.size);
    }
    return text;
}

std::string zelqLatin1::toUtf8(std::string_view latin1) {
    std::string utf8;
    for (const char character : latin1) {
        const auto value = static_cast<unsigned char>(character);
        if (value >= 0x80) {
            utf8 += static_cast<char>(0xC0U | value >> 6);
            utf8 += static_cast<char>(0x80U | (value & 0x3FU));
        } else {
            utf8 += character;
        }
    }
    return utf8;
}
