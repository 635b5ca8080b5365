#pragma once

#include <QWidget>

#include "widgets/zelqLineModel.h"

class zelqExpansionFinder;
class zelqLineCopy;
class zelqLineView;

/// The one window in which the text of expanded records is read. Closing it only hides it.
class zelqBExpansionWindow : public QWidget {
    Q_OBJECT

public:
    /// `session` and `locale` must outlive the window.
    zelqBExpansionWindow(const zelqSession& session, const zelqLocaleText& locale);
    ~zelqBExpansionWindow() override;

    [[nodiscard]] zelqLineModel& lines() noexcept { return lines_; }
    [[nodiscard]] zelqExpansionFinder& finder() noexcept { return *finder_; }
    /// Makes the window visible, before all others, without taking the keyboard from the main
    /// window.
    void present();
    /// Scrolls the record's first line into sight, and as many of the others as there is room for.
    /// Does nothing if the record is not expanded.
    void scrollTo(const zelqBCnrObject& record);
    /// Puts the window beside the main window.
    /// `belowMenus`: no higher than this where there is only room in front of that.
    void placeBeside(const QWidget& mainWindow, int belowMenus);
    /// Where a window of this size has its place beside the main window's frame on a screen.
    [[nodiscard]] static QRect placeBeside(const QRect& frame, int belowMenus, QSize size,
                                           const QRect& screen);
    void refresh();

signals:
    /// The user has closed the window, which is hidden by now.
    void closedByUser();
    /// Records of the main window's container were dropped on the lines.
    void recordsDropped();
    /// The user opened a line of this record, by double click or Return.
    void recordActivated(zelqBCnrObject* record);
    /// The user copied lines; see zelqLineView::copied().
    void copied(qint64 lines, qint64 ofLines);
    /// See zelqLineView::copyWanted().
    void copyWanted(const zelqLineCopy& lines, qint64 ofLines);
    /// The user pressed F6, which goes from window to window.
    void otherWindowAsked();

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    zelqLineModel lines_;
    zelqLineView* view_;
    zelqExpansionFinder* finder_;
};
