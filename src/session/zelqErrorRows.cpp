#include "session/zelqErrorRows.h"

#include <algorithm>
#include <bit>

namespace {

/// Words of bits between two looks at the stop token: 4096 records.
constexpr std::size_t kStopInterval = 64;

}  // namespace

zelqErrorRows::zelqErrorRows(Rows rows, const std::stop_token& stop)
    : words_((rows.size() + kBits - 1) / kBits) {
    for (std::size_t index = 0; index < words_.size(); ++index) {
        if (index % kStopInterval == 0 && stop.stop_requested()) {
            return;
        }
        const Rows part = rows.subspan(index * kBits, std::min(kBits, rows.size() - index * kBits));
        for (std::size_t bit = 0; bit < part.size(); ++bit) {
            words_[index] |= Word{isError(*part[bit])} << bit;
        }
    }
}

/// A word's bits without those of rows before `first` or from `end` on.
zelqErrorRows::Word zelqErrorRows::word(std::size_t index, std::size_t first,
                                        std::size_t end) const noexcept {
    Word bits = words_[index];
    if (index == first / kBits) {
        bits &= ~Word{0} << first % kBits;
    }
    if (index == end / kBits) {
        bits &= ~(~Word{0} << end % kBits);
    }
    return bits;
}

std::size_t zelqErrorRows::count(std::size_t first, std::size_t end) const noexcept {
    std::size_t count = 0;
    for (std::size_t index = first / kBits; index * kBits < end; ++index) {
        count += static_cast<std::size_t>(std::popcount(word(index, first, end)));
    }
    return count;
}

std::size_t zelqErrorRows::find(std::size_t first, std::size_t end) const noexcept {
    for (std::size_t index = first / kBits; index * kBits < end; ++index) {
        if (const Word bits = word(index, first, end); bits != 0) {
            return index * kBits + static_cast<std::size_t>(std::countr_zero(bits));
        }
    }
    return end;
}

double zelqErrorRows::sampledShare(Rows rows, std::size_t most) noexcept {
    const std::size_t samples = std::min(most, rows.size());
    std::size_t errors = 0;
    for (std::size_t sample = 0; sample < samples; ++sample) {
        errors += isError(*rows[sample * rows.size() / samples]) ? 1U : 0U;
    }
    return samples != 0 ? static_cast<double>(errors) / static_cast<double>(samples) : 0;
}
