#pragma once

#include <QObject>
#include <cstddef>
#include <vector>

#include "session/zelqSession.h"

class zelqBWindow;
class zelqLogOperations;

/// The marks that users set on records to find them again, and the keys for them: Ctrl+F2 sets a
/// mark on the current record or takes it away, F2 and Shift+F2 go to the next one and the one
/// before.
class zelqRowMarks : public QObject {
    Q_OBJECT

public:
    /// Becomes the window's child. `operations` must outlive it.
    zelqRowMarks(zelqBWindow& window, zelqLogOperations& operations);

    void toggle();
    enum class Direction { Down, Up };
    /// Goes to the nearest marked row; past the last one it goes on from the other end.
    void go(Direction direction);
    void selectMarked();

    /// The rows of the marked records that are shown and stand before `end`, ascending. O(log n) a
    /// mark while the rows are in order, else O(n).
    [[nodiscard]] static std::vector<std::size_t> rows(const zelqSession& session, std::size_t end);

private:
    [[nodiscard]] std::vector<std::size_t> rowsInTable() const;
    void say(int textId);

    zelqBWindow& window_;
    zelqLogOperations& operations_;
};
