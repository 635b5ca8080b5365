#pragma once

#include <QIcon>
#include <QMainWindow>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "output/zelqLocaleText.h"
#include "ui/zelqLogOperations.h"
#include "ui/zelqMenus.h"
#include "ui/zelqRecordContainer.h"
#include "ui/zelqRecordIcons.h"
#include "ui/zelqStatusLine.h"

class QGridLayout;
class zelqFilterOffer;
class zelqFindingsWindow;
class zelqGoToTime;
class zelqOverview;
class zelqRecordFinder;

/// The main window: record container, menu bar and status line. It is its own command handler.
class zelqBWindow : public QMainWindow {
    Q_OBJECT

public:
    /// `browser` must outlive the window.
    explicit zelqBWindow(zelqLogOperations& browser);
    ~zelqBWindow() override;

    /// Carries out a command of a menu or an accelerator; only the low 16 bits of the identifier
    /// count. False if there is no such command. One for which there is not enough memory is given
    /// up, which the status line says.
    bool command(int id);
    /// A command of the frame's system menu, whose low four bits do not count. Close ends what the
    /// application object has open and returns false, so that the frame then closes.
    bool systemCommand(int id);

    [[nodiscard]] zelqRecordContainer& container() noexcept { return *container_; }
    [[nodiscard]] zelqOverview& overview() noexcept { return *overview_; }
    [[nodiscard]] const zelqLocaleText& locale() const noexcept { return locale_; }
    [[nodiscard]] zelqStatusLine& statusLine() noexcept { return *statusLine_; }
    [[nodiscard]] zelqRecordFinder& finder() noexcept { return *finder_; }

    /// Brings what the status line and the list of findings say of the session up to date. To be
    /// called when the session has changed.
    void refresh();
    /// Does a piece of a command's work. Where there is not enough memory the status line says so.
    void attempt(const std::function<void()>& work);
    /// Makes a loaded record the current and only selected one, or says why it has no row.
    void goTo(zelqBCnrObject& record);
    /// Carries out what a user chose for a filter of a kind: installs it or, without one, removes
    /// the installed one if that is wanted.
    void applyChoice(zelqFilterKind kind, std::unique_ptr<zelqFilterStage> stage, bool removes);
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
    static const Command* findCommand(int id) noexcept;
    /// A row of the command table: a handler, and what it is called with.
    template <auto kHandler, auto... kArguments>
    static void run(zelqBWindow& window) {
        (window.*kHandler)(kArguments...);
    }

    void lackMemory();
    void setUpContainer();
    void setUpFinder(QGridLayout& layout);
    void setUpAdditions();
    void setUpAccelerators();
    void open(zelqBCnrObject* record);
    void setUpStatusLine();
    void refreshPlace() noexcept;
    void showFindings();
    void goToEntry(int slot, std::uint64_t entry);
    [[nodiscard]] static QIcon programIcon();
    enum class Logs { One, Several };
    [[nodiscard]] std::vector<std::string> askForLogs(Logs logs, int titleId, int acceptId);

    void load();
    void merge();
    void unload();
    void writeLog();
    void exit();
    void select(void (zelqRecordContainer::*change)());
    void copy();
    void filter(zelqFilterKind kind);
    void showFilter(zelqFilterKind kind, const std::shared_ptr<zelqFilterOffer>& offer);
    void removeAllFilters();
    void expandCursored(bool expand);
    void expandRows(zelqSessionDraft::Rows rows, bool expand);
    void toggleColumn(zelqColumn column);
    void displayAll();
    void displayOnly(zelqDisplayed displayed);

    zelqLogOperations& browser_;
    const zelqSession& session_;
    int waits_ = 0;              ///< reasons for the wait pointer
    bool lackedMemory_ = false;  ///< which the status line says until there is something else
    zelqLocaleText locale_;
    zelqRecordIcons icons_;
    zelqRecordContainer* container_;
    zelqRecordFinder* finder_ = nullptr;
    zelqGoToTime* goToTime_ = nullptr;
    zelqOverview* overview_;
    zelqStatusLine* statusLine_;
    zelqFindingsWindow* findings_ = nullptr;  ///< once it was asked for
    QString folder_;                          ///< of the log that was chosen last
    zelqMenus menus_;
};

/// The main window has the wait pointer while an object of this class lives.
class zelqWaitPointer {
public:
    explicit zelqWaitPointer(zelqBWindow& window) : window_(window) { window_.showWaitPointer(); }
    ~zelqWaitPointer() { window_.showNormalPointer(); }
    zelqWaitPointer(const zelqWaitPointer&) = delete;
    zelqWaitPointer& operator=(const zelqWaitPointer&) = delete;

private:
    zelqBWindow& window_;
};
