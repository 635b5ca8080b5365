#pragma once

#include <span>

#include "log/zelqBCnrObject.h"
#include "log/zelqParallel.h"

/// The order of the records: by date, time of day and fraction as the entries have them, then by
/// log slot, then by entry number, ascending.
class zelqBSorter {
public:
    /// -1 if `a` comes before `b`, 1 if it comes after, 0 if all keys are equal.
    [[nodiscard]] static int compare(const zelqBCnrObject& a, const zelqBCnrObject& b) noexcept;

    [[nodiscard]] bool operator()(const zelqBCnrObject* a, const zelqBCnrObject* b) const noexcept {
        return compare(*a, *b) < 0;
    }

    /// Brings the records into order, in time proportional to their number if few are out of place.
    /// If they are far from ordered that takes 24 bytes a record meanwhile, else an eighth of that;
    /// where the memory cannot be had they are sorted in place, which takes about four times as
    /// long. Throws zelqStopped if `parallel` is asked to stop; the records are then in some order.
    static void sort(std::span<zelqBCnrObject*> records,
                     const zelqParallel& parallel = zelqParallel());
};
