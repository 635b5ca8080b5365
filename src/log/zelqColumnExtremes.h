#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

#include "log/zelqBCnrObject.h"

/// Of all records of a log, or of several, the values that decide how wide a column has to be. Kept
/// while records are decoded, in O(1) a record, so that nobody has to look at millions of rows
/// later.
class zelqColumnExtremes {
public:
    static constexpr std::size_t kNames = 8;

    void note(const zelqBCnrObject& record) noexcept {
        pid = std::max(pid, record.pid());
        tid = std::max(tid, record.tid());
        majorError = std::max(majorError, record.majorError());
        minorError = std::max(minorError, record.minorError());
        detectPoint = std::max(detectPoint, record.detectPoint());
        noteDate(record.date());
        const zelqText name = record.function();
        const char*& seen = seen_[reinterpret_cast<std::uintptr_t>(name.key()) / 4 % seen_.size()];
        if (name.size() != 0 && seen != name.key()) {
            seen = name.key();
            noteName(name);
        }
    }
    /// Adds what was noted of other records, whose texts must stay for as long as names() is used.
    void merge(const zelqColumnExtremes& other) noexcept;

    /// Function names among which is the widest, the presumably wider ones first; unused places at
    /// the end are empty. Which one is the widest depends on the font: they are ordered by what the
    /// widths of their characters are in most fonts.
    [[nodiscard]] const auto& names() const noexcept { return names_; }

    std::uint32_t pid = 0;
    std::uint32_t tid = 0;
    std::uint32_t majorError = 0;
    std::uint32_t minorError = 0;
    std::uint32_t detectPoint = 0;
    zelqDate date{};  ///< the largest year, the largest month and the largest day

private:
    void noteDate(zelqDate other) noexcept {
        date = {.year = std::max(date.year, other.year),
                .month = std::max(date.month, other.month),
                .day = std::max(date.day, other.day)};
    }
    void noteName(const zelqText& name) noexcept;

    std::array<zelqText, kNames> names_{};
    std::array<std::size_t, kNames> widths_{};  ///< of these
    std::array<const char*, 64> seen_{};        ///< keys of names that were noted of late
};
