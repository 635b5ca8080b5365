#pragma once

#include <QObject>
#include <QPoint>
#include <optional>

#include "session/zelqRecordTest.h"

class QMenu;
class zelqBWindow;
class zelqLogOperations;
class zelqRowMarks;

/// The context menu of the current row: filters by its value of a column, and what can be done with
/// the row or the selected rows. Whoever has something more to offer adds an action to the table.
class zelqRowMenu : public QObject {
    Q_OBJECT

public:
    /// Becomes the window's child. The others must outlive it.
    zelqRowMenu(zelqBWindow& window, zelqLogOperations& operations, zelqRowMarks& marks);

    /// Shows the menu at a place on the screen. `section`: the column in the table for whose value
    /// it offers filters; -1 for the current one, or the entry type if that has no filter.
    void popUp(const QPoint& where, int section);

private:
    [[nodiscard]] std::optional<zelqFilterKind> kindFor(int section) const;
    void fill(QMenu& menu, const zelqBCnrObject& record, std::optional<zelqFilterKind> kind);
    void addFilters(QMenu& menu, const zelqBCnrObject& record, zelqFilterKind kind);
    enum class Shows { Only, Others };
    void filter(zelqFilterKind kind, Shows shows);
    void selectAllWith(zelqFilterKind kind);
    enum class Copies { Rows, RowsAndData };
    void copy(Copies what);

    zelqBWindow& window_;
    zelqLogOperations& operations_;
    zelqRowMarks& marks_;
};
