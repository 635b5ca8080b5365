#pragma once

#include <QWidget>

#include "widgets/zelqLineModel.h"

class zelqLineView;

/// The one window in which the text of expanded records is read. Closing it only hides it.
class zelqBExpansionWindow : public QWidget {
    Q_OBJECT

public:
    /// `session` and `locale` must outlive the window.
    zelqBExpansionWindow(const zelqSession& session, const zelqLocaleText& locale);
    ~zelqBExpansionWindow() override;

    [[nodiscard]] zelqLineModel& lines() noexcept { return lines_; }
    /// Makes the window visible without taking the keyboard from the main window.
    void present();
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
    /// The user pressed F6, which goes from window to window.
    void otherWindowAsked();

protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    zelqLineModel lines_;
    zelqLineView* view_;
};
