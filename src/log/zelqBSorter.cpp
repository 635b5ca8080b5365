#include "log/zelqBSorter.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <numeric>
#include <utility>
#include <vector>

namespace {

/// Below this many records a comparison sort is faster.
constexpr std::size_t kRadixSortFrom = 1024;

constexpr std::size_t kDigits = sizeof(std::uint64_t);

struct Item {
    std::uint64_t key;
    zelqBCnrObject* record;
};

std::size_t digitOf(std::uint64_t key, std::size_t digit) {
    return static_cast<std::size_t>(key >> (8 * digit)) & 0xFF;
}

/// How often each value of a digit occurs among the keys.
using Histogram = std::array<std::size_t, 256>;

/// The bits in which some of the keys differ.
std::uint64_t differingBits(std::span<const Item> items) {
    std::uint64_t bits = 0;
    for (const Item& item : items) {
        bits |= item.key ^ items.front().key;
    }
    return bits;
}

Histogram countDigit(std::span<const Item> items, std::size_t digit) {
    Histogram histogram{};
    for (const Item& item : items) {
        ++histogram[digitOf(item.key, digit)];
    }
    return histogram;
}

/// Moves the items to `target`, ordered by one digit of their keys and otherwise as they were.
void distribute(std::span<const Item> items, std::span<Item> target, std::size_t digit) {
    Histogram next = countDigit(items, digit);
    std::exclusive_scan(next.begin(), next.end(), next.begin(), std::size_t{0});
    for (const Item& item : items) {
        target[next[digitOf(item.key, digit)]++] = item;
    }
}

/// Orders by time alone. A log covers hours or days, so most digits are the same in all its entries
/// and cost nothing.
void radixSort(std::span<zelqBCnrObject*> records) {
    const auto memory = std::make_unique_for_overwrite<Item[]>(2 * records.size());
    std::span<Item> items(memory.get(), records.size());
    std::span<Item> spare(memory.get() + records.size(), records.size());
    std::transform(records.begin(), records.end(), items.begin(), [](zelqBCnrObject* record) {
        return Item{record->timestamp().key(), record};
    });
    const std::uint64_t differing = differingBits(items);
    for (std::size_t digit = 0; digit < kDigits; ++digit) {
        if (digitOf(differing, digit) != 0) {
            distribute(items, spare, digit);
            std::swap(items, spare);
        }
    }
    std::transform(items.begin(), items.end(), records.begin(),
                   [](const Item& item) { return item.record; });
}

/// Orders records of the same time, which stand together, by the remaining keys.
void sortEqualTimes(std::span<zelqBCnrObject*> records) {
    auto begin = records.begin();
    while (begin != records.end()) {
        const zelqTimestamp time = (*begin)->timestamp();
        const auto end = std::find_if(begin, records.end(), [time](const zelqBCnrObject* record) {
            return record->timestamp() != time;
        });
        if (!std::is_sorted(begin, end, zelqBSorter{})) {
            std::sort(begin, end, zelqBSorter{});
        }
        begin = end;
    }
}

/// Logs are nearly in order: threads overtake each other by seconds. So many strays, at most, are
/// sorted apart from the rest and merged into it.
std::size_t mostStrays(std::size_t records) {
    return records / 8;
}

/// So many records in a row that seem too early mean that the ones kept before them are too late.
constexpr std::size_t kPatience = 8;

/// Moves the records together that are in order as they stand, at the front, and returns the
/// others. Gives up when there are more than mostStrays(); then it has moved records, but lost
/// none: as many as are returned are missing at the end.
std::vector<zelqBCnrObject*> takeOutStrays(std::span<zelqBCnrObject*> records) {
    const zelqBSorter before;
    std::vector<zelqBCnrObject*> strays;
    std::size_t kept = 0;
    std::size_t straysInRow = 0;
    std::size_t next = 0;
    while (next < records.size() && strays.size() <= mostStrays(records.size())) {
        zelqBCnrObject* const record = records[next++];
        if (kept == 0 || !before(record, records[kept - 1])) {
            records[kept++] = record;
            straysInRow = 0;
            continue;
        }
        strays.push_back(record);
        if (++straysInRow < kPatience) {
            continue;
        }
        // Back to the first of them, without the records that stood in their way.
        strays.resize(strays.size() - kPatience);
        next -= kPatience;
        straysInRow = 0;
        const auto first = records.begin() + static_cast<std::ptrdiff_t>(next);
        const zelqBCnrObject* const latest = *std::max_element(first, first + kPatience, before);
        while (kept != 0 && before(latest, records[kept - 1])) {
            strays.push_back(records[--kept]);
        }
    }
    std::copy(records.begin() + static_cast<std::ptrdiff_t>(next), records.end(),
              records.begin() + static_cast<std::ptrdiff_t>(kept));
    return strays;
}

}  // namespace

int zelqBSorter::compare(const zelqBCnrObject& a, const zelqBCnrObject& b) noexcept {
    if (a.timestamp() != b.timestamp()) {
        return a.timestamp() < b.timestamp() ? -1 : 1;
    }
    if (a.logIndex() != b.logIndex()) {
        return a.logIndex() < b.logIndex() ? -1 : 1;
    }
    if (a.entryIndex() != b.entryIndex()) {
        return a.entryIndex() < b.entryIndex() ? -1 : 1;
    }
    return 0;
}

void zelqBSorter::sort(std::span<zelqBCnrObject*> records) {
    std::vector<zelqBCnrObject*> strays = takeOutStrays(records);
    if (strays.empty()) {
        return;
    }
    const auto tail = records.end() - static_cast<std::ptrdiff_t>(strays.size());
    if (strays.size() <= mostStrays(records.size())) {
        sort(strays);
        std::copy(strays.begin(), strays.end(), tail);
        std::inplace_merge(records.begin(), tail, records.end(), zelqBSorter{});
        return;
    }
    std::copy(strays.begin(), strays.end(), tail);
    if (records.size() < kRadixSortFrom) {
        std::sort(records.begin(), records.end(), zelqBSorter{});
    } else {
        radixSort(records);
        sortEqualTimes(records);
    }
}
