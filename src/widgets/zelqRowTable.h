#pragma once

#include <QTableView>

#include "widgets/zelqUniformRows.h"

/// A table of rows of one height without a header of rows. QTableView keeps eight bytes for each
/// row and adds them up whenever rows come or go, which holds the program for a tenth of a second
/// at 20 million rows, and it places rows by pixels, of which there are 2^31. Here it knows of no
/// rows; columns, their header and all else are QTableView's.
class zelqRowTable : public zelqUniformRows<QTableView> {
    Q_OBJECT

public:
    using zelqUniformRows::zelqUniformRows;

    /// To be called once, in place of setModel() and setSelectionModel(). Both must outlive the
    /// table, or be its children.
    void setRows(QAbstractItemModel& model, QItemSelectionModel& selection);

    [[nodiscard]] QRect visualRect(const QModelIndex& index) const override;
    void reset() override;

protected:
    [[nodiscard]] int columnAtPoint(int x) const override { return columnAt(x); }
    void setSelection(const QRect& rectangle, QItemSelectionModel::SelectionFlags flags) override;
    void updateGeometries() override;
    void scrollContentsBy(int dx, int dy) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void updateColumnRange();
    void paintRow(QPainter& painter, QStyleOptionViewItem& option, int row, const QRegion& area,
                  const QModelIndex& pointed) const;

    bool isLayingOut_ = false;
};
