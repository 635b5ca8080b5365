#pragma once

#include <cstddef>
#include <span>
#include <utility>
#include <vector>

#include "log/zelqBCnrObject.h"
#include "log/zelqMemory.h"
#include "log/zelqParallel.h"
#include "session/zelqLogCollection.h"

/// An ordered list of records that holds each of them once: the rows of the main window, or the
/// records that are parked out of sight.
class zelqRecordList {
public:
    /// `membership`: the bit by which a record knows that it is in this list.
    explicit zelqRecordList(zelqBCnrObject::Membership membership) : membership_(membership) {}

    [[nodiscard]] std::span<zelqBCnrObject* const> records() const noexcept { return records_; }
    [[nodiscard]] std::size_t size() const noexcept { return records_.size(); }
    [[nodiscard]] bool empty() const noexcept { return records_.empty(); }
    [[nodiscard]] bool contains(const zelqBCnrObject& record) const noexcept {
        return record.isIn(membership_);
    }
    /// The row of a record that is in the list. O(log n) while the list is in order, else O(n).
    [[nodiscard]] std::size_t rowOf(const zelqBCnrObject& record) const noexcept;

    /// The first row whose record is not before a time; size() if there is none. O(log n) while the
    /// list is in order, else O(n).
    [[nodiscard]] std::size_t firstNotBefore(zelqTimestamp time) const noexcept;

    /// Adds the record at the end unless it is in the list.
    void add(zelqBCnrObject& record) {
        if (!contains(record)) {
            records_.push_back(&record);
            record.setIn(membership_, true);
        }
    }

    // Lists that take the place of another one are made of it as it stands. Records know of them at
    // once; where it comes to nothing, they are told by restoreMembership(). All of this throws
    // std::bad_alloc.

    /// The same records, and room for as many in all.
    [[nodiscard]] zelqRecordList copy(std::size_t room) const;
    /// Adds those that are not in the list at its end. There must be room for them.
    void addMissing(zelqParallel::Span records, const zelqParallel& parallel);
    void addMissing(const zelqLogCollection& logs, const zelqParallel& parallel);
    /// The records for which `keeps(row, record)` is true. What the others know stays.
    template <typename Keeps>
    [[nodiscard]] zelqRecordList kept(const Keeps& keeps, const zelqParallel& parallel) const {
        const zelqParallel::Span inOrder = records().first(sorted_);
        zelqRecordList list(membership_);
        list.records_ = parallel.select(inOrder, keeps);
        list.sorted_ = list.records_.size();
        if (sorted_ != size()) {
            const auto keepsBehind = [&keeps, first = sorted_](std::size_t row,
                                                               zelqBCnrObject& record) {
                return keeps(first + row, record);
            };
            const auto behind = parallel.select(records().subspan(sorted_), keepsBehind);
            list.records_.insert(list.records_.end(), behind.begin(), behind.end());
        }
        return list;
    }
    /// Exactly these records, each given once, in order. What was in order already is not sorted
    /// again.
    [[nodiscard]] zelqRecordList assigned(zelqParallel::Span records,
                                          const zelqParallel& parallel) const;
    /// These records and those of another list of the same kind, none of which may be in this one.
    /// Two sorted lists make a sorted one.
    [[nodiscard]] zelqRecordList merged(const zelqRecordList& other) const;
    /// The records without those of one log.
    [[nodiscard]] zelqRecordList without(int logIndex, const zelqParallel& parallel) const;
    /// Of all loaded records, those of this list know that they are in it, the others that they are
    /// not.
    void restoreMembership(const zelqLogCollection& logs) const noexcept;
    /// These records know that they are in such a list, or that they are not.
    void setMembership(zelqParallel::Span records, bool in, const zelqParallel& parallel) const {
        parallel.forEach(records,
                         [this, in](zelqBCnrObject& record) { record.setIn(membership_, in); });
    }

    /// Sets memory aside for this number of records in all.
    void reserve(std::size_t size) {
        if (size > records_.capacity()) {
            zelqHeap::require(size * sizeof(void*));
            records_.reserve(size);
        }
    }

    /// Brings the list into the order of zelqBSorter; what is in order already is not sorted again.
    /// Without free memory it takes longer. Throws zelqStopped; the records are then in some order.
    void sort(const zelqParallel& parallel);
    /// The same where nothing can be taken back any more, so that it is not stopped.
    void sortToEnd() noexcept;
    [[nodiscard]] bool isSorted() const noexcept { return sorted_ == records_.size(); }
    /// To be called when keys of the records have changed.
    void forgetOrder() noexcept { sorted_ = 0; }

    void swap(zelqRecordList& other) noexcept {
        records_.swap(other.records_);
        std::swap(sorted_, other.sorted_);
    }

private:
    void append(const std::vector<zelqBCnrObject*>& records, const zelqParallel& parallel);

    std::vector<zelqBCnrObject*> records_;
    std::size_t sorted_ = 0;  ///< the length of the sorted prefix
    zelqBCnrObject::Membership membership_;
};
