#pragma once

#include <QStatusBar>
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
    /// `total` 0: it is not known how much there is to do.
    void showProgress(std::uint64_t done, std::uint64_t total);
    void hideProgress();

private:
    QLabel* records_;
    QLabel* logs_;
    QProgressBar* progress_;
};
