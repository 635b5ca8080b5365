#pragma once

#include <QTableView>
#include <array>
#include <cstddef>
#include <vector>

#include "ui/zelqRecordModel.h"

#include "session/zelqRecordList.h"

class zelqRowSelection;

/// The visible list of records in details view, several of which can be selected at a time. Keeps
/// selection, cursor and scroll position with the records, whatever happens to the rows.
class zelqRecordContainer : public QTableView {
    Q_OBJECT

public:
    /// The locale and the icons must outlive the container.
    zelqRecordContainer(const zelqLocaleText& locale, const zelqRecordIcons& icons,
                        QWidget* parent = nullptr);
    ~zelqRecordContainer() override;

    [[nodiscard]] const zelqRecordList& records() const noexcept { return records_; }
    [[nodiscard]] const zelqRecordModel& recordModel() const noexcept { return model_; }
    /// The record with the cursor, null if there is none.
    [[nodiscard]] zelqBCnrObject* cursoredRecord() const;

    /// So many records can be shown; those past them have no row.
    [[nodiscard]] std::size_t rowLimit() const;

    /// False for records that have no row. During an Update: as the rows were before it.
    [[nodiscard]] bool isRowSelected(std::size_t row) const;
    void selectAllRecords();
    void deselectAllRecords();
    void reverseSelection();
    /// The records whose row is selected, or all others, in container order.
    [[nodiscard]] std::vector<zelqBCnrObject*> recordsWhere(bool selected) const;
    /// The records of the drag that goes on, without those that were unloaded meanwhile.
    [[nodiscard]] const std::vector<zelqBCnrObject*>& draggedRecords() const noexcept {
        return dragged_;
    }
    /// To be called when expand marks have changed.
    void refreshMarks() { model_.refreshMarks(); }

    [[nodiscard]] bool isColumnVisible(zelqColumn column) const {
        return model_.isColumnVisible(column);
    }
    void setColumnVisible(zelqColumn column, bool visible);

    /// Lets the list of records be changed while nothing is drawn; the rows are shown anew when it
    /// goes. One at a time. Records that are freed meanwhile must have left the list by dropLog()
    /// or dropAll(). Selected records know it meanwhile (see zelqBCnrObject::selected()); those
    /// that have left the list when it goes know it on, and their rows are selected when they come
    /// back.
    class Update {
    public:
        explicit Update(zelqRecordContainer& container);
        ~Update();
        Update(const Update&) = delete;
        Update& operator=(const Update&) = delete;

        [[nodiscard]] zelqRecordList& records();
        /// Takes out all records because they are about to be freed.
        void dropAll();
        /// Takes out the records of one log because they are about to be freed.
        void dropLog(int logIndex);

    private:
        void noteSelection();
        void restoreSelection();

        zelqRecordContainer& container_;
        zelqBCnrObject* cursor_;
        zelqBCnrObject* top_;
        int cursorRow_;
        int topRow_;
        bool noted_ = false;                ///< the records know which of them are selected
        std::vector<zelqBCnrObject*> few_;  ///< these, or the first of them if they are many
    };

    /// Scrolls rows only: which columns are in sight is the user's choice.
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;

public slots:
    void selectAll() override { selectAllRecords(); }

signals:
    /// The user opened a row, by double click or Return.
    void opened(zelqBCnrObject* record);

protected:
    void startDrag(Qt::DropActions actions) override;
    /// Rows are the unit: Home and End go to the first and last one, Left and Right scroll.
    [[nodiscard]] QModelIndex moveCursor(CursorAction action,
                                         Qt::KeyboardModifiers modifiers) override;
    void keyPressEvent(QKeyEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
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
    void renewRowHeader();
    void setUpHeaders();
    void fitColumns();
    void noteRowsInSight();
    /// The whole width of an index's row, in the viewport.
    [[nodiscard]] QRect rowRect(const QModelIndex& index) const;
    [[nodiscard]] zelqBCnrObject* recordAt(int row) const;

    zelqRecordList records_{zelqBCnrObject::InContainer};
    zelqRecordModel model_;
    zelqRowSelection* selection_;
    std::size_t marked_ = 0;  ///< at most so many records are selected(), see Update
    std::array<int, kColumnCount> widths_{};      ///< of columns that have been sized
    std::array<bool, kColumnCount> userSized_{};  ///< these are not fitted any more
    bool fitting_ = false;
    std::vector<zelqBCnrObject*> dragged_;
    zelqBCnrObject* keptCursor_ = nullptr;  ///< while no column is visible
    zelqBCnrObject* keptTop_ = nullptr;
};
