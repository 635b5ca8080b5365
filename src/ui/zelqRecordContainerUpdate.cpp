// Changing the rows of the container: selection, cursor and scroll position stay with the records.

#include <QScrollBar>
#include <algorithm>
#include <limits>
#include <new>
#include <utility>

#include "ui/zelqRecordContainer.h"

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

void zelqRecordContainer::rowsAboutToChange() noexcept {
    beginChange();
}

void zelqRecordContainer::recordsAboutToGo(int slot) noexcept {
    const bool all = slot == zelqLogCollection::kAllLogs;
    const auto goes = [all, slot](const zelqBCnrObject* record) {
        return all || record->logIndex() == slot;
    };
    for (zelqBCnrObject** kept : {&change_->cursor, &change_->top, &keptCursor_, &keptTop_}) {
        if (*kept != nullptr && goes(*kept)) {
            *kept = nullptr;
        }
    }
    if (all) {
        change_->cursorRow = change_->topRow = 0;
        forgetFittedWidths();
    }
}

void zelqRecordContainer::rowsChanged(Rows selected) noexcept {
    try {
        endChange(std::move(selected));
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
