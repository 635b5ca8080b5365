#include "widgets/zelqValueList.h"

#include <QAbstractListModel>
#include <utility>

#include "resources/zelqFonts.h"
#include "widgets/zelqRowFocus.h"
#include "widgets/zelqRowSelection.h"

namespace {

class Items : public QAbstractListModel {
public:
    Items(std::size_t count, std::function<QString(std::size_t)> text, QObject* parent)
        : QAbstractListModel(parent), count_(static_cast<int>(count)), text_(std::move(text)) {}

    [[nodiscard]] int rowCount(const QModelIndex& parent) const override {
        return parent.isValid() ? 0 : count_;
    }
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override {
        return role == Qt::DisplayRole ? text_(static_cast<std::size_t>(index.row())) : QVariant();
    }

private:
    int count_;
    std::function<QString(std::size_t)> text_;
};

}  // namespace

zelqValueList::zelqValueList(QWidget* parent) : QListView(parent) {
    setItemDelegate(new zelqRowDelegate(this));
    setFont(listFont());
    setSelectionMode(ExtendedSelection);
    setEditTriggers(NoEditTriggers);
    setUniformItemSizes(true);
}

void zelqValueList::setItems(std::size_t count, std::function<QString(std::size_t)> text,
                             const std::function<bool(std::size_t)>& selected) {
    auto* const items = new Items(count, std::move(text), this);
    setModel(items);
    selection_ = new zelqRowSelection(*items, this);
    const QItemSelectionModel* const replaced = selectionModel();
    setSelectionModel(selection_);
    delete replaced;
    zelqRowSelection::Rows rows(count);
    for (std::size_t item = 0; item < count; ++item) {
        rows.set(item, selected(item));
    }
    selection_->setCurrentIndex(items->index(0), QItemSelectionModel::NoUpdate);
    selection_->setRows(std::move(rows));
}

std::vector<bool> zelqValueList::selectedItems() const {
    const zelqRowSelection::Rows& rows = selection_->rows();
    std::vector<bool> items(rows.size());
    for (auto row = rows.find_first(); row != zelqRowSelection::Rows::npos;
         row = rows.find_next(row)) {
        items[row] = true;
    }
    return items;
}

void zelqValueList::selectItems(bool selected) {
    zelqRowSelection::Rows rows(selection_->rows().size());
    if (selected) {
        rows.set();
    }
    selection_->setRows(std::move(rows));
    viewport()->update();
}

void zelqValueList::paintEvent(QPaintEvent* event) {
    QListView::paintEvent(event);
    paintRowFocus(*this, visualRect(currentIndex()));
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
        const int last = indexAt({0, viewport()->height() - 1}).row();
        selection_->setRowsInSight(indexAt({0, 0}).row(),
                                   last >= 0 ? last : model()->rowCount() - 1);
    }
}
