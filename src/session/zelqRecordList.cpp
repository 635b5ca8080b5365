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

zelqRecordList zelqRecordList::copy(std::size_t room) const {
    zelqRecordList list(membership_);
    list.reserve(std::max(room, size()));
    list.records_.assign(records_.begin(), records_.end());
    list.sorted_ = sorted_;
    return list;
}

void zelqRecordList::addMissing(zelqParallel::Span records, const zelqParallel& parallel) {
    append(parallel.select(records,
                           [this](std::size_t /*row*/, const zelqBCnrObject& record) {
                               return !contains(record);
                           }),
           parallel);
}

void zelqRecordList::addMissing(const zelqLogCollection& logs, const zelqParallel& parallel) {
    append(
        parallel.select(logs, [this](const zelqBCnrObject& record) { return !contains(record); }),
        parallel);
}

void zelqRecordList::append(const Records& records, const zelqParallel& parallel) {
    setMembership(records, true, parallel);
    if (records_.size() + records.size() > records_.capacity()) {
        zelqHeap::require(records.size() * sizeof(void*));
    }
    records_.insert(records_.end(), records.begin(), records.end());
}

zelqRecordList zelqRecordList::merged(const zelqRecordList& other) const {
    if (isSorted() && other.isSorted() && !empty()) {
        zelqRecordList list(membership_);
        zelqHeap::require((size() + other.size()) * sizeof(void*));
        list.records_ = mergeSorted(records_, other.records_);
        list.sorted_ = list.records_.size();
        return list;
    }
    zelqRecordList list = copy(size() + other.size());
    list.records_.insert(list.records_.end(), other.records_.begin(), other.records_.end());
    list.sorted_ = empty() ? other.sorted_ : sorted_;
    return list;
}

void zelqRecordList::sort(const zelqParallel& parallel) {
    const std::span<zelqBCnrObject*> tail = std::span(records_).subspan(sorted_);
    zelqBSorter::sort(tail, parallel);
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

void zelqRecordList::sortToEnd() noexcept {
    try {
        sort(zelqParallel());
    } catch (const zelqStopped&) {  // which nobody asks for
        std::terminate();
    }
}

zelqRecordList zelqRecordList::assigned(zelqParallel::Span records,
                                        const zelqParallel& parallel) const {
    const auto isMarked = [](std::size_t /*row*/, const zelqBCnrObject& record) {
        return record.isIn(zelqBCnrObject::Marked);
    };
    parallel.forEach(records,
                     [](zelqBCnrObject& record) { record.setIn(zelqBCnrObject::Marked, true); });
    zelqRecordList list = kept(isMarked, parallel);
    // Afterwards those that are still marked are new.
    parallel.forEach(this->records(), [this](zelqBCnrObject& record) {
        if (!record.isIn(zelqBCnrObject::Marked)) {
            record.setIn(membership_, false);
        }
        record.setIn(zelqBCnrObject::Marked, false);
    });
    if (list.size() != records.size()) {
        const Records added = parallel.select(records, isMarked);
        parallel.forEach(
            added, [](zelqBCnrObject& record) { record.setIn(zelqBCnrObject::Marked, false); });
        list.append(added, parallel);
    }
    list.sort(parallel);
    return list;
}

zelqRecordList zelqRecordList::without(int logIndex, const zelqParallel& parallel) const {
    const bool wasSorted = isSorted();
    zelqRecordList list =
        kept([logIndex](std::size_t /*row*/,
                        const zelqBCnrObject& record) { return record.logIndex() != logIndex; },
             parallel);
    list.sorted_ = wasSorted ? list.size() : 0;
    return list;
}

void zelqRecordList::restoreMembership(const zelqLogCollection& logs) const noexcept {
    zelqParallel::forEachToEnd(logs, [this](zelqBCnrObject& record) {
        record.setIn(membership_, false);
        record.setIn(zelqBCnrObject::Marked, false);
    });
    zelqParallel::forEachToEnd(records_,
                               [this](zelqBCnrObject& record) { record.setIn(membership_, true); });
}
