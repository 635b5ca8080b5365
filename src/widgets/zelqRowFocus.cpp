#include "widgets/zelqRowFocus.h"

#include <QAbstractItemView>
#include <QPainter>

void zelqRowFocus::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const {
    QStyledItemDelegate::initStyleOption(option, index);
    option->state.setFlag(QStyle::State_HasFocus, false);
}

void zelqRowFocus::outline(const QAbstractItemView& view, const QRect& row) {
    if (!view.hasFocus() || !view.currentIndex().isValid()) {
        return;
    }
    const bool selected = view.selectionModel()->isSelected(view.currentIndex());
    QPainter painter(view.viewport());
    painter.setPen(QPen(view.palette().color(selected ? QPalette::HighlightedText : QPalette::Text),
                        1, Qt::DotLine));
    painter.drawRect(row.adjusted(0, 0, -1, -1));
}
