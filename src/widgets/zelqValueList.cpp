#include "widgets/zelqValueList.h"

#include <QAbstractListModel>
#include <QPainter>
#include <algorithm>

#include "resources/zelqFonts.h"
#include "widgets/zelqRowFocus.h"
#include "widgets/zelqRowSelection.h"

class zelqValueList::Items : public QAbstractListModel {
public:
    Items(std::size_t count, Text text, QString standIn, QObject* parent)
        : QAbstractListModel(parent),
          count_(static_cast<int>(count)),
          text_(std::move(text)),
          standIn_(std::move(standIn)) {}

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override {
        return parent.isValid() ? 0 : count_;
    }
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
        if ((role != Qt::DisplayRole && role != Qt::FontRole) || !checkIndex(index)) {
            return {};
        }
        const QString text = text_(static_cast<std::size_t>(index.row()));
        if (role == Qt::DisplayRole) {
            return text.isEmpty() ? standIn_ : text;
        }
        if (!text.isEmpty()) {
            return {};
        }
        QFont italic;
        italic.setItalic(true);  // nothing else of it counts
        return italic;
    }
    void clear() {
        beginResetModel();
        count_ = 0;
        text_ = nullptr;
        endResetModel();
    }

private:
    int count_;
    Text text_;
    QString standIn_;
};

zelqValueList::zelqValueList(QString placeholder, QWidget* parent)
    : QListView(parent), placeholder_(std::move(placeholder)) {
    setItemDelegate(new zelqRowFocus(this));
    setFont(zelqFonts::ofLists());
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setUniformItemSizes(true);
}

void zelqValueList::setItems(Text text, const std::vector<bool>& selected, const QString& standIn) {
    items_ = new Items(selected.size(), std::move(text), standIn, this);
    setModel(items_);
    selection_ = new zelqRowSelection(*items_, this);
    const QItemSelectionModel* const replaced = selectionModel();
    setSelectionModel(selection_);
    delete replaced;
    zelqRowSelection::Rows rows(selected.size());
    for (std::size_t item = 0; item < selected.size(); ++item) {
        rows.set(item, selected[item]);
    }
    selection_->setCurrentIndex(items_->index(0), QItemSelectionModel::NoUpdate);
    selection_->setRows(std::move(rows));
    setAccessibleDescription(isEmpty() ? placeholder_ : QString());
}

bool zelqValueList::isEmpty() const {
    return items_ == nullptr || items_->rowCount() == 0;
}

void zelqValueList::selectItems(bool selected) {
    zelqRowSelection::Rows rows(selection_->rows().size());
    if (selected) {
        rows.set();
    }
    selection_->setRows(std::move(rows));
    viewport()->update();
}

std::vector<bool> zelqValueList::takeSelectedItems() {
    const zelqRowSelection::Rows& rows = selection_->rows();
    std::vector<bool> items(rows.size());
    for (auto row = rows.find_first(); row != zelqRowSelection::Rows::npos;
         row = rows.find_next(row)) {
        items[row] = true;
    }
    items_->clear();
    return items;
}

void zelqValueList::selectionChanged(const QItemSelection& selected,
                                     const QItemSelection& deselected) {
    QListView::selectionChanged(selected, deselected);
    if (QAccessible::isActive()) {
        announceInSight(selected, QAccessible::SelectionAdd);
        announceInSight(deselected, QAccessible::SelectionRemove);
    }
}

/// Tells assistive tools of the changed items in sight; there may be a million out of sight. The
/// base class has told them of the first changed item.
void zelqValueList::announceInSight(const QItemSelection& changed, QAccessible::Event type) {
    const auto [first, last] = itemsInSight();
    for (const QItemSelectionRange& range : changed) {
        for (int row = std::max(range.top(), first); row <= std::min(range.bottom(), last); ++row) {
            if (row != changed.front().top()) {
                QAccessibleEvent event(this, type);
                event.setChild(row);
                QAccessible::updateAccessibility(&event);
            }
        }
    }
}

void zelqValueList::paintEvent(QPaintEvent* event) {
    QListView::paintEvent(event);
    if (isEmpty()) {
        QPainter painter(viewport());
        painter.setPen(palette().color(QPalette::PlaceholderText));
        painter.drawText(viewport()->rect(), Qt::AlignCenter | Qt::TextWordWrap, placeholder_);
    }
    zelqRowFocus::outline(*this, visualRect(currentIndex()));
}

void zelqValueList::scrollContentsBy(int dx, int dy) {
    QListView::scrollContentsBy(dx, dy);
    noteItemsInSight();
}

void zelqValueList::updateGeometries() {
    QListView::updateGeometries();
    noteItemsInSight();
}

void zelqValueList::noteItemsInSight() {
    if (selection_ != nullptr) {
        const auto [first, last] = itemsInSight();
        selection_->setRowsInSight(first, last);
    }
}

/// The first and the last of them, both -1 if there are none.
std::pair<int, int> zelqValueList::itemsInSight() const {
    const int last = indexAt({0, viewport()->height() - 1}).row();
    return {indexAt({0, 0}).row(), last >= 0 ? last : model()->rowCount() - 1};
}
