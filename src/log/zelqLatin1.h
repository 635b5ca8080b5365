#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// The character set of names and data in logs.
namespace zelqLatin1 {

struct Text {
    std::string bytes;  ///< of the characters that Latin-1 has
    /// The number of the first character that it does not have, counted from 0.
    std::optional<std::size_t> unknown{};
};

/// What was typed in UTF-8. A byte that is no UTF-8 is taken for Latin-1.
[[nodiscard]] Text fromUtf8(std::string_view utf8);

[[nodiscard]] std::string toUtf8(std::string_view latin1);

}  // namespace zelqLatin1
