#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "log/zelqBCnrObject.h"

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

    /// Adds the record at the end unless it is in the list.
    void add(zelqBCnrObject& record);
    /// Adds the records of another list of the same kind; none of them may be in this one. Two
    /// sorted lists make a sorted one.
    void merge(zelqRecordList&& other);
    /// Sets memory aside for so many records in all.
    void reserve(std::size_t size) { records_.reserve(size); }

    /// Brings the list into the order of zelqBSorter; what is in order already is not sorted again.
    void sort();
    /// To be called when keys of the records have changed.
    void forgetOrder() noexcept { sorted_ = 0; }

    /// Takes all records out of the list.
    void removeAll();
    /// The same for records that are about to be freed: they are not touched.
    void dropAll() noexcept;
    /// Takes out the records of one log, which are about to be freed.
    void dropLog(int logIndex);

private:
    std::vector<zelqBCnrObject*> records_;
    std::size_t sorted_ = 0;  ///< so many records from the first on are in order
    zelqBCnrObject::Membership membership_;
};
