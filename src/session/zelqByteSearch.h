#pragma once

#include <array>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

/// Finds a sequence of bytes of which each position accepts one or several values, such as both
/// cases of a letter. Can be used from any thread.
///
/// Sixteen places at a time are tested at two positions, those that fewest bytes get through; only
/// where both do are the others looked at.
class zelqByteSearch {
public:
    /// The values that a position accepts.
    using Accepted = std::bitset<256>;
    static constexpr std::size_t kNone = std::string_view::npos;

    /// Finds nothing.
    zelqByteSearch() = default;
    explicit zelqByteSearch(std::vector<Accepted> positions);
    /// One that finds each place that one of these finds, and some more. They have one size.
    [[nodiscard]] static zelqByteSearch either(const zelqByteSearch& one,
                                               const zelqByteSearch& other);

    [[nodiscard]] std::size_t size() const noexcept { return positions_.size(); }
    /// False if nothing can ever be found.
    [[nodiscard]] bool isPossible() const noexcept { return possible_; }
    /// False if it cannot be in any text made of these characters.
    [[nodiscard]] bool canBeMadeOf(std::string_view characters) const noexcept;
    /// Where the first place at or after `from` begins, or kNone. Takes at most as many steps as
    /// the text has bytes, times the size of the sequence.
    [[nodiscard]] std::size_t find(std::string_view text, std::size_t from = 0) const noexcept;
    /// Whether it stands at a place of a text that reaches far enough.
    [[nodiscard]] bool isAt(std::string_view text, std::size_t at) const noexcept;

private:
    static constexpr std::size_t kBlockSize = 16;
    /// What compilers for every processor make of it is at worst sixteen single bytes.
    using Block = std::uint8_t __attribute__((vector_size(kBlockSize)));

    /// A position that is tested first.
    struct Anchor {
        static constexpr std::size_t kMostValues = 4;

        [[nodiscard]] Block test(const char* first) const noexcept;

        std::size_t position = 0;
        std::array<Block, kMostValues> values{};  ///< sixteen times each; some may be equal
    };

    [[nodiscard]] std::size_t weightOf(std::size_t position) const noexcept;
    [[nodiscard]] Anchor anchorAt(std::size_t position) const noexcept;
    [[nodiscard]] std::size_t findOneByOne(std::string_view text, std::size_t from,
                                           std::size_t end) const noexcept;

    std::vector<Accepted> positions_;
    bool possible_ = false;
    bool hasAnchors_ = false;  ///< the two best positions accept few values
    Anchor best_;
    Anchor second_;
};
