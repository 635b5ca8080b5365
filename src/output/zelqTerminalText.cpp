#include "output/zelqTerminalText.h"

#include <algorithm>
#include <array>
#include <cstddef>

#include "log/zelqUtf8.h"

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
        const auto [code, size] = zelqUtf8::firstOf(bytes);
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
