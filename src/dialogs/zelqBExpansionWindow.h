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

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    zelqLineModel lines_;
    zelqLineView* view_;
};
