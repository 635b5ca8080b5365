#include "session/zelqRecordList.h"

#include <algorithm>
#include <future>
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

Records mergeSorted(Part first, Part second) {
    Records merged(first.size() + second.size());
    if (first.empty() || merged.size() < kMergeByTwoFrom) {
        mergeInto(merged.begin(), first, second);
        return merged;
    }
    const std::size_t half = first.size() / 2;
    const auto match = std::lower_bound(second.begin(), second.end(), first[half], zelqBSorter{});
    const auto before = static_cast<std::size_t>(match - second.begin());
    const auto target = merged.begin() + static_cast<std::ptrdiff_t>(half + before);
    const std::future<void> later =
        std::async([=] { mergeInto(target, first.subspan(half), second.subspan(before)); });
    mergeInto(merged.begin(), first.first(half), second.first(before));
    later.wait();
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

void zelqRecordList::sort() {
    const std::span<zelqBCnrObject*> tail = std::span(records_).subspan(sorted_);
    zelqBSorter::sort(tail);
    if (sorted_ != 0 && !tail.empty()) {
        records_ = mergeSorted(std::span(records_).first(sorted_), tail);
    }
    sorted_ = records_.size();
}

void zelqRecordList::assign(std::span<zelqBCnrObject* const> records) {
    for (zelqBCnrObject* record : records) {
        record->setIn(zelqBCnrObject::Marked, true);
    }
    keepIf([](std::size_t /*row*/, zelqBCnrObject& record) {
        const bool stays = record.isIn(zelqBCnrObject::Marked);
        record.setIn(zelqBCnrObject::Marked, false);
        return stays;
    });
    if (size() != records.size()) {  // those that are still marked are new
        reserve(records.size());
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
