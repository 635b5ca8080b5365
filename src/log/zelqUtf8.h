#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// The text of logs and names in UTF-8, which is what other programs read.
namespace zelqUtf8 {

/// A character in UTF-8.
struct Character {
    char32_t code = 0;
    std::size_t size = 0;  ///< bytes; 0 if the bytes are no character
};

/// The character that text begins with, which is not empty. A longer form than it needs, a
/// surrogate half and what is beyond Unicode are none.
[[nodiscard]] Character firstOf(std::string_view text) noexcept;

/// The text with U+FFFD in place of each byte that belongs to no character.
[[nodiscard]] std::string wellFormed(std::string_view text);

/// Appends Latin-1 text in UTF-8.
void appendLatin1(std::string_view latin1, std::string& text);

/// The number of characters of text that is UTF-8.
[[nodiscard]] std::size_t length(std::string_view text) noexcept;

}  // namespace zelqUtf8
