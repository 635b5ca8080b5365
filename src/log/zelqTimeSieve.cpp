#include "log/zelqTimeSieve.h"

#include "log/zelqTimestamp.h"

namespace {

/// The number of entries in a row that are taken for strays before they are believed.
constexpr unsigned kPatience = 64;
/// From the last of a February to the first of March as dayOf() counts.
constexpr std::uint32_t kDaysAhead = 4;

/// A number of days that is too large by some days at the end of a month.
std::uint32_t dayOf(std::uint64_t key) noexcept {
    const zelqDate date = zelqDate::unpacked(static_cast<std::uint32_t>(key >> 32));
    return date.year * 372U + date.month * 31U + date.day;
}

}  // namespace

bool zelqTimeSieve::isInOrder(std::uint64_t key) noexcept {
    digest_ = (digest_ ^ key) * 0x9E3779B97F4A7C15ULL;
    digest_ ^= digest_ >> 32;
    if (key < latest_) {
        return false;
    }
    const bool isAhead = dayOf(key) > dayOf(latest_) + kDaysAhead;
    if (isAhead && ++aheadInRow_ <= kPatience) {
        return false;
    }
    aheadInRow_ = 0;
    latest_ = key;
    return true;
}
