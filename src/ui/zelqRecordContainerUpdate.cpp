// Changing the rows of the container: selection, cursor and scroll position stay with the records.

#include <QScrollBar>
#include <algorithm>
#include <limits>
#include <new>
#include <utility>

#include "ui/zelqRecordContainer.h"

namespace {

/// For so many selected records, looking up the row of each is cheaper than looking at all rows.
constexpr std::size_t kFewRecords = 1000;

}  // namespace

void zelqRecordContainer::beginChange() {
    change_ = Change{.cursor = cursoredRecord(),
                     .top = recordAt(verticalScrollBar()->value()),
                     .cursorRow = currentIndex().row(),
                     .topRow = verticalScrollBar()->value()};
    if (model_.columnCount() == 0) {  // what cannot be shown is kept, see restorePlaces()
        change_->top = keptTop_;
    }
    fitting_ = true;  // the header lays its sections out anew; nobody sizes them
    model_.beginChange();
    model_.setMostRows(rowLimit());
}

void zelqRecordContainer::rowsAboutToChange(Fate fate) {
    if (fate == Fate::AllGo) {
        zelqRowSelection::Rows kept = selection_->rows();
        beginChange();
        change_->kept = std::move(kept);
        return;
    }
    std::vector<zelqBCnrObject*> few;
    few.reserve(std::min(kFewRecords, selection_->rows().size()));
    beginChange();
    change_->few = std::move(few);
    noteSelection();
}

/// Notes the selection in the records.
void zelqRecordContainer::noteSelection() {
    const zelqRowSelection::Rows& rows = selection_->rows();
    for (auto row = rows.find_first(); row != rows.npos; row = rows.find_next(row)) {
        zelqBCnrObject* const record = records_.records()[row];
        record->setSelected(true);
        ++noted_;
        if (change_->few.size() < kFewRecords) {
            change_->few.push_back(record);
        }
    }
}

/// The rows that are selected after a change.
zelqRowSelection::Rows zelqRecordContainer::rowsToSelect() {
    return change_->kept.has_value() ? std::move(*change_->kept) : notedRows();
}

/// The rows of the records that are noted as selected, whose notes are thereby taken back.
zelqRowSelection::Rows zelqRecordContainer::notedRows() {
    const auto shown = records_.records().first(static_cast<std::size_t>(model_.rowCount()));
    zelqRowSelection::Rows rows(shown.size());
    const auto select = [this, shown, &rows](std::size_t row) {
        shown[row]->setSelected(false);
        --noted_;
        rows.set(row);
    };
    if (change_->few.size() == noted_ && records_.isSorted()) {
        for (const zelqBCnrObject* record : change_->few) {
            const std::size_t row =
                records_.contains(*record) ? records_.rowOf(*record) : shown.size();
            if (row < shown.size()) {
                select(row);
            }
        }
        return rows;
    }
    for (std::size_t row = 0; row < shown.size() && noted_ != 0; ++row) {
        if (shown[row]->selected()) {
            select(row);
        }
    }
    return rows;
}

void zelqRecordContainer::recordsAboutToGo(int slot) noexcept {
    const bool all = slot == zelqLogCollection::kAllLogs;
    const auto goes = [all, slot](const zelqBCnrObject* record) {
        return all || record->logIndex() == slot;
    };
    if (all) {
        noted_ = 0;
    } else if (noted_ != 0) {
        noted_ -= static_cast<std::size_t>(std::ranges::count_if(
            records_.records(),
            [&goes](const zelqBCnrObject* record) { return record->selected() && goes(record); }));
    }
    std::erase_if(change_->few, goes);
    std::erase_if(dragged_, goes);
    for (zelqBCnrObject** kept : {&change_->cursor, &change_->top, &keptCursor_, &keptTop_}) {
        if (*kept != nullptr && goes(*kept)) {
            *kept = nullptr;
        }
    }
    if (all) {
        change_->kept = zelqRowSelection::Rows();
        change_->cursorRow = change_->topRow = 0;
        forgetFittedWidths();
    }
}

void zelqRecordContainer::rowsChanged() noexcept {
    zelqRowSelection::Rows rows;
    try {
        rows = rowsToSelect();
    } catch (const std::bad_alloc&) {
        // The notes stay: the rows are selected again when they change the next time.
    }
    try {
        endChange(std::move(rows));
    } catch (const std::bad_alloc&) {
        showNoRows();
    }
}

/// Shows nothing until the next change: the table's own memory for the rows is not to be had.
void zelqRecordContainer::showNoRows() {
    change_.reset();
    model_.beginChange();
    model_.setMostRows(0);
    model_.endChange();
    emit rowsGivenUp();
}

void zelqRecordContainer::endChange(zelqRowSelection::Rows rows) {
    model_.endChange();
    fitColumns();
    keptCursor_ = keptTop_ = nullptr;
    const Change change = *std::exchange(change_, std::nullopt);
    if (records_.empty()) {
        renewRowHeader();
        return;
    }
    selection_->setRows(std::move(rows));
    restorePlaces(change);
}

void zelqRecordContainer::restorePlaces(const Change& change) {
    if (model_.columnCount() == 0) {
        // Without columns there is no cell that could have the cursor.
        const bool stays = change.cursor != nullptr && records_.contains(*change.cursor);
        keptCursor_ = stays ? change.cursor : records_.records().front();
        keptTop_ = change.top;
        return;
    }
    // Where a record is gone, the row that took its place stands in for it.
    const int lastRow = model_.rowCount() - 1;
    const auto rowOf = [this, lastRow](const zelqBCnrObject* record, int row) {
        return record != nullptr && records_.contains(*record)
                   ? std::min(static_cast<int>(records_.rowOf(*record)), lastRow)
                   : std::clamp(row, 0, lastRow);
    };
    const bool autoScrolls = hasAutoScroll();
    setAutoScroll(false);
    selectionModel()->setCurrentIndex(model_.index(rowOf(change.cursor, change.cursorRow), 0),
                                      QItemSelectionModel::NoUpdate);
    setAutoScroll(autoScrolls);
    doItemsLayout();  // gives the scroll bar its new range
    verticalScrollBar()->setValue(rowOf(change.top, change.topRow));
}

void zelqRecordContainer::marksChanged(const zelqBCnrObject* one) noexcept {
    if (one == nullptr) {
        model_.refreshMarks(0, model_.rowCount() - 1);
    } else if (records_.contains(*one)) {
        const int row = rowOf(*one);
        model_.refreshMarks(row, row);
        announce(row, model_.sectionOf(zelqColumn::ExpandMark), QAccessible::NameChanged);
    }
}

void zelqRecordContainer::bookmarkChanged(const zelqBCnrObject& record) {
    if (records_.contains(record)) {
        viewport()->update();
        announce(rowOf(record), std::max(0, currentIndex().column()),
                 QAccessible::DescriptionChanged);
    }
    emit bookmarksChanged();
}

/// The row of a shown record, which may be one past those that the table has.
int zelqRecordContainer::rowOf(const zelqBCnrObject& record) const {
    return static_cast<int>(std::min(records_.rowOf(record),
                                     static_cast<std::size_t>(std::numeric_limits<int>::max())));
}

/// Tells assistive tools that what they know of a cell has changed. Its name is the cell's text; a
/// bookmark is in its description.
void zelqRecordContainer::announce(int row, int section, QAccessible::Event change) {
    if (!QAccessible::isActive() || section < 0 || row >= model_.rowCount()) {
        return;
    }
    QAccessibleInterface* const table = QAccessible::queryAccessibleInterface(this);
    if (table == nullptr || table->tableInterface() == nullptr) {
        return;
    }
    if (QAccessibleInterface* const cell = table->tableInterface()->cellAt(row, section)) {
        QAccessibleEvent event(cell, change);
        QAccessible::updateAccessibility(&event);
    }
}
