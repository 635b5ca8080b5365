#include "session/zelqByteSearch.h"

#include <algorithm>
#include <cstring>
#include <utility>

zelqByteSearch::zelqByteSearch(std::vector<Accepted> positions)
    : positions_(std::move(positions)),
      possible_(!positions_.empty() &&
                std::ranges::all_of(positions_, [](const Accepted& at) { return at.any(); })) {
    if (!possible_) {
        return;
    }
    std::size_t best = 0;
    for (std::size_t position = 1; position < size(); ++position) {
        best = weightOf(position) < weightOf(best) ? position : best;
    }
    std::size_t second = best == 0 ? size() - 1 : 0;
    for (std::size_t position = 0; position < size(); ++position) {
        second = position != best && weightOf(position) < weightOf(second) ? position : second;
    }
    best_ = anchorAt(best);
    second_ = anchorAt(second);
    hasAnchors_ = positions_[best].count() <= Anchor::kMostValues &&
                  positions_[second].count() <= Anchor::kMostValues;
}

zelqByteSearch zelqByteSearch::either(const zelqByteSearch& one, const zelqByteSearch& other) {
    if (!one.possible_ || !other.possible_) {
        return one.possible_ ? one : other;
    }
    std::vector<Accepted> positions = one.positions_;
    for (std::size_t position = 0; position < positions.size(); ++position) {
        positions[position] |= other.positions_[position];
    }
    return zelqByteSearch(std::move(positions));
}

/// The lower, the fewer bytes of a log a position is likely to accept.
std::size_t zelqByteSearch::weightOf(std::size_t position) const noexcept {
    // Blanks, NULs, digits and the commonest letters, in ASCII and in EBCDIC.
    static const Accepted common = [] {
        Accepted bytes;
        using namespace std::string_view_literals;
        for (const char byte :
             "\0 .,0123456789aeinorstAEINORST\x40\x81\x85\x89\x95\x96\x99\xA2\xA3\xC1\xC5\xC9\xD5"
             "\xD6\xD9\xE2\xE3\xF0\xF1\xF2\xF3\xF4\xF5\xF6\xF7\xF8\xF9"sv) {
            bytes.set(static_cast<unsigned char>(byte));
        }
        return bytes;
    }();
    constexpr std::size_t kCommonWeight = 8;
    const Accepted& accepted = positions_[position];
    return accepted.count() + kCommonWeight * (accepted & common).count();
}

zelqByteSearch::Anchor zelqByteSearch::anchorAt(std::size_t position) const noexcept {
    Anchor anchor;
    anchor.position = position;
    std::size_t count = 0;
    for (std::size_t byte = 0; byte < positions_[position].size(); ++byte) {
        if (count < Anchor::kMostValues && positions_[position].test(byte)) {
            // All those that follow, until there is another value.
            for (std::size_t value = count; value < Anchor::kMostValues; ++value) {
                anchor.values[value] = Block{} + static_cast<std::uint8_t>(byte);
            }
            ++count;
        }
    }
    return anchor;
}

inline zelqByteSearch::Block zelqByteSearch::Anchor::test(const char* first) const noexcept {
    Block bytes;
    std::memcpy(&bytes, first + position, sizeof(bytes));
    const auto accepted =
        (bytes == values[0]) | (bytes == values[1]) | (bytes == values[2]) | (bytes == values[3]);
    return reinterpret_cast<const Block&>(accepted);
}

bool zelqByteSearch::isAt(std::string_view text, std::size_t at) const noexcept {
    for (std::size_t position = 0; position < size(); ++position) {
        if (!positions_[position].test(static_cast<unsigned char>(text[at + position]))) {
            return false;
        }
    }
    return true;
}

/// The first place from one to before another.
std::size_t zelqByteSearch::findOneByOne(std::string_view text, std::size_t from,
                                         std::size_t end) const noexcept {
    const Accepted& best = positions_[best_.position];
    for (std::size_t at = from; at < end; ++at) {
        if (best.test(static_cast<unsigned char>(text[at + best_.position])) && isAt(text, at)) {
            return at;
        }
    }
    return kNone;
}

std::size_t zelqByteSearch::find(std::string_view text, std::size_t from) const noexcept {
    if (!possible_ || text.size() < size() || from > text.size() - size()) {
        return kNone;
    }
    const std::size_t end = text.size() - size() + 1;
    if (!hasAnchors_ || end - from < kBlockSize) {
        return findOneByOne(text, from, end);
    }
    // The last block begins where sixteen places are left, some of which were tested already.
    for (std::size_t next = from; next < end; next += kBlockSize) {
        const std::size_t at = std::min(next, end - kBlockSize);
        const Block both = best_.test(text.data() + at) & second_.test(text.data() + at);
        std::array<std::uint64_t, 2> halves{};
        std::memcpy(halves.data(), &both, sizeof(both));
        if ((halves[0] | halves[1]) != 0) {
            const std::size_t found = findOneByOne(text, at, at + kBlockSize);
            if (found != kNone) {
                return found;
            }
        }
    }
    return kNone;
}

bool zelqByteSearch::canBeMadeOf(std::string_view characters) const noexcept {
    Accepted known;
    for (const char character : characters) {
        known.set(static_cast<unsigned char>(character));
    }
    return possible_ && std::ranges::all_of(positions_, [&known](const Accepted& position) {
               return (position & known).any();
           });
}
