#pragma once

#include <QAccessible>
#include <array>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

#include "session/zelqSession.h"
#include "ui/zelqRecordModel.h"
#include "widgets/zelqRowSelection.h"
#include "widgets/zelqRowTable.h"

/// The visible list of records in details view, several of which can be selected at a time. Keeps
/// selection, cursor and scroll position with the records, whatever happens to the rows.
class zelqRecordContainer : public zelqRowTable, public zelqRowsView {
    Q_OBJECT

public:
    /// All three must outlive the container.
    zelqRecordContainer(const zelqSession& session, const zelqLocaleText& locale,
                        const zelqRecordIcons& icons, QWidget* parent = nullptr);
    ~zelqRecordContainer() override;

    [[nodiscard]] const zelqRecordModel& recordModel() const noexcept { return model_; }
    /// The record with the cursor, null if there is none.
    [[nodiscard]] zelqBCnrObject* cursoredRecord() const;

    /// The record of a row; null if there is none.
    [[nodiscard]] zelqBCnrObject* recordAt(int row) const;

    /// Makes the row of a shown record the current and only selected one and scrolls it to the
    /// middle. False if it has no row.
    bool goTo(zelqBCnrObject& record);
    /// The same for the record of a row; one that is in sight is not scrolled.
    bool goTo(std::size_t row);
    /// The same for a row, if there is one, but what is selected stays.
    void goToRow(int row);

    /// So many records can be shown; those past them have no row.
    [[nodiscard]] std::size_t rowLimit() const override { return rowLimit_; }
    /// Sets fewer. To be called before there are records.
    void setRowLimit(std::size_t rows) { rowLimit_ = rows; }
    [[nodiscard]] int rowHeight() const override;

    void selectAllRecords();
    void deselectAllRecords();
    void reverseSelection();
    void selectRows(zelqRowSelection::Rows rows) { selection_->setRows(std::move(rows)); }
    [[nodiscard]] const Rows& rowsSelected() const noexcept override { return selection_->rows(); }
    /// While it is held the user cannot change it.
    void holdSelection(bool holds) { selection_->hold(holds); }
    /// How many rows are selected, and between which.
    [[nodiscard]] const zelqRowSelection::Summary& selectionSummary() const {
        return selection_->summary();
    }
    /// To be called when a bookmark was set on a record or taken away.
    void bookmarkChanged(const zelqBCnrObject& record);
    /// The records whose row is selected, in container order.
    [[nodiscard]] std::vector<zelqBCnrObject*> selectedRecords() const;
    /// All others, also those that have no row.
    [[nodiscard]] std::vector<zelqBCnrObject*> nonSelectedRecords() const;
    /// True while the selected records are dragged.
    [[nodiscard]] bool isDragging() const noexcept { return isDragging_; }
    [[nodiscard]] bool isColumnVisible(zelqColumn column) const {
        return model_.isColumnVisible(column);
    }
    void setColumnVisible(zelqColumn column, bool visible);

    // The rows follow the session's. Selection, cursor and scroll position stay with the records
    // meanwhile; a record that is not shown keeps whether it is selected, and its row is selected
    // when it comes back.
    void rowsAboutToChange() noexcept override;
    void rowsChanged(Rows selected) noexcept override;
    void recordsAboutToGo(int slot) noexcept override;
    void marksChanged(const zelqBCnrObject* one) noexcept override;

public slots:
    void selectAll() override { selectAllRecords(); }

signals:
    /// The user opened a row, by double click or Return.
    void opened(zelqBCnrObject* record);
    /// The user wants the menu of the current row, at a place on the screen. `section`: the column
    /// under the pointer, -1 if the keyboard asks.
    void menuWanted(const QPoint& where, int section);
    void bookmarksChanged();
    /// There was no memory for the rows, and none are visible until they change again.
    void rowsGivenUp();

protected:
    void startDrag(Qt::DropActions actions) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;
    /// The width that a column gets by a double click on the right edge of its heading.
    [[nodiscard]] int sizeHintForColumn(int section) const override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    /// No search by typing: the keys are the accelerators'.
    void keyboardSearch(const QString& /*search*/) override {}
    void scrollContentsBy(int dx, int dy) override;
    void updateGeometries() override;
    void selectionChanged(const QItemSelection& selected,
                          const QItemSelection& deselected) override;
    /// The first of them only, for the table asks no more than whether there is one to drag.
    [[nodiscard]] QModelIndexList selectedIndexes() const override;

private:
    /// What is noted of the rows while they change.
    struct Change {
        zelqBCnrObject* cursor;
        zelqBCnrObject* top;
        int cursorRow;
        int topRow;
    };

    void beginChange();
    void endChange(zelqRowSelection::Rows rows);
    void showNoRows();
    void restorePlaces(const Change& change);
    [[nodiscard]] std::vector<zelqBCnrObject*> recordsOf(const zelqRowSelection::Rows& rows) const;
    void setUpHeaders();
    void fitColumns();
    void forgetFittedWidths() noexcept;
    [[nodiscard]] int fittedWidth(zelqColumn column, const zelqColumnExtremes& extremes) const;
    void announce(int row, int section, QAccessible::Event change);
    void paintBookmarks();
    [[nodiscard]] int rowOf(const zelqBCnrObject& record) const;
    void noteRowsInSight();
    /// The whole width of an index's row, in the viewport.
    [[nodiscard]] QRect rowRect(const QModelIndex& index) const;

    const zelqLogCollection& logs_;
    const zelqRecordList& records_;
    const zelqLocaleText& locale_;
    zelqRecordModel model_;
    zelqRowSelection* selection_;
    std::size_t rowLimit_;
    std::optional<Change> change_;
    /// Of columns that the user has sized; of the others, the widest that they were fitted to.
    std::array<int, kColumnCount> widths_{};
    std::array<bool, kColumnCount> userSized_{};  ///< these are not fitted any more
    bool fitting_ = false;
    bool isDragging_ = false;
    zelqBCnrObject* keptCursor_ = nullptr;  ///< while no column is visible
    zelqBCnrObject* keptTop_ = nullptr;
};
