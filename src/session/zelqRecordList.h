#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "log/zelqBCnrObject.h"
#include "log/zelqMemory.h"

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
    void add(zelqBCnrObject& record);
    void addAll(std::span<zelqBCnrObject* const> records) {
        for (zelqBCnrObject* record : records) {
            add(*record);
        }
    }
    /// Adds the records of another list of the same kind; none of them may be in this one. Two
    /// sorted lists make a sorted one. If it throws (std::bad_alloc) both lists are unchanged.
    void merge(zelqRecordList&& other);
    /// Makes the list hold exactly these records, each given once, and sorts it. What was in order
    /// already is not sorted again. If it throws (std::bad_alloc) the list is unchanged.
    void assign(std::span<zelqBCnrObject* const> records);
    /// Moves the records for which `moves(row, record)` is true to the end of another list, in the
    /// order in which they stand.
    template <typename Moves>
    void moveIf(zelqRecordList& target, const Moves& moves) {
        keepIf([&target, &moves](std::size_t row, zelqBCnrObject& record) {
            const bool stays = !moves(row, record);
            if (!stays) {
                target.add(record);
            }
            return stays;
        });
    }
    /// Sets memory aside for this number of records in all.
    void reserve(std::size_t size) {
        if (size > records_.capacity()) {
            zelqHeap::require(size * sizeof(void*));
            records_.reserve(size);
        }
    }

    /// Brings the list into the order of zelqBSorter; what is in order already is not sorted again.
    /// Without free memory it takes longer.
    void sort() noexcept;
    [[nodiscard]] bool isSorted() const noexcept { return sorted_ == records_.size(); }
    /// To be called when keys of the records have changed.
    void forgetOrder() noexcept { sorted_ = 0; }

    /// Takes all records out of the list.
    void removeAll();
    /// The same for records that are about to be freed: they are not touched.
    void dropAll() noexcept;
    /// Takes out the records of one log, which are about to be freed.
    void dropLog(int logIndex);

private:
    /// Takes out the records for which `keeps(row, record)` is false.
    template <typename Keeps>
    void keepIf(const Keeps& keeps) {
        std::size_t kept = 0;
        std::size_t keptSorted = 0;
        for (std::size_t row = 0; row < records_.size(); ++row) {
            zelqBCnrObject* const record = records_[row];
            if (keeps(row, *record)) {
                records_[kept++] = record;
                keptSorted += row < sorted_ ? 1 : 0;
            } else {
                record->setIn(membership_, false);
            }
        }
        records_.resize(kept);
        sorted_ = keptSorted;
    }

    std::vector<zelqBCnrObject*> records_;
    std::size_t sorted_ = 0;  ///< the length of the sorted prefix
    zelqBCnrObject::Membership membership_;
};
