#include "log/zelqBSorter.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>
#include <vector>

#include <boost/sort/pdqsort/pdqsort.hpp>

namespace {

/// Sorting numbers that stand together is several times as fast as sorting records, each of which
/// has to be fetched from memory.
struct Item {
    std::uint64_t key;
    zelqBCnrObject* record;
};

/// Orders items of the same time, which stand together, by the remaining keys.
void sortEqualTimes(std::span<Item> items) {
    const auto sameTime = [](const Item& a, const Item& b) { return a.key == b.key; };
    auto begin = std::adjacent_find(items.begin(), items.end(), sameTime);
    while (begin != items.end()) {
        const auto end = std::find_if(begin + 2, items.end(), [key = begin->key](const Item& item) {
            return item.key != key;
        });
        boost::sort::pdqsort(begin, end, [](const Item& a, const Item& b) {
            return zelqBSorter::compare(*a.record, *b.record) < 0;
        });
        begin = std::adjacent_find(end, items.end(), sameTime);
    }
}

/// So many items are sorted in a third of a second, which is how long stopping can take.
constexpr std::size_t kSoonSorted = std::size_t{4} << 20;

/// Sorts items by their keys alone: ranges of them on `threads` threads, which are then merged.
void sortItems(std::span<Item> items, const zelqParallel& parallel, std::size_t threads) {
    parallel.lookAtStop();
    const auto earlier = [](const Item& a, const Item& b) { return a.key < b.key; };
    if (threads < 2 && items.size() <= kSoonSorted) {
        boost::sort::pdqsort_branchless(items.begin(), items.end(), earlier);
        return;
    }
    const std::size_t middle = items.size() / 2;
    const auto sortFirst = [&] { sortItems(items.first(middle), parallel, threads / 2); };
    const auto sortLast = [&] { sortItems(items.subspan(middle), parallel, threads / 2); };
    if (threads < 2) {
        sortFirst();
        sortLast();
    } else {
        zelqParallel::both(sortFirst, sortLast);
    }
    std::inplace_merge(items.begin(), items.begin() + static_cast<std::ptrdiff_t>(middle),
                       items.end(), earlier);
}

/// Sorts records that are far from ordered. Throws std::bad_alloc, or zelqStopped, before it
/// changes anything.
void sortByKeys(std::span<zelqBCnrObject*> records, const zelqParallel& parallel) {
    // NOLINTNEXTLINE(modernize-avoid-c-arrays): a vector would be cleared first
    const auto memory = std::make_unique_for_overwrite<Item[]>(records.size());
    const std::span<Item> items(memory.get(), records.size());
    std::transform(records.begin(), records.end(), items.begin(), [](zelqBCnrObject* record) {
        return Item{record->timestamp().key(), record};
    });
    sortItems(items, parallel, zelqParallel::partsOf(items.size()));
    sortEqualTimes(items);
    std::transform(items.begin(), items.end(), records.begin(),
                   [](const Item& item) { return item.record; });
}

/// Logs are nearly in order: threads overtake each other by seconds. The records that are out of
/// place, the strays, are sorted apart from the rest and merged into it if there are at most this
/// many of them.
std::size_t mostStrays(std::size_t records) {
    return records / 8;
}

/// When this many records in a row seem too early, the ones kept before them are too late.
constexpr std::size_t kPatience = 8;

/// Moves the records that are in order as they stand to the front and returns the others. The
/// places at the end that are left over, one for each record returned, still hold old pointers.
/// Gives up when there are more than mostStrays(): the front is then not in order. Throws
/// std::bad_alloc before it changes anything.
std::vector<zelqBCnrObject*> takeOutStrays(std::span<zelqBCnrObject*> records) {
    const zelqBSorter before;
    const std::size_t most = mostStrays(records.size());
    std::vector<zelqBCnrObject*> strays;
    strays.reserve(most + 1);
    std::size_t kept = 0;
    std::size_t straysInRow = 0;
    std::size_t next = 0;
    while (next < records.size() && strays.size() <= most) {
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
        // Goes back to the first of them and takes out the later records before it.
        strays.resize(strays.size() - kPatience);
        next -= kPatience;
        straysInRow = 0;
        const auto first = records.begin() + static_cast<std::ptrdiff_t>(next);
        const zelqBCnrObject* const latest = *std::max_element(first, first + kPatience, before);
        while (kept != 0 && strays.size() <= most && before(latest, records[kept - 1])) {
            strays.push_back(records[--kept]);
        }
    }
    std::copy(records.begin() + static_cast<std::ptrdiff_t>(next), records.end(),
              records.begin() + static_cast<std::ptrdiff_t>(kept));
    return strays;
}

void sortWithMemory(std::span<zelqBCnrObject*> records, const zelqParallel& parallel) {
    std::vector<zelqBCnrObject*> strays = takeOutStrays(records);
    if (strays.empty()) {
        return;
    }
    const bool isNearlySorted = strays.size() <= mostStrays(records.size());
    if (isNearlySorted) {
        zelqBSorter::sort(strays, parallel);
    }
    const auto tail = records.end() - static_cast<std::ptrdiff_t>(strays.size());
    std::copy(strays.begin(), strays.end(), tail);
    if (isNearlySorted) {
        std::inplace_merge(records.begin(), tail, records.end(), zelqBSorter{});
    } else {
        sortByKeys(records, parallel);
    }
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

void zelqBSorter::sort(std::span<zelqBCnrObject*> records, const zelqParallel& parallel) {
    try {
        sortWithMemory(records, parallel);
    } catch (const std::bad_alloc&) {
        boost::sort::pdqsort(records.begin(), records.end(), zelqBSorter{});
    }
}
