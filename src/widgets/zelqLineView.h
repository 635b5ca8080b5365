#pragma once

#include <QListView>
#include <QtGlobal>
#include <optional>
#include <vector>

#include "session/zelqExpandedRecords.h"
#include "widgets/zelqUniformRows.h"

class zelqBCnrObject;
class zelqLineCopy;
class zelqLineModel;

/// A list of lines in a fixed-width font. QListView itself lays out every line, which takes seconds
/// and gigabytes for what a million expanded records have.
class zelqLineView : public zelqUniformRows<QListView> {
    Q_OBJECT

public:
    /// `model` must outlive the view.
    explicit zelqLineView(zelqLineModel& model, QWidget* parent = nullptr);

    [[nodiscard]] QRect visualRect(const QModelIndex& index) const override;
    [[nodiscard]] int rowHeight() const override;
    void doItemsLayout() override;

    /// Characters of a line, from `column` on.
    struct Piece {
        int line;
        int column;
        int size;
    };
    /// Shows characters as selected, in place of lines, and makes the line of the first one the
    /// current one. They stay so until lines are selected, go or come.
    void selectPieces(std::vector<Piece> pieces);
    /// True if lines or characters of them are selected.
    [[nodiscard]] bool hasSelectedText() const {
        return selectionModel()->hasSelection() || !pieces_.empty();
    }
    /// Goes to the record of the current line, as opening the line does.
    void activateCurrent() { activate(currentIndex()); }
    /// Puts the selected lines or characters on the clipboard, see copied() and copyWanted().
    void copySelection();

signals:
    /// Records were dropped on the lines.
    void recordsDropped();
    /// The user opened a line of this record, by double click or Return.
    void recordActivated(zelqBCnrObject* record);
    /// The user copied lines: `lines` of the `ofLines` that are selected are on the clipboard now.
    /// They are fewer if a million does not hold all; if the memory does not, they are none, and
    /// the clipboard has what it had.
    void copied(qint64 lines, qint64 ofLines);
    /// In place of that: lines are to be copied that have to be read from the disk.
    void copyWanted(const zelqLineCopy& lines, qint64 ofLines);

protected:
    [[nodiscard]] int horizontalOffset() const override;
    [[nodiscard]] int columnAtPoint(int /*x*/) const override { return 0; }
    void setSelection(const QRect& rectangle, QItemSelectionModel::SelectionFlags flags) override;
    void updateGeometries() override;
    void scrollContentsBy(int dx, int dy) override;
    void selectionChanged(const QItemSelection& selected,
                          const QItemSelection& deselected) override;
    void rowsInserted(const QModelIndex& parent, int start, int end) override;
    void rowsAboutToBeRemoved(const QModelIndex& parent, int start, int end) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void keyboardSearch(const QString& /*search*/) override {}
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    [[nodiscard]] int contentWidth() const;
    void activate(const QModelIndex& index);
    [[nodiscard]] QRect pieceRect(const Piece& piece) const;
    [[nodiscard]] QString pieceText(const Piece& piece) const;
    void dropPieces();
    void paintPieces(QPainter& painter) const;
    void copyPieces() const;

    // When many records come or go, what was on top and the current line stay, if they still exist.
    void notePlaces();
    void restorePlaces();
    [[nodiscard]] int rowOf(const std::optional<zelqExpandedRecords::Place>& place) const;

    zelqLineModel& model_;
    std::vector<Piece> pieces_;  ///< characters shown as selected
    // While the model is reset:
    std::optional<zelqExpandedRecords::Place> top_;
    std::optional<zelqExpandedRecords::Place> current_;
};
