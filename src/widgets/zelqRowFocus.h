#pragma once

#include <QStyledItemDelegate>

class QAbstractItemView;

/// Marks the row that has the focus by an outline of the whole row. The style's own mark, which
/// this delegate leaves out, is faint on a selected row and goes round one cell only.
class zelqRowFocus : public QStyledItemDelegate {
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

    /// Outlines the current row of `view` if the view has the focus. `row`: where the row stands in
    /// the viewport. To be called at the end of the view's paintEvent().
    static void outline(const QAbstractItemView& view, const QRect& row);

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
};
