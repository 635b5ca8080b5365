#pragma once

#include <QStatusBar>
#include <QTimer>
#include <cstddef>
#include <cstdint>

class QLabel;
class QProgressBar;

/// The line below the container: how many records are shown, how many logs are loaded and, while a
/// log is read, how far that is.
class zelqStatusLine : public QStatusBar {
    Q_OBJECT

public:
    explicit zelqStatusLine(QWidget* parent = nullptr);

    /// `most`: so many records at most can be shown, which is told if they are fewer.
    void showCounts(std::size_t shown, std::size_t most, std::size_t loaded, int logs);
    /// An operation has begun. The progress is shown only if it takes a while.
    void startProgress();
    /// How much of how much is done; before the first call that is not known.
    void showProgress(int done, int total);
    void hideProgress();
    /// What the last operation came to; empty for nothing worth saying.
    void showOutcome(const QString& outcome);

private:
    QLabel* records_;
    QLabel* logs_;
    QLabel* outcome_;
    QProgressBar* progress_;
    QTimer progressDelay_;
};
