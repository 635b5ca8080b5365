#include "ui/zelqRecordContainer.h"

#include <QContextMenuEvent>
#include <QDrag>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMimeData>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <limits>
#include <utility>

#include "widgets/zelqRecordDrag.h"
#include "widgets/zelqRowFocus.h"

namespace {

constexpr int kIconSize = 16;
constexpr int kRowMargin = 4;
constexpr int kRibbonWidth = 5;

/// The smallest width that a pointer can still take hold of.
constexpr int kSmallestColumn = 8;

/// Assistive tools number the cells in 31 bits, with a cell more in each row, and a row more, for
/// the headers.
constexpr std::size_t kMostRows = std::numeric_limits<int>::max() / (kColumnCount + 1) - 1;

QItemSelection firstCell(const QItemSelection& selection) {
    if (selection.isEmpty()) {
        return {};
    }
    const QModelIndex cell = selection.front().topLeft();
    return {cell, cell};
}

}  // namespace

zelqRecordContainer::zelqRecordContainer(const zelqSession& session, const zelqLocaleText& locale,
                                         const zelqRecordIcons& icons, QWidget* parent)
    : zelqRowTable(parent),
      logs_(session.logs()),
      records_(session.shown()),
      locale_(locale),
      model_(records_, locale, icons),
      selection_(new zelqRowSelection(model_, this)),
      rowLimit_(kMostRows) {
    setRows(model_, *selection_);
    setItemDelegate(new zelqRowFocus(this));
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
    connect(this, &zelqRowTable::doubleClicked, this,
            [this](const QModelIndex& index) { emit opened(recordAt(index.row())); });
}

zelqRecordContainer::~zelqRecordContainer() = default;

void zelqRecordContainer::setUpHeaders() {
    QHeaderView* const columns = horizontalHeader();
    columns->setHighlightSections(false);
    columns->setSectionsClickable(false);
    columns->setMinimumSectionSize(kSmallestColumn);
    // The table's selection, which the header asks for each of its sections, is slow when millions
    // of rows are selected.
    columns->setSelectionModel(new QItemSelectionModel(&model_, columns));
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

int zelqRecordContainer::rowHeight() const {
    return std::max(fontMetrics().height(), kIconSize) + kRowMargin;
}

/// Sizes the columns that the user has not sized. They get wider only, until all records go.
void zelqRecordContainer::fitColumns() {
    const zelqColumnExtremes extremes = logs_.extremes();
    fitting_ = true;
    for (int section = 0; section < model_.columnCount(); ++section) {
        const zelqColumn column = model_.columnAt(section);
        const auto number = static_cast<std::size_t>(column);
        if (!userSized_[number]) {
            const int least = zelqRecordColumns::style(column).width != 0
                                  ? zelqRecordColumns::style(column).width
                                  : horizontalHeader()->sectionSizeHint(section);
            widths_[number] = std::max({widths_[number], least, fittedWidth(column, extremes)});
        }
        setColumnWidth(section, widths_[number]);
    }
    fitting_ = false;
}

void zelqRecordContainer::forgetFittedWidths() noexcept {
    for (std::size_t column = 0; column < kColumnCount; ++column) {
        widths_[column] = userSized_[column] ? widths_[column] : 0;
    }
}

/// The width that the cells of a column need, in pixels.
int zelqRecordContainer::fittedWidth(zelqColumn column, const zelqColumnExtremes& extremes) const {
    const QFontMetrics metrics = fontMetrics();
    QChar digit = u'0';
    for (char16_t other = u'1'; other <= u'9'; ++other) {
        if (metrics.horizontalAdvance(other) > metrics.horizontalAdvance(digit)) {
            digit = other;
        }
    }
    QStyleOptionViewItem cell;
    initViewItemOption(&cell);
    cell.features = QStyleOptionViewItem::HasDisplay;
    if (column == zelqColumn::EntryType) {
        cell.features |= QStyleOptionViewItem::HasDecoration;
    }
    int width = 0;
    for (const QString& text : zelqRecordColumns::widestTexts(column, extremes, locale_, digit)) {
        cell.text = text;
        const QSize size = style()->sizeFromContents(QStyle::CT_ItemViewItem, &cell, {}, this);
        width = std::max(width, size.width());
    }
    return width;
}

int zelqRecordContainer::sizeHintForColumn(int section) const {
    return fittedWidth(model_.columnAt(section), logs_.extremes());
}

void zelqRecordContainer::changeEvent(QEvent* event) {
    zelqRowTable::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) {
        forgetFittedWidths();
        fitColumns();
    }
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
    zelqRowSelection::Rows rows = selection_->rows();  // the same with other columns
    beginChange();
    model_.setColumnVisible(column, visible);
    endChange(std::move(rows));
}

void zelqRecordContainer::selectAllRecords() {
    selection_->setRows(~zelqRowSelection::Rows(selection_->rows().size()));
}

bool zelqRecordContainer::goTo(zelqBCnrObject& record) {
    return goTo(records_.contains(record) ? records_.rowOf(record) : records_.size());
}

bool zelqRecordContainer::goTo(std::size_t row) {
    zelqRowSelection::Rows rows(selection_->rows().size());
    if (row >= rows.size()) {
        return false;
    }
    if (!selection_->isHeld()) {
        rows.set(row);
        selection_->setRows(std::move(rows));
    }
    if (model_.columnCount() == 0) {
        keptCursor_ = keptTop_ = records_.records()[row];
        return true;
    }
    const QModelIndex index =
        model_.index(static_cast<int>(row), std::max(0, currentIndex().column()));
    selection_->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
    const bool isInSight = viewport()->rect().contains(visualRect(index).center());
    scrollTo(index, isInSight ? EnsureVisible : PositionAtCenter);
    return true;
}

void zelqRecordContainer::goToRow(int row) {
    const QModelIndex index = model_.index(row, std::max(0, currentIndex().column()));
    if (index.isValid()) {
        selection_->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
        scrollTo(index, PositionAtCenter);
    }
}

void zelqRecordContainer::deselectAllRecords() {
    selection_->setRows({});
}

void zelqRecordContainer::reverseSelection() {
    selection_->setRows(~selection_->rows());
}

std::vector<zelqBCnrObject*> zelqRecordContainer::selectedRecords() const {
    return recordsOf(selection_->rows());
}

std::vector<zelqBCnrObject*> zelqRecordContainer::nonSelectedRecords() const {
    zelqRowSelection::Rows rows = selection_->rows();
    rows.resize(records_.size());
    rows.flip();
    return recordsOf(rows);
}

std::vector<zelqBCnrObject*> zelqRecordContainer::recordsOf(
    const zelqRowSelection::Rows& rows) const {
    std::vector<zelqBCnrObject*> found;
    found.reserve(rows.count());
    for (auto row = rows.find_first(); row != rows.npos; row = rows.find_next(row)) {
        found.push_back(records_.records()[row]);
    }
    return found;
}

void zelqRecordContainer::scrollContentsBy(int dx, int dy) {
    zelqRowTable::scrollContentsBy(dx, dy);
    noteRowsInSight();
}

void zelqRecordContainer::updateGeometries() {
    zelqRowTable::updateGeometries();
    noteRowsInSight();
}

void zelqRecordContainer::noteRowsInSight() {
    const int last = rowAt(viewport()->height() - 1);
    selection_->setRowsInSight(rowAt(0), last >= 0 ? last : model_.rowCount() - 1);
}

void zelqRecordContainer::selectionChanged(const QItemSelection& selected,
                                           const QItemSelection& deselected) {
    // To tell assistive tools, the table takes what it is given apart into cells, and uses one.
    zelqRowTable::selectionChanged(firstCell(selected), firstCell(deselected));
    viewport()->update(visualRegionForSelection(selected) | visualRegionForSelection(deselected));
}

QModelIndexList zelqRecordContainer::selectedIndexes() const {
    const std::size_t first = selection_->rows().find_first();
    return first != zelqRowSelection::Rows::npos
               ? QModelIndexList{model_.index(static_cast<int>(first), 0)}
               : QModelIndexList();
}

/// Drags the selected records. The rows stay, though the drag is a move.
void zelqRecordContainer::startDrag(Qt::DropActions actions) {
    if (selection_->rows().any()) {
        isDragging_ = true;
        auto* const payload = new QMimeData;
        payload->setData(zelqRecordDrag::mimeType(), {});
        QDrag drag(this);
        drag.setMimeData(payload);
        drag.exec(actions, Qt::MoveAction);
        isDragging_ = false;
    }
}

QRect zelqRecordContainer::rowRect(const QModelIndex& index) const {
    const QRect cell = visualRect(index);
    return {-horizontalOffset(), cell.top(), horizontalHeader()->length(), cell.height()};
}

void zelqRecordContainer::paintEvent(QPaintEvent* event) {
    zelqRowTable::paintEvent(event);
    paintBookmarks();
    zelqRowFocus::outline(*this, rowRect(currentIndex()));
}

/// A ribbon at the beginning of each bookmarked row in sight. It is in the colour of the text, so
/// that it is seen in any palette.
void zelqRecordContainer::paintBookmarks() {
    QPainter painter(viewport());
    painter.setRenderHint(QPainter::Antialiasing);
    const int last = rowAt(viewport()->height() - 1);
    for (int row = std::max(0, rowAt(0)); row <= (last >= 0 ? last : model_.rowCount() - 1);
         ++row) {
        if (!recordAt(row)->isIn(zelqBCnrObject::Bookmarked)) {
            continue;
        }
        const QRect cell = visualRect(model_.index(row, 0));
        const bool selected = selection_->rows().test(static_cast<std::size_t>(row));
        painter.setPen(Qt::NoPen);
        painter.setBrush(palette().color(selected ? QPalette::HighlightedText : QPalette::Text));
        const bool mirrored = layoutDirection() == Qt::RightToLeft;
        const qreal edge = mirrored ? cell.right() + 1 : cell.left();
        const qreal tip = edge + (mirrored ? -kRibbonWidth : kRibbonWidth);
        painter.drawPolygon(QPolygonF({{edge, cell.top() + 2.0},
                                       {tip, cell.center().y() + 0.5},
                                       {edge, cell.bottom() - 1.0}}));
    }
}

void zelqRecordContainer::currentChanged(const QModelIndex& current, const QModelIndex& previous) {
    zelqRowTable::currentChanged(current, previous);
    for (const QModelIndex& index : {current, previous}) {
        viewport()->update(rowRect(index));
    }
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
    if (event->key() == Qt::Key_F10 && event->modifiers() == Qt::ShiftModifier) {
        QContextMenuEvent menu(QContextMenuEvent::Keyboard, {}, {});
        contextMenuEvent(&menu);
        return;
    }
    zelqRowTable::keyPressEvent(event);
}

void zelqRecordContainer::contextMenuEvent(QContextMenuEvent* event) {
    const bool byMouse = event->reason() == QContextMenuEvent::Mouse;
    const QModelIndex index = byMouse ? indexAt(event->pos()) : currentIndex();
    if (!index.isValid()) {
        return;
    }
    if (byMouse) {
        selection_->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
        emit menuWanted(event->globalPos(), index.column());
    } else {
        scrollTo(index);
        const QRect cell = visualRect(index) & viewport()->rect();
        emit menuWanted(viewport()->mapToGlobal(cell.isEmpty() ? visualRect(index).bottomLeft()
                                                               : cell.center()),
                        -1);
    }
}
