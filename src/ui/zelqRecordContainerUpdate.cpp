// Changing the rows of the container: selection, cursor and scroll position stay with the records.

#include <QScrollBar>
#include <algorithm>
#include <utility>

#include "ui/zelqRecordContainer.h"

#include "widgets/zelqRowSelection.h"

namespace {

/// For so many selected records, looking up the row of each is cheaper than looking at all rows.
constexpr std::size_t kFewRecords = 1000;

}  // namespace

zelqRecordContainer::Update::Update(zelqRecordContainer& container)
    : container_(container),
      cursor_(container.cursoredRecord()),
      top_(container.recordAt(container.verticalScrollBar()->value())),
      cursorRow_(container.currentIndex().row()),
      topRow_(container.verticalScrollBar()->value()) {
    if (container_.model_.columnCount() == 0) {  // what cannot be shown is kept, see below
        top_ = container_.keptTop_;
    }
    container_.fitting_ = true;  // the header lays its sections out anew; nobody sizes them
    container_.model_.beginChange();
    container_.model_.setMostRows(container_.rowLimit());
}

zelqRecordList& zelqRecordContainer::Update::records() {
    noteSelection();
    return container_.records_;
}

/// Notes the selection in the records, once, before the rows change.
void zelqRecordContainer::Update::noteSelection() {
    if (std::exchange(noted_, true)) {
        return;
    }
    const zelqRowSelection::Rows& rows = container_.selection_->rows();
    for (auto row = rows.find_first(); row != rows.npos; row = rows.find_next(row)) {
        zelqBCnrObject* const record = container_.records_.records()[row];
        record->setSelected(true);
        ++container_.marked_;
        if (few_.size() < kFewRecords) {
            few_.push_back(record);
        }
    }
}

/// Selects the rows of the records that are noted as selected, and forgets their notes.
void zelqRecordContainer::Update::restoreSelection() {
    const auto shown =
        container_.records_.records().first(static_cast<std::size_t>(container_.model_.rowCount()));
    zelqRowSelection::Rows rows(shown.size());
    const auto select = [this, shown, &rows](std::size_t row) {
        shown[row]->setSelected(false);
        --container_.marked_;
        rows.set(row);
    };
    if (few_.size() == container_.marked_ && container_.records_.isSorted()) {
        for (zelqBCnrObject* record : few_) {
            const std::size_t row = container_.records_.contains(*record)
                                        ? container_.records_.rowOf(*record)
                                        : shown.size();
            if (row < shown.size()) {
                select(row);
            }
        }
    } else {
        for (std::size_t row = 0; row < shown.size() && container_.marked_ != 0; ++row) {
            if (shown[row]->selected()) {
                select(row);
            }
        }
    }
    container_.selection_->setRows(std::move(rows));
}

void zelqRecordContainer::Update::dropAll() {
    container_.records_.dropAll();
    container_.dragged_.clear();
    cursor_ = top_ = nullptr;
    cursorRow_ = topRow_ = 0;
    noted_ = true;
    few_.clear();
    container_.marked_ = 0;
}

void zelqRecordContainer::Update::dropLog(int logIndex) {
    const auto isOfLog = [logIndex](const zelqBCnrObject* record) {
        return record->logIndex() == logIndex;
    };
    noteSelection();
    if (container_.marked_ != 0) {
        container_.marked_ -= static_cast<std::size_t>(std::ranges::count_if(
            container_.records_.records(), [&isOfLog](const zelqBCnrObject* record) {
                return record->selected() && isOfLog(record);
            }));
        std::erase_if(few_, isOfLog);
    }
    container_.records_.dropLog(logIndex);
    std::erase_if(container_.dragged_, isOfLog);
    for (zelqBCnrObject** kept : {&cursor_, &top_}) {
        if (*kept != nullptr && isOfLog(*kept)) {
            *kept = nullptr;
        }
    }
}

zelqRecordContainer::Update::~Update() {
    const zelqRecordList& records = container_.records_;
    zelqRowSelection::Rows sameRows;
    if (!noted_) {
        sameRows = container_.selection_->rows();
    }
    container_.model_.endChange();
    container_.fitColumns();
    container_.keptCursor_ = container_.keptTop_ = nullptr;
    if (records.empty()) {
        container_.renewRowHeader();
        return;
    }
    if (noted_) {
        restoreSelection();
    } else {
        container_.selection_->setRows(std::move(sameRows));
    }
    if (container_.model_.columnCount() == 0) {
        // Without columns there is no cell that could have the cursor.
        const bool stays = cursor_ != nullptr && records.contains(*cursor_);
        container_.keptCursor_ = stays ? cursor_ : records.records().front();
        container_.keptTop_ = top_;
        return;
    }
    // Where a record is gone, the row that took its place stands in for it.
    const int lastRow = container_.model_.rowCount() - 1;
    const auto rowOf = [&records, lastRow](const zelqBCnrObject* record, int row) {
        return record != nullptr && records.contains(*record)
                   ? std::min(static_cast<int>(records.rowOf(*record)), lastRow)
                   : std::clamp(row, 0, lastRow);
    };
    const bool autoScrolls = container_.hasAutoScroll();
    container_.setAutoScroll(false);
    container_.selectionModel()->setCurrentIndex(
        container_.model_.index(rowOf(cursor_, cursorRow_), 0), QItemSelectionModel::NoUpdate);
    container_.setAutoScroll(autoScrolls);
    container_.doItemsLayout();  // gives the scroll bar its new range
    container_.verticalScrollBar()->setValue(rowOf(top_, topRow_));
}
