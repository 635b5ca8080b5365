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
        // Only few records have a value that is larger than all before: nothing is written for the
        // others.
        const bool larger = (record.pid() > pid) || (record.tid() > tid) ||
                            (record.majorError() > majorError) ||
                            (record.minorError() > minorError) ||
                            (record.detectPoint() > detectPoint) || (record.date() != lastDate_);
        if (larger) [[unlikely]] {
            noteNumbers(record);
        }
        const zelqText name = record.function();
        const char*& seen = seen_[reinterpret_cast<std::uintptr_t>(name.key()) / 8 % seen_.size()];
        if (seen != name.key()) [[unlikely]] {
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
    void noteNumbers(const zelqBCnrObject& record) noexcept;
    void noteDate(zelqDate other) noexcept;
    void noteName(const zelqText& name) noexcept;

    zelqDate lastDate_{};
    std::array<zelqText, kNames> names_{};
    std::array<std::size_t, kNames> widths_{};  ///< of these
    std::array<const char*, 1024> seen_{};      ///< keys of names that were noted of late
};
