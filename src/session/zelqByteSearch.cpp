#include "session/zelqByteSearch.h"

#include <algorithm>
#include <limits>
#include <utility>

zelqByteSearch::zelqByteSearch(std::vector<Accepted> positions)
    : positions_(std::move(positions)),
      possible_(!positions_.empty() &&
                std::ranges::all_of(positions_, [](const Accepted& at) { return at.any(); })) {
    if (!possible_) {
        return;
    }
    constexpr std::size_t kFarthest = std::numeric_limits<std::uint16_t>::max();
    const std::size_t last = positions_.size() - 1;
    for (std::size_t byte = 0; byte < moveOn_.size(); ++byte) {
        std::size_t position = last;
        while (position > 0 && !positions_[position - 1].test(byte)) {
            --position;
        }
        moveOn_[byte] = static_cast<std::uint16_t>(std::min(last + 1 - position, kFarthest));
        move_[byte] = positions_[last].test(byte) ? std::uint16_t{0} : moveOn_[byte];
    }
}

std::size_t zelqByteSearch::find(std::string_view text, std::size_t from) const noexcept {
    const std::size_t last = positions_.size() - 1;
    if (!possible_ || from > text.size() || text.size() - from <= last) {
        return kNone;
    }
    const auto byteAt = [text](std::size_t at) { return static_cast<unsigned char>(text[at]); };
    std::size_t end = from + last;
    while (end < text.size()) {
        const std::size_t move = move_[byteAt(end)];
        if (move != 0) {
            end += move;
            continue;
        }
        const std::size_t start = end - last;
        std::size_t position = 0;
        while (position < last && positions_[position].test(byteAt(start + position))) {
            ++position;
        }
        if (position == last) {
            return start;
        }
        end += moveOn_[byteAt(end)];
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
