#include "output/zelqTerminalText.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace {

constexpr std::string_view kDigits = "0123456789ABCDEF";

bool isPrintableAscii(char byte) {
    return byte >= ' ' && byte <= '~';
}

/// Marks of direction, line and paragraph ends, embeddings, overrides and isolates.
bool turnsText(char32_t character) {
    constexpr std::array<std::array<char32_t, 2>, 3> kRanges{
        {{0x200E, 0x200F}, {0x2028, 0x202E}, {0x2066, 0x2069}}};
    return std::any_of(kRanges.begin(), kRanges.end(), [character](const auto& range) {
        return character >= range[0] && character <= range[1];
    });
}

/// A character in UTF-8.
struct Character {
    char32_t code = 0;
    std::size_t size = 0;  ///< 0 if the bytes are none
};

/// The character that text begins with. A longer form than it needs, a surrogate half and what is
/// beyond Unicode are none.
Character firstOf(std::string_view text) {
    const auto first = static_cast<unsigned char>(text[0]);
    const std::size_t size = first < 0x80                    ? 1
                             : first >= 0xC2 && first < 0xE0 ? 2
                             : first >= 0xE0 && first < 0xF0 ? 3
                             : first >= 0xF0 && first < 0xF5 ? 4
                                                             : 0;
    if (size == 0 || size > text.size()) {
        return {};
    }
    constexpr std::array<unsigned, 5> kFirstBits{0, 0x7F, 0x1F, 0x0F, 0x07};
    char32_t code = first & kFirstBits[size];
    for (const char next : text.substr(1, size - 1)) {
        if ((static_cast<unsigned char>(next) & 0xC0U) != 0x80U) {
            return {};
        }
        code = code << 6U | (static_cast<unsigned char>(next) & 0x3FU);
    }
    constexpr std::array<char32_t, 5> kSmallest{0, 0, 0x80, 0x800, 0x10000};
    const bool isNone =
        code < kSmallest[size] || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF);
    return isNone ? Character{} : Character{.code = code, .size = size};
}

}  // namespace

void zelqTerminalText::appendByte(std::string& text, char byte) {
    const auto value = static_cast<unsigned char>(byte);
    text += "\\x";
    text += kDigits[value >> 4U];
    text += kDigits[value & 15U];
}

std::string zelqTerminalText::escaped(std::string_view bytes) {
    std::string text;
    while (!bytes.empty()) {
        const auto [code, size] = firstOf(bytes);
        const std::string_view character = bytes.substr(0, std::max<std::size_t>(size, 1));
        if (size == 0 || code < ' ' || (code >= 0x7F && code < 0xA0)) {
            for (const char byte : character) {
                appendByte(text, byte);
            }
        } else if (turnsText(code)) {
            text += "\\u{20";  // they all are U+20xx
            text += kDigits[code >> 4U & 15U];
            text += kDigits[code & 15U];
            text += '}';
        } else {
            text += character;
        }
        bytes.remove_prefix(character.size());
    }
    return text;
}

std::string zelqTerminalText::escapedLines(std::string_view bytes) {
    std::string text;
    for (std::size_t end = bytes.find('\n'); end != std::string_view::npos;
         end = bytes.find('\n')) {
        text += escaped(bytes.substr(0, end)) + '\n';
        bytes.remove_prefix(end + 1);
    }
    return text + escaped(bytes);
}

std::string zelqTerminalText::escapedListing(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    for (const char byte : bytes) {
        if (isPrintableAscii(byte) || byte == '\n') {
            text += byte;
        } else {
            appendByte(text, byte);
        }
    }
    return text;
}
