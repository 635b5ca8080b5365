#pragma once

#include <array>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

/// Finds a sequence of bytes of which each position accepts one or several values, such as both
/// cases of a letter. Most bytes of a text are not looked at. Can be used from any thread.
class zelqByteSearch {
public:
    /// The values that a position accepts.
    using Accepted = std::bitset<256>;
    static constexpr std::size_t kNone = std::string_view::npos;

    /// Finds nothing.
    zelqByteSearch() = default;
    explicit zelqByteSearch(std::vector<Accepted> positions);

    [[nodiscard]] std::size_t size() const noexcept { return positions_.size(); }
    /// False if nothing can ever be found.
    [[nodiscard]] bool isPossible() const noexcept { return possible_; }
    /// False if it cannot be in any text made of these characters.
    [[nodiscard]] bool canBeMadeOf(std::string_view characters) const noexcept;
    /// Where the first place at or after `from` begins, or kNone. Takes at most as many steps as
    /// the text has bytes, times the size of the sequence.
    [[nodiscard]] std::size_t find(std::string_view text, std::size_t from = 0) const noexcept;

private:
    std::vector<Accepted> positions_;
    /// How far the sequence can be moved on when a byte stands at its end; 0 if the byte may.
    std::array<std::uint16_t, 256> move_{};
    /// The same, 1 at least, once the sequence is known not to be there.
    std::array<std::uint16_t, 256> moveOn_{};
    bool possible_ = false;
};
