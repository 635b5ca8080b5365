#include "widgets/zelqLineView.h"

#include <QAccessible>
#include <QClipboard>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <cmath>
#include <limits>
#include <new>
#include <numeric>

#include "widgets/zelqLineMenu.h"
#include "widgets/zelqLineModel.h"
#include "widgets/zelqLineText.h"
#include "widgets/zelqRecordDrag.h"

// What QListView makes of its base class lays out every line, so it is passed over in this file.
// NOLINTBEGIN(bugprone-parent-virtual-call)

namespace {

constexpr int kTextMargin = 3;

/// More lines than this are not put on the clipboard; no program would take them.
constexpr int kMostCopiedLines = 1'000'000;

}  // namespace

zelqLineView::zelqLineView(zelqLineModel& model, QWidget* parent)
    : zelqUniformRows(parent), model_(model) {
    setModel(&model_);
    // Connected after the selection, which forgets the current line.
    connect(&model_, &zelqLineModel::modelAboutToBeReset, this, &zelqLineView::notePlaces);
    connect(&model_, &zelqLineModel::modelReset, this, &zelqLineView::restorePlaces);
    for (const auto change :
         {&zelqLineModel::rowsAboutToBeInserted, &zelqLineModel::rowsAboutToBeRemoved}) {
        connect(&model_, change, this, &zelqLineView::dropPieces);
    }
    connect(&model_, &zelqLineModel::modelAboutToBeReset, this, &zelqLineView::dropPieces);
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setUniformItemSizes(true);
    setVerticalScrollMode(ScrollPerItem);
    setHorizontalScrollMode(ScrollPerPixel);
    setTabKeyNavigation(false);
    setAcceptDrops(true);
    setDragDropMode(DropOnly);
    setDropIndicatorShown(false);
    // The columns of a dump keep their order, also where menus and dialogs are mirrored.
    setLayoutDirection(Qt::LeftToRight);
    connect(this, &QListView::doubleClicked, this, &zelqLineView::activate);
}

int zelqLineView::rowHeight() const {
    return std::max(1, fontMetrics().height());
}

int zelqLineView::contentWidth() const {
    const double character = QFontMetricsF(font()).horizontalAdvance(u'0');
    return static_cast<int>(std::ceil(character * model_.longestLine())) + 2 * kTextMargin;
}

QRect zelqLineView::visualRect(const QModelIndex& index) const {
    if (!index.isValid()) {
        return {};
    }
    QRect place = placeOf(index.row());
    place.moveLeft(-horizontalOffset());
    place.setWidth(std::max(contentWidth(), viewport()->width()));
    return place;
}

void zelqLineView::doItemsLayout() {
    QAbstractItemView::doItemsLayout();
}

void zelqLineView::notePlaces() {
    const auto place = [this](int row) {
        return row >= 0 && row < model_.rowCount()
                   ? std::optional(model_.records().at(static_cast<std::size_t>(row)))
                   : std::nullopt;
    };
    top_ = place(verticalScrollBar()->value());
    current_ = place(currentIndex().row());
}

/// Where a place from before the reset is now; -1 if it is gone.
int zelqLineView::rowOf(const std::optional<zelqExpandedRecords::Place>& place) const {
    if (!place || !model_.records().contains(*place->record)) {
        return -1;
    }
    return static_cast<int>(std::min(model_.records().linesOf(*place->record).first + place->line,
                                     static_cast<std::size_t>(std::numeric_limits<int>::max())));
}

void zelqLineView::restorePlaces() {
    updateGeometries();
    if (const int row = rowOf(current_); row >= 0) {
        selectionModel()->setCurrentIndex(model_.index(row), QItemSelectionModel::NoUpdate);
    }
    verticalScrollBar()->setValue(std::max(0, rowOf(top_)));
}

int zelqLineView::horizontalOffset() const {
    return horizontalScrollBar()->value();
}

/// As in any list, a rectangle that was drawn upwards loses a pixel at each end. A line far away
/// has no more than one.
void zelqLineView::setSelection(const QRect& rectangle, QItemSelectionModel::SelectionFlags flags) {
    const bool isDrawn = isNear(rectangle.top()) && isNear(rectangle.bottom());
    zelqUniformRows::setSelection(isDrawn ? rectangle.normalized() : rectangle, flags);
}

void zelqLineView::updateGeometries() {
    updateRowRange();
    horizontalScrollBar()->setSingleStep(fontMetrics().horizontalAdvance(u'0') * 4);
    horizontalScrollBar()->setPageStep(viewport()->width());
    horizontalScrollBar()->setRange(0, std::max(0, contentWidth() - viewport()->width()));
    QAbstractItemView::updateGeometries();
}

void zelqLineView::scrollContentsBy(int /*dx*/, int /*dy*/) {
    viewport()->update();
}

/// Tells assistive tools of the first line only: QListView lists every selected line to find it,
/// which takes gigabytes when all lines are.
void zelqLineView::selectionChanged(const QItemSelection& selected,
                                    const QItemSelection& deselected) {
    QAbstractItemView::selectionChanged(selected, deselected);
    dropPieces();
    const auto tell = [this](const QItemSelection& selection, QAccessible::Event change) {
        if (QAccessible::isActive() && !selection.isEmpty()) {
            QAccessibleEvent event(this, change);
            event.setChild(selection.first().top());
            QAccessible::updateAccessibility(&event);
        }
    };
    tell(selected, QAccessible::SelectionAdd);
    tell(deselected, QAccessible::SelectionRemove);
}

// QListView would note what it laid out.
void zelqLineView::rowsInserted(const QModelIndex& parent, int start, int end) {
    QAbstractItemView::rowsInserted(parent, start, end);
    updateGeometries();
    viewport()->update();
}

void zelqLineView::rowsAboutToBeRemoved(const QModelIndex& parent, int start, int end) {
    QAbstractItemView::rowsAboutToBeRemoved(parent, start, end);
    scheduleDelayedItemsLayout();
}

void zelqLineView::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    QStyleOptionViewItem option;
    initViewItemOption(&option);
    const int last = std::min(model_.rowCount() - 1, placeAt(event->rect().bottom()));
    const bool active = hasFocus() && window()->isActiveWindow();
    for (int line = std::max(0, placeAt(event->rect().top())); line <= last; ++line) {
        const QModelIndex index = model_.index(line);
        option.rect = visualRect(index);
        option.state.setFlag(QStyle::State_Selected, selectionModel()->isSelected(index));
        option.state.setFlag(QStyle::State_HasFocus, active && index == currentIndex());
        option.state.setFlag(QStyle::State_Active, active);
        itemDelegate()->paint(&painter, option, index);
    }
    paintPieces(painter);
}

void zelqLineView::resizeEvent(QResizeEvent* event) {
    QAbstractItemView::resizeEvent(event);
    updateGeometries();
}

void zelqLineView::keyPressEvent(QKeyEvent* event) {
    if (event->matches(QKeySequence::Copy)) {
        copySelection();
    } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        activateCurrent();
    } else if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier) {
        zelqLineMenu::popUp(*this, viewport()->mapToGlobal(visualRect(currentIndex()).center()));
    } else {
        QListView::keyPressEvent(event);
        return;
    }
    event->accept();
}

void zelqLineView::contextMenuEvent(QContextMenuEvent* event) {
    const bool byMouse = event->reason() == QContextMenuEvent::Mouse;
    zelqLineMenu::popUp(*this, byMouse
                                   ? event->globalPos()
                                   : viewport()->mapToGlobal(visualRect(currentIndex()).center()));
}

void zelqLineView::activate(const QModelIndex& index) {
    if (index.isValid()) {
        emit recordActivated(model_.records().at(static_cast<std::size_t>(index.row())).record);
    }
}

/// Copies the selected lines from top to bottom, so that each record is gone through once.
void zelqLineView::copySelection() {
    QItemSelection ranges = selectionModel()->selection();
    std::sort(ranges.begin(), ranges.end(),
              [](const auto& a, const auto& b) { return a.top() < b.top(); });
    const qint64 selected =
        std::accumulate(ranges.begin(), ranges.end(), qint64{0},
                        [](qint64 sum, const auto& range) { return sum + range.height(); });
    if (selected == 0) {
        copyPieces();
        return;
    }
    qint64 lines = 0;
    try {
        const zelqLineCopy copy(model_.records(), ranges, kMostCopiedLines);
        if (copy.needsReading()) {
            emit copyWanted(copy, selected);
            return;
        }
        zelqRecordFormatter formatter(model_.locale());
        QGuiApplication::clipboard()->setText(
            copy.text(formatter, [](qint64 /*done*/) { return true; }));
        lines = copy.lines();
    } catch (const std::bad_alloc&) {
        lines = 0;
    }
    emit copied(lines, selected);
}

void zelqLineView::dragEnterEvent(QDragEnterEvent* event) {
    dragMoveEvent(event);
}

void zelqLineView::dragMoveEvent(QDragMoveEvent* event) {
    // Records are moved here, never copied or linked.
    event->setAccepted(event->mimeData()->hasFormat(zelqRecordDrag::mimeType()) &&
                       event->possibleActions().testFlag(Qt::MoveAction));
    event->setDropAction(Qt::MoveAction);
}

void zelqLineView::dropEvent(QDropEvent* event) {
    if (event->mimeData()->hasFormat(zelqRecordDrag::mimeType()) &&
        event->possibleActions().testFlag(Qt::MoveAction)) {
        event->setDropAction(Qt::MoveAction);
        event->accept();
        emit recordsDropped();
    }
}

// NOLINTEND(bugprone-parent-virtual-call)
