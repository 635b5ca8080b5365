#include "ui/zelqRecordContainer.h"

#include <QDrag>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMimeData>
#include <QScrollBar>
#include <algorithm>

#include "dialogs/zelqRecordDrag.h"

namespace {

constexpr int kIconSize = 16;
constexpr int kRowMargin = 4;

/// The smallest width that a pointer can still take hold of.
constexpr int kSmallestColumn = 8;

/// Gives a header a selection model of its own. The table's, which headers ask for each of their
/// sections, is slow when millions of rows are selected.
void detachSelection(QHeaderView* header) {
    header->setSelectionModel(new QItemSelectionModel(header->model(), header));
}

}  // namespace

zelqRecordContainer::zelqRecordContainer(const zelqLocaleText& locale, const zelqRecordIcons& icons,
                                         QWidget* parent)
    : QTableView(parent), model_(records_, locale, icons) {
    setModel(&model_);
    setSelectionBehavior(SelectRows);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    setShowGrid(false);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setVerticalScrollMode(ScrollPerItem);
    setHorizontalScrollMode(ScrollPerPixel);
    setIconSize({kIconSize, kIconSize});
    setDragEnabled(true);
    setDragDropMode(DragOnly);
    setUpHeaders();
    connect(this, &QTableView::doubleClicked, this,
            [this](const QModelIndex& index) { emit opened(recordAt(index.row())); });
}

zelqRecordContainer::~zelqRecordContainer() = default;

void zelqRecordContainer::setUpHeaders() {
    QHeaderView* const rows = verticalHeader();
    rows->setSectionResizeMode(QHeaderView::Fixed);
    rows->setMinimumSectionSize(1);
    rows->setDefaultSectionSize(std::max(fontMetrics().height(), kIconSize) + kRowMargin);
    rows->hide();
    detachSelection(rows);

    QHeaderView* const columns = horizontalHeader();
    columns->setHighlightSections(false);
    columns->setSectionsClickable(false);
    columns->setMinimumSectionSize(kSmallestColumn);
    detachSelection(columns);
    connect(columns, &QHeaderView::sectionResized, this, [this](int section, int, int width) {
        if (fitting_ || section >= model_.columnCount()) {
            return;
        }
        const auto column = static_cast<std::size_t>(model_.columnAt(section));
        widths_[column] = width;
        userSized_[column] = true;
    });
    fitColumns();
}

/// Sizes the columns that the user has not sized. Looks at no more than a thousand rows.
void zelqRecordContainer::fitColumns() {
    fitting_ = true;
    for (int section = 0; section < model_.columnCount(); ++section) {
        const zelqColumn column = model_.columnAt(section);
        const auto number = static_cast<std::size_t>(column);
        if (userSized_[number]) {
            setColumnWidth(section, widths_[number]);
        } else if (columnStyle(column).width != 0) {
            setColumnWidth(section, columnStyle(column).width);
        } else {
            resizeColumnToContents(section);
        }
    }
    fitting_ = false;
}

zelqBCnrObject* zelqRecordContainer::recordAt(int row) const {
    const auto records = records_.records();
    return row >= 0 && static_cast<std::size_t>(row) < records.size()
               ? records[static_cast<std::size_t>(row)]
               : nullptr;
}

zelqBCnrObject* zelqRecordContainer::cursoredRecord() const {
    return keptCursor_ != nullptr ? keptCursor_ : recordAt(currentIndex().row());
}

void zelqRecordContainer::setColumnVisible(zelqColumn column, bool visible) {
    const Update update(*this);
    model_.setColumnVisible(column, visible);
}

std::vector<zelqBCnrObject*> zelqRecordContainer::recordsWhere(bool selected) {
    std::vector<zelqBCnrObject*> found;
    markSelected();
    for (zelqBCnrObject* record : records_.records()) {
        if (record->selected() == selected) {
            found.push_back(record);
        }
        if (model_.columnCount() != 0) {
            record->setSelected(false);
        }
    }
    return found;
}

/// Drags the selected records. The rows stay, though the drag is a move.
void zelqRecordContainer::startDrag(Qt::DropActions actions) {
    dragged_ = recordsWhere(true);
    if (!dragged_.empty()) {
        auto* const payload = new QMimeData;
        payload->setData(kRecordMimeType, {});
        QDrag drag(this);
        drag.setMimeData(payload);
        drag.exec(actions, Qt::MoveAction);
    }
    dragged_.clear();
}

void zelqRecordContainer::keyPressEvent(QKeyEvent* event) {
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) &&
        cursoredRecord() != nullptr) {
        emit opened(cursoredRecord());
        return;
    }
    // The table's own copying is left out: the program puts nothing on the clipboard.
    if (event->matches(QKeySequence::Copy)) {
        event->ignore();
        return;
    }
    QTableView::keyPressEvent(event);
}

/// Notes the selection in the records. False if none is selected.
bool zelqRecordContainer::markSelected() {
    bool any = false;
    for (const QItemSelectionRange& range : selectionModel()->selection()) {
        for (int row = range.top(); row <= range.bottom(); ++row) {
            recordAt(row)->setSelected(true);
            any = true;
        }
    }
    return any;
}

/// Selects the rows of the records that are noted as selected, and forgets the notes.
void zelqRecordContainer::selectMarked() {
    QItemSelection selection;
    const int rows = model_.rowCount();
    const int lastSection = model_.columnCount() - 1;
    for (int row = 0; row < rows; ++row) {
        const int first = row;
        while (row < rows && recordAt(row)->selected()) {
            recordAt(row)->setSelected(false);
            ++row;
        }
        if (row != first && lastSection >= 0) {
            selection.append(
                QItemSelectionRange(model_.index(first, 0), model_.index(row - 1, lastSection)));
        }
    }
    selectionModel()->select(selection, QItemSelectionModel::Select);
}

zelqRecordContainer::Update::Update(zelqRecordContainer& container)
    : container_(container),
      cursor_(container.cursoredRecord()),
      top_(container.recordAt(container.verticalScrollBar()->value())),
      cursorRow_(container.currentIndex().row()),
      topRow_(container.verticalScrollBar()->value()),
      anySelected_(container.markSelected()) {
    if (container_.model_.columnCount() == 0) {  // what cannot be shown is kept, see below
        top_ = container_.keptTop_;
        anySelected_ = true;
    }
    container_.fitting_ = true;  // the header lays its sections out anew; nobody sizes them
    container_.model_.beginChange();
}

void zelqRecordContainer::Update::dropAll() {
    container_.records_.dropAll();
    container_.dragged_.clear();
    cursor_ = top_ = nullptr;
    cursorRow_ = topRow_ = 0;
    anySelected_ = false;
}

void zelqRecordContainer::Update::dropLog(int logIndex) {
    container_.records_.dropLog(logIndex);
    std::erase_if(container_.dragged_, [logIndex](const zelqBCnrObject* record) {
        return record->logIndex() == logIndex;
    });
    for (zelqBCnrObject** kept : {&cursor_, &top_}) {
        if (*kept != nullptr && (*kept)->logIndex() == logIndex) {
            *kept = nullptr;
        }
    }
}

zelqRecordContainer::Update::~Update() {
    const zelqRecordList& records = container_.records_;
    container_.model_.endChange();
    container_.fitColumns();
    container_.keptCursor_ = container_.keptTop_ = nullptr;
    if (records.empty()) {
        return;
    }
    if (container_.model_.columnCount() == 0) {
        // Without columns there are no cells that could be selected; the records remember.
        container_.keptCursor_ = cursor_;
        container_.keptTop_ = top_;
        return;
    }
    if (anySelected_) {
        container_.selectMarked();
    }
    // Where a record is gone, the row that took its place stands in for it.
    const int lastRow = container_.model_.rowCount() - 1;
    const auto rowOf = [&records, lastRow](const zelqBCnrObject* record, int row) {
        return record != nullptr && records.contains(*record)
                   ? static_cast<int>(records.rowOf(*record))
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
