#include "output/zelqTimeProfile.h"

#include <algorithm>
#include <array>

namespace {

constexpr std::int64_t kMinute = 60;
constexpr std::int64_t kHour = 3600;
constexpr std::int64_t kDay = 86400;

/// Each is a multiple of the one before. Of the longest, all days that have a date are fewer than
/// there may be cells.
constexpr std::array<std::int64_t, 10> kCellLengths{1,   5,     15,        kMinute, 5 * kMinute,
                                                    900, kHour, 6 * kHour, kDay,    64 * kDay};

/// What people divide time into; beyond the last, its multiples by powers of two.
constexpr std::array<std::int64_t, 20> kBarLengths{
    1,        2,           5,           10,           15,           30,
    kMinute,  2 * kMinute, 5 * kMinute, 10 * kMinute, 15 * kMinute, 30 * kMinute,
    kHour,    2 * kHour,   3 * kHour,   6 * kHour,    12 * kHour,   kDay,
    2 * kDay, 7 * kDay};

/// The start of the year 1. What begins before it has no date that can be written.
constexpr std::int64_t kFirstSecond = -719'162 * kDay;

std::int64_t floorDivided(std::int64_t value, std::int64_t by) {
    return value >= 0 ? value / by : -((by - 1 - value) / by);
}

std::int64_t floored(std::int64_t value, std::int64_t by) {
    return floorDivided(value, by) * by;
}

}  // namespace

std::int64_t zelqTimeProfile::cellLength() const noexcept {
    return kCellLengths[length_];
}

void zelqTimeProfile::add(std::int64_t time, bool isError) {
    noteOrder(time);
    addCell({.first = time, .last = time, .entries = 1, .errors = isError ? 1U : 0U});
}

void zelqTimeProfile::merge(const zelqTimeProfile& other) {
    if (other.empty()) {
        return;
    }
    if (empty()) {
        *this = other;
        return;
    }
    inOrder_ = false;
    while (length_ < other.length_) {
        lengthenCells();
    }
    for (const auto& cell : other.cells_) {
        addCell(cell.second);
    }
}

void zelqTimeProfile::addCell(const Cell& added) {
    first_ = cells_.empty() ? added.first : std::min(first_, added.first);
    last_ = cells_.empty() ? added.last : std::max(last_, added.last);
    const auto place = cells_.try_emplace(floorDivided(added.first, cellLength()), added);
    if (!place.second) {
        Cell& cell = place.first.value();
        cell.first = std::min(cell.first, added.first);
        cell.last = std::max(cell.last, added.last);
        cell.entries += added.entries;
        cell.errors += added.errors;
    } else if (cells_.size() > kMostCells) {
        lengthenCells();
    }
}

void zelqTimeProfile::lengthenCells() {
    const std::vector<Cell> cells = sortedCells();
    cells_.clear();
    ++length_;
    for (const Cell& cell : cells) {
        addCell(cell);
    }
}

void zelqTimeProfile::noteOrder(std::int64_t time) {
    if (!inOrder_) {
        return;
    }
    if (!empty()) {
        inOrder_ = time >= latest_;
        if (time - latest_ > gap_.seconds) {
            gap_ = {.after = latest_, .seconds = time - latest_, .exact = true};
        }
    }
    latest_ = time;
    if (const std::int64_t start = floored(time, kMinute);
        start != minute_.start || minute_.entries == 0) {
        minute_ = {.start = start, .entries = 0, .exact = true};
    }
    if (++minute_.entries > busiest_.entries) {
        busiest_ = minute_;
    }
}

std::vector<zelqTimeProfile::Cell> zelqTimeProfile::sortedCells() const {
    std::vector<Cell> cells;
    cells.reserve(cells_.size());
    for (const auto& cell : cells_) {
        cells.push_back(cell.second);
    }
    std::ranges::sort(cells, {}, &Cell::first);
    return cells;
}

zelqTimeProfile::Gap zelqTimeProfile::largestGap() const {
    if (inOrder_) {
        return gap_.seconds < 0 ? Gap{.after = last_, .seconds = 0, .exact = true} : gap_;
    }
    Gap gap{.after = first_, .seconds = 0, .exact = true};
    const std::vector<Cell> cells = sortedCells();
    for (std::size_t i = 1; i < cells.size(); ++i) {
        const std::int64_t seconds = cells[i].first - cells[i - 1].last;
        if (seconds > gap.seconds) {
            gap = {.after = cells[i - 1].last, .seconds = seconds, .exact = true};
        }
    }
    // One that lies within a cell is not known.
    const std::int64_t unknown = cellLength() - 1;
    if (gap.seconds < unknown) {
        gap.seconds = unknown;
        gap.exact = false;
    }
    return gap;
}

zelqTimeProfile::Minute zelqTimeProfile::busiestMinute() const {
    if (inOrder_) {
        return busiest_;
    }
    const std::int64_t length = std::max(kMinute, cellLength());
    Minute current{.start = 0, .entries = 0, .exact = length == kMinute};
    Minute busiest = current;
    for (const Cell& cell : sortedCells()) {
        const std::int64_t start = std::max(floored(cell.first, length), kFirstSecond);
        if (start != current.start) {
            current.start = start;
            current.entries = 0;
        }
        current.entries += cell.entries;
        if (current.entries > busiest.entries) {
            busiest = current;
        }
    }
    return busiest;
}

std::vector<zelqTimeProfile::Bar> zelqTimeProfile::bars(std::size_t most) const {
    const auto start = [this](std::int64_t length) {
        return std::max(floored(first_, length), kFirstSecond);
    };
    const auto number = [&](std::int64_t length) {
        return static_cast<std::size_t>((last_ - start(length)) / length) + 1;
    };
    const auto fits = [&](std::int64_t length) { return number(length) <= most; };
    const auto* const found = std::ranges::find_if(kBarLengths, fits);
    std::int64_t length = found != kBarLengths.end() ? *found : 2 * kBarLengths.back();
    while (!fits(length)) {
        length *= 2;
    }
    std::vector<Bar> bars(number(length));
    for (std::size_t i = 0; i < bars.size(); ++i) {
        bars[i] = {.start = start(length) + static_cast<std::int64_t>(i) * length,
                   .seconds = length,
                   .entries = 0,
                   .errors = 0};
    }
    for (const auto& place : cells_) {
        const Cell& cell = place.second;
        Bar& bar = bars[static_cast<std::size_t>((cell.first - bars[0].start) / length)];
        bar.entries += cell.entries;
        bar.errors += cell.errors;
    }
    return bars;
}
