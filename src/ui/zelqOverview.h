#pragma once

#include <QAbstractSlider>
#include <QTimer>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <thread>
#include <vector>

#include "session/zelqErrorRows.h"
#include "session/zelqSession.h"
#include "widgets/zelqRowSelection.h"

class zelqRecordContainer;
class zelqLocaleText;

/// A narrow picture of all rows beside the table's scroll bar, from the first row at its top to the
/// last one: how dense errors are, and where matches, selected rows, marks, the current row and the
/// rows in sight are. Each has a place or a shape of its own, so that no colour is needed. The
/// value is the current row; arrow keys, clicks and assistive tools change it.
///
/// Where there are many rows, errors are judged by samples at first and counted on a thread, which
/// is joined before the rows change.
class zelqOverview : public QAbstractSlider {
    Q_OBJECT

public:
    /// All must outlive the overview.
    zelqOverview(zelqRecordContainer& table, const zelqSession& session,
                 const zelqLocaleText& locale, QWidget* parent = nullptr);
    ~zelqOverview() override;

    /// The rows that a search has found: a bit each, from the lowest one of the first word on. They
    /// are forgotten when the rows change.
    void setMatches(const std::vector<std::uint64_t>& bits);

    /// What is shown at one height of the picture, a pixel or more.
    struct Line {
        std::size_t first;  ///< row
        std::size_t end;
        double errors;  ///< the share of errors among the rows, 0 to 1
        bool match;
        bool selected;
        bool marked;
    };
    /// The lines of a picture that is this high in pixels, from top to bottom.
    [[nodiscard]] std::vector<Line> lines(int height) const;
    /// False until all errors are counted.
    [[nodiscard]] bool isExact() const noexcept { return exact_; }

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void stop() noexcept;
    void rowsChanged() noexcept;
    void countErrors();
    void takeCounted();
    void follow();
    void setSteps();
    void goTo(int y);
    [[nodiscard]] std::size_t rowCount() const;
    [[nodiscard]] zelqErrorRows::Rows records() const;
    [[nodiscard]] double errorShare(std::size_t first, std::size_t end) const;
    [[nodiscard]] QRect picture() const;
    [[nodiscard]] std::size_t lineAt(int y) const;
    [[nodiscard]] std::size_t remarkableRow(std::size_t first, std::size_t end) const;
    [[nodiscard]] QString tipAt(int y) const;
    void paintLine(QPainter& painter, const Line& line, double top, double bottom) const;
    void paintCurrent(QPainter& painter, const QRect& area) const;

    zelqRecordContainer& table_;
    const zelqSession& session_;
    const zelqLocaleText& locale_;
    zelqErrorRows errors_;
    bool exact_ = true;
    std::vector<double> sampled_;  ///< the shares of errors for as many lines, until exact_
    zelqRowSelection::Rows matches_;
    std::vector<std::size_t> marks_;
    bool follows_ = false;                  ///< the value changes because the current row did
    QTimer look_;                           ///< at whether the thread has counted
    std::optional<zelqErrorRows> counted_;  ///< what the thread came to
    std::atomic<bool> hasCounted_ = false;
    std::jthread counter_;  // last: it uses the rest
};
