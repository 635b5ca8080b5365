#include "log/zelqUtf8.h"

#include <algorithm>
#include <array>

namespace {

constexpr bool isAscii(char byte) {
    return static_cast<unsigned char>(byte) < 0x80;
}

constexpr bool continues(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

}  // namespace

zelqUtf8::Character zelqUtf8::firstOf(std::string_view text) noexcept {
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
        if (!continues(next)) {
            return {};
        }
        code = code << 6U | (static_cast<unsigned char>(next) & 0x3FU);
    }
    constexpr std::array<char32_t, 5> kSmallest{0, 0, 0x80, 0x800, 0x10000};
    const bool isNone =
        code < kSmallest[size] || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF);
    return isNone ? Character{} : Character{.code = code, .size = size};
}

std::string zelqUtf8::wellFormed(std::string_view text) {
    std::string result;
    while (!text.empty()) {
        const std::size_t size = firstOf(text).size;
        result += size > 0 ? text.substr(0, size) : std::string_view("\xEF\xBF\xBD");
        text.remove_prefix(std::max<std::size_t>(size, 1));
    }
    return result;
}

void zelqUtf8::appendLatin1(std::string_view latin1, std::string& text) {
    if (std::ranges::all_of(latin1, isAscii)) {
        text += latin1;
        return;
    }
    for (const char byte : latin1) {
        if (isAscii(byte)) {
            text += byte;
        } else {
            const auto code = static_cast<unsigned char>(byte);
            text += static_cast<char>(0xC0U | code >> 6U);
            text += static_cast<char>(0x80U | (code & 0x3FU));
        }
    }
}

std::size_t zelqUtf8::length(std::string_view text) noexcept {
    return static_cast<std::size_t>(
        std::ranges::count_if(text, [](char byte) { return !continues(byte); }));
}
