#pragma once

#include <QStatusBar>
#include <QStringList>
#include <QTimer>
#include <cstddef>
#include <cstdint>

class QProgressBar;
class QPushButton;
class zelqElidedLabel;

/// The line below the container: what is shown of what is loaded and why, what was wrong with it,
/// what the last operation came to, how far the one that runs is, and where the current row comes
/// from. Texts must be visible ones, see zelqPlainText.
class zelqStatusLine : public QStatusBar {
    Q_OBJECT

public:
    explicit zelqStatusLine(QWidget* parent = nullptr);

    /// `most`: so many records at most can be shown, which is told if they are fewer.
    void showCounts(std::size_t shown, std::size_t most, std::size_t loaded, int logs);
    /// The names of the installed filters, and how many records are parked.
    void showNarrowing(const QStringList& filters, std::size_t parked);
    /// The button appears only if there are findings.
    void showFindings(std::uint64_t count);
    /// `place`: of the current row, empty if there is none; `whole`: with the log's folders.
    void showPlace(const QString& place, const QString& whole);
    /// An operation has begun. The progress is shown only if it takes a while.
    void startProgress();
    /// How much of how much is done; before the first call that is not known.
    void showProgress(int done, int total);
    void hideProgress();
    /// What the last operation came to; empty for nothing worth saying.
    void showOutcome(const QString& outcome);
    [[nodiscard]] QString outcome() const;

signals:
    void findingsWanted();

private:
    zelqElidedLabel* records_;
    zelqElidedLabel* logs_;
    zelqElidedLabel* filters_;
    zelqElidedLabel* parked_;
    QPushButton* findings_;
    zelqElidedLabel* outcome_;
    QProgressBar* progress_;
    zelqElidedLabel* place_;
    QTimer progressDelay_;
};
