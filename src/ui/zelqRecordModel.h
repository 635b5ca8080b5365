#pragma once

#include <QAbstractTableModel>
#include <cstddef>
#include <limits>
#include <vector>

#include "output/zelqLocaleText.h"
#include "session/zelqRecordList.h"
#include "ui/zelqRecordColumns.h"
#include "ui/zelqRecordIcons.h"

/// The records of the container as a table: a row a record, a column for each visible column. The
/// list and the columns are changed between beginChange() and endChange().
class zelqRecordModel : public QAbstractTableModel {
    Q_OBJECT

public:
    /// All three must outlive the model.
    zelqRecordModel(const zelqRecordList& records, const zelqLocaleText& locale,
                    const zelqRecordIcons& icons, QObject* parent = nullptr);

    /// As many rows as there are records, but no more than setMostRows() allows.
    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                      int role) const override;

    [[nodiscard]] bool isColumnVisible(zelqColumn column) const { return sectionOf(column) >= 0; }
    /// Takes a column out, or puts it back in its own place.
    void setColumnVisible(zelqColumn column, bool visible);
    [[nodiscard]] zelqColumn columnAt(int section) const {
        return visible_[static_cast<std::size_t>(section)];
    }
    /// Where a column stands among the visible ones, -1 if it is hidden.
    [[nodiscard]] int sectionOf(zelqColumn column) const;

    [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;
    [[nodiscard]] Qt::DropActions supportedDragActions() const override { return Qt::MoveAction; }

    /// The most rows that the view can address. To be set between beginChange() and endChange().
    void setMostRows(std::size_t rows) { mostRows_ = rows; }

    /// To be called when expand marks of these rows have changed.
    void refreshMarks(int first, int last);

    void beginChange() { beginResetModel(); }
    void endChange() { endResetModel(); }

private:
    const zelqRecordList& records_;
    const zelqLocaleText& locale_;
    const zelqRecordIcons& icons_;
    std::vector<zelqColumn> visible_;
    std::size_t mostRows_ = std::numeric_limits<int>::max();
};
