#pragma once

#include <QObject>

class QDropEvent;
class zelqLogOperations;

/// Loads or merges the files that are dropped on a window. Only what is no file by its kind is
/// refused here; whether a file is a log is found out when it is read. Records that are dragged
/// inside the program are left to whoever takes them.
class zelqFileDrop : public QObject {
    Q_OBJECT

public:
    /// Becomes the window's child. `operations` must outlive it.
    zelqFileDrop(QWidget& window, zelqLogOperations& operations);

    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    static bool accept(QDropEvent& event);
    void take(const QDropEvent& event);

    zelqLogOperations& operations_;
};
