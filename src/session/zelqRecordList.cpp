#include "session/zelqRecordList.h"

#include <algorithm>
#include <exception>
#include <new>
#include <thread>
#include <utility>

#include "log/zelqBSorter.h"

namespace {

using Records = std::vector<zelqBCnrObject*>;

/// Longer lists are merged by two threads.
constexpr std::size_t kMergeByTwoFrom = 100'000;

using Part = std::span<zelqBCnrObject* const>;

void mergeInto(Records::iterator target, Part first, Part second) {
    std::merge(first.begin(), first.end(), second.begin(), second.end(), target, zelqBSorter{});
}

/// `first` must not be empty.
void mergeByTwoThreads(Records::iterator target, Part first, Part second) {
    const std::size_t half = first.size() / 2;
    const auto match = std::lower_bound(second.begin(), second.end(), first[half], zelqBSorter{});
    const auto before = static_cast<std::size_t>(match - second.begin());
    const auto mergeUpperHalves = [=] {
        mergeInto(target + static_cast<std::ptrdiff_t>(half + before), first.subspan(half),
                  second.subspan(before));
    };
    std::jthread thread;
    try {
        thread = std::jthread(mergeUpperHalves);
    } catch (const std::exception&) {  // no memory or no thread for it
        mergeUpperHalves();
    }
    mergeInto(target, first.first(half), second.first(before));
}

Records mergeSorted(Part first, Part second) {
    Records merged(first.size() + second.size());
    if (first.empty() || merged.size() < kMergeByTwoFrom) {
        mergeInto(merged.begin(), first, second);
    } else {
        mergeByTwoThreads(merged.begin(), first, second);
    }
    return merged;
}

}  // namespace

std::size_t zelqRecordList::rowOf(const zelqBCnrObject& record) const noexcept {
    const auto sortedEnd = records_.begin() + static_cast<std::ptrdiff_t>(sorted_);
    auto found = std::lower_bound(records_.begin(), sortedEnd, &record, zelqBSorter{});
    if (found == sortedEnd || *found != &record) {
        found = std::find(records_.begin(), records_.end(), &record);
    }
    return static_cast<std::size_t>(found - records_.begin());
}

std::size_t zelqRecordList::firstNotBefore(zelqTimestamp time) const noexcept {
    const auto isBefore = [time](const zelqBCnrObject* record) {
        return record->timestamp() < time;
    };
    const auto found = isSorted() ? std::ranges::partition_point(records_, isBefore)
                                  : std::ranges::find_if_not(records_, isBefore);
    return static_cast<std::size_t>(found - records_.begin());
}

void zelqRecordList::add(zelqBCnrObject& record) {
    if (!contains(record)) {
        records_.push_back(&record);
        record.setIn(membership_, true);
    }
}

void zelqRecordList::merge(zelqRecordList&& other) {
    if (records_.empty()) {
        records_.swap(other.records_);
        std::swap(sorted_, other.sorted_);
    } else if (isSorted() && other.isSorted()) {
        records_ = mergeSorted(records_, other.records_);
        sorted_ = records_.size();
    } else {
        records_.insert(records_.end(), other.records_.begin(), other.records_.end());
    }
    other.dropAll();
}

void zelqRecordList::sort() noexcept {
    const std::span<zelqBCnrObject*> tail = std::span(records_).subspan(sorted_);
    zelqBSorter::sort(tail);
    if (sorted_ != 0 && !tail.empty()) {
        try {
            records_ = mergeSorted(std::span(records_).first(sorted_), tail);
        } catch (const std::bad_alloc&) {
            const auto middle = records_.begin() + static_cast<std::ptrdiff_t>(sorted_);
            std::inplace_merge(records_.begin(), middle, records_.end(), zelqBSorter{});
        }
    }
    sorted_ = records_.size();
}

void zelqRecordList::assign(std::span<zelqBCnrObject* const> records) {
    reserve(records.size());  // from here on nothing can fail
    for (zelqBCnrObject* record : records) {
        record->setIn(zelqBCnrObject::Marked, true);
    }
    keepIf([](std::size_t /*row*/, zelqBCnrObject& record) {
        const bool stays = record.isIn(zelqBCnrObject::Marked);
        record.setIn(zelqBCnrObject::Marked, false);
        return stays;
    });
    if (size() != records.size()) {  // those that are still marked are new
        for (zelqBCnrObject* record : records) {
            record->setIn(zelqBCnrObject::Marked, false);
            add(*record);
        }
    }
    sort();
}

void zelqRecordList::removeAll() {
    for (zelqBCnrObject* record : records_) {
        record->setIn(membership_, false);
    }
    dropAll();
}

void zelqRecordList::dropAll() noexcept {
    Records().swap(records_);
    sorted_ = 0;
}

void zelqRecordList::dropLog(int logIndex) {
    const bool wasSorted = isSorted();
    std::erase_if(records_, [logIndex](const zelqBCnrObject* record) {
        return record->logIndex() == logIndex;
    });
    sorted_ = wasSorted ? records_.size() : 0;
    records_.shrink_to_fit();
}
