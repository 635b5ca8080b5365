#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include <tsl/robin_map.h>

#include "log/zelqKeyedHash.h"

/// How entries are spread over time, in memory that has a bound. Times are seconds from the start
/// of 1970, as zelqIsoTime counts them, in any order.
///
/// Entries are counted in cells of a second. When there are too many cells, these become longer,
/// and what can no longer be told exactly is said to be so.
class zelqTimeProfile {
public:
    struct Gap {
        std::int64_t after;    ///< the time of the last entry before it
        std::int64_t seconds;  ///< to the next entry; if it is not exact, there is no longer one
        bool exact;
    };
    struct Minute {
        std::int64_t start;
        std::uint64_t entries;
        bool exact;  ///< otherwise a minute with fewer entries than this may be a busier one
    };
    struct Bar {
        std::int64_t start;
        std::int64_t seconds;  ///< how long it is
        std::uint64_t entries;
        std::uint64_t errors;
    };

    void add(std::int64_t time, bool isError);
    void merge(const zelqTimeProfile& other);

    [[nodiscard]] bool empty() const noexcept { return cells_.empty(); }
    // Of a profile that is not empty.
    [[nodiscard]] std::int64_t first() const noexcept { return first_; }
    [[nodiscard]] std::int64_t last() const noexcept { return last_; }
    [[nodiscard]] Gap largestGap() const;
    [[nodiscard]] Minute busiestMinute() const;
    /// Bars of equal length from the first entry to the last one, at most `most` of them, at least
    /// 2. Bars without an entry are among them.
    [[nodiscard]] std::vector<Bar> bars(std::size_t most) const;

private:
    static constexpr std::size_t kMostCells = 60'000;

    struct Cell {
        std::int64_t first;
        std::int64_t last;
        std::uint64_t entries = 0;
        std::uint64_t errors = 0;
    };
    struct Hash {
        std::size_t operator()(std::int64_t number) const noexcept {
            const std::uint64_t product = static_cast<std::uint64_t>(number) * keyed.multiplier;
            return static_cast<std::size_t>(product ^ (product >> 32U));
        }

        zelqKeyedHash keyed{};
    };

    void addCell(const Cell& cell);
    void noteOrder(std::int64_t time);
    void lengthenCells();
    [[nodiscard]] std::vector<Cell> sortedCells() const;
    [[nodiscard]] std::int64_t cellLength() const noexcept;

    tsl::robin_map<std::int64_t, Cell, Hash> cells_;  ///< by the number of the cell
    std::size_t length_ = 0;                          ///< of the cells, as an index
    std::int64_t first_ = 0;
    std::int64_t last_ = 0;

    // As long as no entry is earlier than the one before it, these are exact for any number of
    // cells.
    bool inOrder_ = true;
    std::int64_t latest_ = 0;
    Gap gap_{.after = 0, .seconds = -1, .exact = true};
    Minute minute_{.start = 0, .entries = 0, .exact = true};  ///< the one of the latest entry
    Minute busiest_{.start = 0, .entries = 0, .exact = true};
};
