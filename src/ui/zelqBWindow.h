#pragma once

#include <QMainWindow>

#include "output/zelqLocaleText.h"
#include "ui/zelqLogOperations.h"
#include "ui/zelqMenus.h"
#include "ui/zelqRecordContainer.h"
#include "ui/zelqRecordIcons.h"
#include "ui/zelqStatusLine.h"

/// The main window: record container, menu bar and status line. It is its own command handler.
class zelqBWindow : public QMainWindow {
    Q_OBJECT

public:
    /// `browser` must outlive the window.
    explicit zelqBWindow(zelqLogOperations& browser);
    ~zelqBWindow() override;

    /// Carries out a command of a menu or an accelerator; only the low 16 bits of the identifier
    /// count. False if there is no such command.
    bool command(int id);
    /// A command of the frame's system menu, whose low four bits do not count. Close ends what the
    /// application object has open and returns false, so that the frame then closes.
    bool systemCommand(int id);

    [[nodiscard]] zelqRecordContainer& container() noexcept { return *container_; }
    [[nodiscard]] zelqRecordList& hiddenContainer() noexcept { return hiddenContainer_; }
    [[nodiscard]] const zelqLocaleText& locale() const noexcept { return locale_; }
    [[nodiscard]] zelqStatusLine& statusLine() noexcept { return *statusLine_; }

    /// Brings the counts of the status line up to date.
    void refresh();
    /// Come in pairs, which may be nested.
    void showWaitPointer();
    void showNormalPointer();

    /// Where the window stands at first on a desktop of the given size: three fifths of its width,
    /// three quarters of its height, centred.
    [[nodiscard]] static QRect initialRectangle(QSize desktop);

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    struct Command;
    static const Command* findCommand(int id);

    void setUpContainer();
    void setUpAccelerators();
    void open(zelqBCnrObject* record);

    void sortRows();
    [[nodiscard]] bool askForLog(int titleId, int acceptId);

    void load(int id);
    void merge(int id);
    void unload(int id);
    void writeLog(int id);
    void exit(int id);
    void select(int id);
    void copy(int id);
    void filter(int id);
    void removeAllFilters(int id);
    void expandCursored(int id);
    void expandMany(int id);
    void toggleColumn(int id);
    void displayAll(int id);
    void displayOnly(int id);

    zelqLogOperations& browser_;
    int waits_ = 0;  ///< reasons for the wait pointer
    zelqLocaleText locale_;
    zelqRecordIcons icons_;
    zelqRecordList hiddenContainer_{zelqBCnrObject::InHiddenContainer};
    zelqRecordContainer* container_;
    zelqStatusLine* statusLine_;
    zelqMenus menus_;
};
