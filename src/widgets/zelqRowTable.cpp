#include "widgets/zelqRowTable.h"

#include <QCursor>
#include <QHeaderView>
#include <QPaintEvent>
#include <QPainter>
#include <QStringListModel>
#include <algorithm>
#include <cstdlib>
#include <utility>

void zelqRowTable::setRows(QAbstractItemModel& model, QItemSelectionModel& selection) {
    setModel(&model);
    const QItemSelectionModel* const replaced = selectionModel();
    setSelectionModel(&selection);
    delete replaced;
    auto* const noRows = new QHeaderView(Qt::Vertical, this);
    noRows->setModel(new QStringListModel(noRows));
    noRows->hide();
    setVerticalHeader(noRows);
    QTableView::updateGeometries();  // hides the button between the headers
}

QRect zelqRowTable::visualRect(const QModelIndex& index) const {
    if (!index.isValid()) {
        return {};
    }
    QRect cell = placeOf(index.row());
    cell.moveLeft(columnViewportPosition(index.column()));
    cell.setWidth(columnWidth(index.column()));
    return cell;
}

void zelqRowTable::reset() {
    QTableView::reset();
    scheduleDelayedItemsLayout();
}

/// As in any table, nothing is selected by a rectangle that begins or ends beside the cells.
void zelqRowTable::setSelection(const QRect& rectangle, QItemSelectionModel::SelectionFlags flags) {
    if (indexAt(rectangle.topLeft()).isValid() && indexAt(rectangle.bottomRight()).isValid()) {
        zelqUniformRows::setSelection(rectangle, flags);
    }
}

// What QTableView makes of its base class asks the header of rows, so it is passed over below.
// NOLINTBEGIN(bugprone-parent-virtual-call)

void zelqRowTable::updateGeometries() {
    if (std::exchange(isLayingOut_, true)) {
        return;  // the margins give the viewport another size
    }
    QHeaderView* const columns = horizontalHeader();
    const int height = std::min(std::max(columns->minimumHeight(), columns->sizeHint().height()),
                                columns->maximumHeight());
    setViewportMargins(0, height, 0, 0);
    const QRect area = viewport()->geometry();
    columns->setGeometry(area.left(), area.top() - height, area.width(), height);
    updateRowRange();
    updateColumnRange();
    isLayingOut_ = false;
    QAbstractItemView::updateGeometries();
}

/// Gives the horizontal scroll bar its range, in pixels.
void zelqRowTable::updateColumnRange() {
    const QHeaderView* const columns = horizontalHeader();
    const QSize most = maximumViewportSize();
    const bool allFits =
        most.width() >= columns->length() && most.height() / rowHeight() >= rowCount();
    const int width = allFits ? most.width() : viewport()->width();
    int whole = 0;  // of the last columns, those that stand whole in the viewport
    for (int taken = 0, column = columns->count() - 1; column >= 0; --column, ++whole) {
        taken += columns->sectionSize(column);
        if (taken > width) {
            break;
        }
    }
    QScrollBar* const bar = horizontalScrollBar();
    bar->setPageStep(width);
    bar->setRange(0, columns->length() - width);
    bar->setSingleStep(std::max(width / (std::max(whole, 1) + 1), 2));
}

void zelqRowTable::scrollContentsBy(int dx, int dy) {
    QTableView::scrollContentsBy(dx, 0);
    if (std::abs(dy) > rowsPerPage()) {
        viewport()->update();
    } else if (dy != 0) {
        scrollDirtyRegion(0, dy * rowHeight());
        viewport()->scroll(0, dy * rowHeight());
    }
}

// NOLINTEND(bugprone-parent-virtual-call)

void zelqRowTable::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    option.palette.setCurrentColorGroup(isEnabled() ? QPalette::Normal : QPalette::Disabled);
    const QModelIndex pointed = viewport()->testAttribute(Qt::WA_Hover) && viewport()->underMouse()
                                    ? indexAt(viewport()->mapFromGlobal(QCursor::pos()))
                                    : QModelIndex();
    const QRect area = event->rect();
    const int last = std::min(rowCount() - 1, placeAt(area.bottom()));
    for (int row = placeAt(area.top()); row <= last; ++row) {
        paintRow(painter, option, row, event->region(), pointed);
    }
}

/// Paints the cells of a row that have a part in the area.
void zelqRowTable::paintRow(QPainter& painter, QStyleOptionViewItem& option, int row,
                            const QRegion& area, const QModelIndex& pointed) const {
    const int columns = model()->columnCount();
    for (int column = 0; column < columns; ++column) {
        const QModelIndex index = model()->index(row, column);
        option.rect = visualRect(index);
        if (!area.intersects(option.rect)) {
            continue;
        }
        option.state.setFlag(QStyle::State_Selected, selectionModel()->isSelected(index));
        option.state.setFlag(QStyle::State_MouseOver, index == pointed);
        style()->drawPrimitive(QStyle::PE_PanelItemViewRow, &option, &painter, this);
        itemDelegate()->paint(&painter, option, index);
    }
}
