#pragma once

#include <QStyledItemDelegate>

class QAbstractItemView;

/// Leaves out the style's mark of the item that has the focus: it is faint on a selected row and
/// goes round one cell only. See paintRowFocus().
class zelqRowDelegate : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};

/// Outlines the current row, which fills `row` in the viewport, if the view has the focus. To be
/// called at the end of the view's paintEvent().
void paintRowFocus(const QAbstractItemView& view, const QRect& row);
