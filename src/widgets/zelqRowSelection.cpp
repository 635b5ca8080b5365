#include "widgets/zelqRowSelection.h"

#include <QSignalBlocker>
#include <algorithm>
#include <bit>
#include <optional>
#include <utility>
#include <vector>

#include <boost/iterator/function_output_iterator.hpp>

namespace {

using Rows = zelqRowSelection::Rows;

/// A selection is small if it has no more ranges and rows than this. Painting searches all ranges
/// for every cell, and assistive tools ask for every cell of them.
constexpr std::size_t kMostRanges = 256;
constexpr std::size_t kMostRows = 10000;

struct Range {
    int first;
    int last;
};

/// Rows are added in ascending order.
void add(std::vector<Range>& ranges, std::size_t row) {
    const int number = static_cast<int>(row);
    if (!ranges.empty() && ranges.back().last == number - 1) {
        ranges.back().last = number;
    } else {
        ranges.push_back({number, number});
    }
}

/// The ranges of a small selection; nothing for a larger one.
std::optional<std::vector<Range>> allRanges(const Rows& rows) {
    std::vector<Range> ranges;
    std::size_t count = 0;
    for (auto row = rows.find_first(); row != Rows::npos; row = rows.find_next(row)) {
        add(ranges, row);
        if (++count > kMostRows || ranges.size() > kMostRanges) {
            return {};
        }
    }
    return ranges;
}

}  // namespace

zelqRowSelection::zelqRowSelection(QAbstractItemModel& model, QObject* parent)
    : QItemSelectionModel(&model, parent),
      selected_(static_cast<std::size_t>(model.rowCount())),
      settled_(selected_) {}

void zelqRowSelection::reset() {
    selected_ = settled_ = Rows(static_cast<std::size_t>(model()->rowCount()));
    summary_.reset();
    const QSignalBlocker blocker(this);
    copyToBase({});
    clearCurrentIndex();
}

void zelqRowSelection::setRows(Rows rows) {
    rows.resize(selected_.size());
    replace(std::move(rows));
    settled_.reset();
}

void zelqRowSelection::select(const QItemSelection& selection, SelectionFlags command) {
    if (command == NoUpdate || isHeld_) {
        return;
    }
    Rows rows = command.testFlag(Clear) ? Rows(selected_.size()) : selected_;
    if (command.testFlag(Clear) || !command.testFlag(Current)) {
        settled_ = rows;
    }
    if ((command & (Select | Deselect | Toggle)) != NoUpdate) {
        Rows chosen(rows.size());
        for (const QItemSelectionRange& range : selection) {
            if (range.isValid()) {
                chosen.set(static_cast<std::size_t>(range.top()),
                           static_cast<std::size_t>(range.height()), true);
            }
        }
        rows = settled_;
        if (command.testFlag(Select)) {
            rows |= chosen;
        } else if (command.testFlag(Deselect)) {
            rows -= chosen;
        } else {
            rows ^= chosen;
        }
    }
    replace(std::move(rows));
}

void zelqRowSelection::replace(Rows rows) {
    if (rows == selected_) {
        return;
    }
    // Before anything changes, for there may be no memory for them.
    const QItemSelection selected = ranges(rows - selected_);
    const QItemSelection deselected = ranges(selected_ - rows);
    const QItemSelection all = ranges(rows);
    selected_ = std::move(rows);
    summary_.reset();
    copyToBase(all);
    emit selectionChanged(selected, deselected);
}

const zelqRowSelection::Summary& zelqRowSelection::summary() const {
    if (!summary_) {
        Summary found;
        std::size_t start = 0;
        const auto look = [&found, &start](Rows::block_type bits) {
            if (bits != 0) {
                const std::size_t last = start + static_cast<std::size_t>(std::bit_width(bits)) - 1;
                found = {.count = found.count + static_cast<std::size_t>(std::popcount(bits)),
                         .first = found.count != 0
                                      ? found.first
                                      : start + static_cast<std::size_t>(std::countr_zero(bits)),
                         .last = last};
            }
            start += Rows::bits_per_block;
        };
        boost::to_block_range(selected_, boost::make_function_output_iterator(look));
        summary_ = found;
    }
    return *summary_;
}

void zelqRowSelection::setRowsInSight(int first, int last) {
    if (first != firstInSight_ || last != lastInSight_) {
        firstInSight_ = first;
        lastInSight_ = last;
        copyToBase(ranges(selected_));
    }
}

void zelqRowSelection::copyToBase(const QItemSelection& selection) {
    const QSignalBlocker blocker(this);  // the ranges change, but the selection does not
    // In two steps, because the base class compares every old range with every new one.
    QItemSelectionModel::select(QItemSelection(), Clear);
    QItemSelectionModel::select(selection, Select);
}

/// The ranges for the base class: all of a small selection, else those in sight and the first row.
QItemSelection zelqRowSelection::ranges(const Rows& rows) const {
    std::optional<std::vector<Range>> known = allRanges(rows);
    if (!known) {
        known.emplace();
        const std::size_t first = rows.find_first();
        add(*known, first);
        const int end = std::min(lastInSight_ + 1, static_cast<int>(rows.size()));
        for (int row = std::max(firstInSight_, static_cast<int>(first) + 1); row < end; ++row) {
            if (rows.test(static_cast<std::size_t>(row))) {
                add(*known, static_cast<std::size_t>(row));
            }
        }
    }
    QItemSelection selection;
    const int lastColumn = model()->columnCount() - 1;
    if (lastColumn >= 0) {
        for (const Range& range : *known) {
            selection.append(QItemSelectionRange(model()->index(range.first, 0),
                                                 model()->index(range.last, lastColumn)));
        }
    }
    return selection;
}
