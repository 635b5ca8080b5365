#include "ui/zelqBWindow.h"

#include <QCloseEvent>
#include <QFile>
#include <QFileDialog>
#include <QGuiApplication>
#include <QMenuBar>
#include <QScreen>
#include <QShortcut>
#include <algorithm>
#include <array>

#include "dialogs/zelqBUnloadDlg.h"
#include "dialogs/zelqBWriteLog.h"
#include "filters/zelqFilters.h"
#include "output/zelqRecordFormatter.h"
#include "resources/zelqAccelerators.h"
#include "resources/zelqIds.h"
#include "resources/zelqResourceLibrary.h"

/// One row of the command table: the identifiers from first to last and what carries them out.
struct zelqBWindow::Command {
    int first;
    int last;
    void (zelqBWindow::*handler)(int id);
};

const zelqBWindow::Command* zelqBWindow::findCommand(int id) {
    static constexpr std::array kCommands{
        Command{zelqId::kLoad, zelqId::kLoad, &zelqBWindow::load},
        Command{zelqId::kMerge, zelqId::kMerge, &zelqBWindow::merge},
        Command{zelqId::kUnload, zelqId::kUnload, &zelqBWindow::unload},
        Command{zelqId::kWriteLog, zelqId::kWriteLog, &zelqBWindow::writeLog},
        Command{zelqId::kSelectAll, zelqId::kReverseSelections, &zelqBWindow::select},
        Command{zelqId::kCopy, zelqId::kCopy, &zelqBWindow::copy},
        Command{zelqId::kEntryTypeFilter, zelqId::kFunctionFilter, &zelqBWindow::filter},
        Command{zelqId::kRemoveAllFilters, zelqId::kRemoveAllFilters,
                &zelqBWindow::removeAllFilters},
        Command{zelqId::kExpand, zelqId::kUnexpand, &zelqBWindow::expandCursored},
        Command{zelqId::kExpandAll, zelqId::kUnexpandNonSelected, &zelqBWindow::expandMany},
        Command{zelqId::kFirstColumn, zelqId::kLastColumn, &zelqBWindow::toggleColumn},
        Command{zelqId::kDisplayAll, zelqId::kDisplayAll, &zelqBWindow::displayAll},
        Command{zelqId::kDisplayOnlySelected, zelqId::kDisplayOnlyNonExpanded,
                &zelqBWindow::displayOnly},
        Command{zelqId::kExit, zelqId::kExit, &zelqBWindow::exit},
    };
    const auto* const found =
        std::find_if(kCommands.begin(), kCommands.end(),
                     [id](const Command& row) { return id >= row.first && id <= row.last; });
    return found != kCommands.end() ? found : nullptr;
}

zelqBWindow::zelqBWindow(zelqLogOperations& browser)
    : browser_(browser),
      icons_(zelqResourceLibrary::dataFolders()),
      container_(new zelqRecordContainer(locale_, icons_)),
      statusLine_(new zelqStatusLine),
      menus_(*menuBar(), [this](int id) { command(id); }) {
    setObjectName(QString::number(zelqId::kMainWindow));
    setWindowTitle(zelqResourceLibrary::text(zelqId::kMainTitle));
    setUpContainer();
    setStatusBar(statusLine_);
    setUpAccelerators();
    if (const QScreen* const screen = QGuiApplication::primaryScreen()) {
        const QRect rectangle = initialRectangle(screen->size());
        move(screen->geometry().topLeft() + rectangle.topLeft());
        resize(rectangle.size());
    }
    refresh();
}

zelqBWindow::~zelqBWindow() {
    delete takeCentralWidget();  // it refers to members of this object
}

void zelqBWindow::setUpContainer() {
    container_->setAccessibleName(zelqResourceLibrary::text(zelqId::kRecordContainer));
    setCentralWidget(container_);
    connect(container_, &zelqRecordContainer::opened, this, &zelqBWindow::open);
    container_->setFocus();
    for (int id = zelqId::kFirstColumn; id <= zelqId::kLastColumn; ++id) {
        menus_.setChecked(id, true);
    }
}

void zelqBWindow::setUpAccelerators() {
    for (const zelqAccelerator& accelerator : kAccelerators) {
        auto* const shortcut = new QShortcut(QKeySequence(accelerator.key), this);
        connect(shortcut, &QShortcut::activated, this,
                [this, id = accelerator.command] { command(id); });
    }
}

QRect zelqBWindow::initialRectangle(QSize desktop) {
    const int width = static_cast<int>(static_cast<unsigned>(desktop.width()) * 3U / 5U);
    const int height = desktop.height() * 3 / 4;
    const int left = desktop.width() / 2 - width / 2;
    // The rule counts from the bottom of the desktop, Qt from the top.
    const int bottom = desktop.height() / 2 - height / 2;
    return {left, desktop.height() - (bottom + height), width, height};
}

bool zelqBWindow::command(int id) {
    const int low = id & 0xFFFF;
    const Command* const found = findCommand(low);
    if (found == nullptr) {
        return false;
    }
    (this->*found->handler)(low);
    return true;
}

bool zelqBWindow::systemCommand(int id) {
    const int masked = id & 0xFFF0;
    if (masked == zelqId::kExit) {
        browser_.mainWindowCloses();
        return false;
    }
    return command(masked);
}

void zelqBWindow::closeEvent(QCloseEvent* event) {
    event->setAccepted(!systemCommand(zelqId::kExit));
}

void zelqBWindow::refresh() {
    statusLine_->showCounts(container_->records().size(), container_->rowLimit(),
                            browser_.logs().size(), browser_.logs().logCount());
}

void zelqBWindow::showWaitPointer() {
    ++waits_;
    setCursor(Qt::WaitCursor);
}

void zelqBWindow::showNormalPointer() {
    if (--waits_ == 0) {
        unsetCursor();
    }
}

/// Asks for a log file and makes it the application object's. False if the user cancelled, which
/// leaves that without a file, or if the log is loaded already.
bool zelqBWindow::askForLog(int titleId, int acceptId) {
    QFileDialog dialog(this, zelqResourceLibrary::text(titleId));
    dialog.setOption(QFileDialog::DontUseNativeDialog);  // a native one has its own button texts
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setNameFilters({zelqResourceLibrary::text(zelqId::kLogFiles),
                           zelqResourceLibrary::text(zelqId::kAllFiles)});
    dialog.setLabelText(QFileDialog::Accept, zelqResourceLibrary::text(acceptId));
    browser_.setFileName({});
    if (dialog.exec() != QDialog::Accepted) {
        return false;
    }
    const QString name = dialog.selectedFiles().value(0);
    browser_.setFileName(QFile::encodeName(name).toStdString());
    return !name.isEmpty() && browser_.logs().isNotLoaded(browser_.fileName());
}

void zelqBWindow::load(int /*id*/) {
    if (askForLog(zelqId::kLoadDialogTitle, zelqId::kLoadDialogAccept)) {
        browser_.loadLog();
    }
}

void zelqBWindow::merge(int /*id*/) {
    if (askForLog(zelqId::kMergeDialogTitle, zelqId::kMergeDialogAccept)) {
        browser_.mergeLog();
    }
}

void zelqBWindow::unload(int /*id*/) {
    zelqBUnloadDlg dialog(browser_.logs(), this);
    if (dialog.showModally() != zelqId::kAccepted) {
        return;
    }
    const int slot = dialog.selectedLog();
    if (slot != zelqLogCollection::kNoSlot) {
        browser_.unloadLog(slot);
    }
}

void zelqBWindow::writeLog(int /*id*/) {
    zelqBWriteLog dialog(this);
    if (dialog.showModally() == zelqId::kAccepted) {
        browser_.writeLog(QFile::encodeName(dialog.fileName()).toStdString());
    }
}

void zelqBWindow::select(int id) {
    showWaitPointer();
    switch (id) {
        case zelqId::kSelectAll:
            container_->selectAllRecords();
            break;
        case zelqId::kDeselectAll:
            container_->deselectAllRecords();
            break;
        default:
            container_->reverseSelection();
            break;
    }
    showNormalPointer();
}

/// Composes the text of the selected records, or of the one with the cursor if that is not
/// selected, and drops it: nothing reaches the clipboard. Each is dropped before the next one, for
/// all of them together may not fit into the memory.
void zelqBWindow::copy(int /*id*/) {
    zelqBCnrObject* cursored = container_->cursoredRecord();
    if (cursored == nullptr) {
        return;
    }
    std::vector<zelqBCnrObject*> records = container_->recordsWhere(true);
    if (std::find(records.begin(), records.end(), cursored) == records.end()) {
        records.assign(1, cursored);
    }
    zelqRecordFormatter formatter(locale_);
    std::string text;
    for (const zelqBCnrObject* record : records) {
        text.clear();
        formatter.appendSummary(*record, text);
    }
}

void zelqBWindow::filter(int id) {
    const auto kind = static_cast<zelqFilterKind>(id - zelqId::kEntryTypeFilter + 1);
    showWaitPointer();  // there may be millions of values to collect
    std::unique_ptr<zelqFilter> dialog =
        zelqFilters::makeDialog(kind, {.records = browser_.logs(),
                                       .activeFilters = browser_.activeFilters(),
                                       .locale = locale_,
                                       .mainWindow = this});
    showNormalPointer();
    dialog->showModally();
    std::unique_ptr<zelqFilterStage> stage = dialog->takeStage();
    const bool removes = dialog->removeRequested();
    dialog.reset();
    showWaitPointer();
    // Cancel clears the mark too, though the filter stays installed.
    menus_.setChecked(id, stage != nullptr);
    if (stage != nullptr) {
        browser_.applyFilter(std::move(stage));
    } else if (removes) {
        browser_.removeFilter(kind);
    }
    // Rows that a filter by entry type or function has hidden come back at the end and stay there.
    if (kind != zelqFilterKind::EntryType && kind != zelqFilterKind::Function) {
        sortRows();
    }
    showNormalPointer();
    refresh();
}

void zelqBWindow::removeAllFilters(int /*id*/) {
    showWaitPointer();
    browser_.removeAllFilters();
    for (int id = zelqId::kEntryTypeFilter; id <= zelqId::kFunctionFilter; ++id) {
        menus_.setChecked(id, false);
    }
    showNormalPointer();
    refresh();
}

void zelqBWindow::sortRows() {
    if (!container_->records().isSorted()) {
        zelqRecordContainer::Update update(*container_);
        update.records().sort();
    }
}

/// A row that the user opens is expanded, or collapsed if it is expanded.
void zelqBWindow::open(zelqBCnrObject* record) {
    if (record != nullptr && record->hasExpansion()) {
        browser_.setExpanded({&record, 1}, !record->expanded());
    }
}

void zelqBWindow::expandCursored(int id) {
    zelqBCnrObject* record = container_->cursoredRecord();
    if (record != nullptr) {
        browser_.setExpanded({&record, 1}, id == zelqId::kExpand);
    }
}

void zelqBWindow::expandMany(int id) {
    showWaitPointer();
    switch (id) {
        case zelqId::kExpandAll:
        case zelqId::kUnexpandAll:
            browser_.setExpanded(container_->records().records(), id == zelqId::kExpandAll);
            break;
        case zelqId::kExpandSelected:
        case zelqId::kUnexpandSelected:
            browser_.setExpanded(container_->recordsWhere(true), id == zelqId::kExpandSelected);
            break;
        default:
            browser_.setExpanded(container_->recordsWhere(false), id == zelqId::kExpandNonSelected);
            break;
    }
    showNormalPointer();
}

void zelqBWindow::displayAll(int /*id*/) {
    showWaitPointer();
    if (!hiddenContainer_.empty()) {
        zelqRecordContainer::Update update(*container_);
        const bool sorts = !update.records().empty();
        hiddenContainer_.moveIf(update.records(),
                                [](std::size_t /*row*/, const zelqBCnrObject&) { return true; });
        if (sorts) {
            update.records().sort();
        }
    }
    showNormalPointer();
    refresh();
}

void zelqBWindow::displayOnly(int id) {
    const auto parks = [this, id](std::size_t row, const zelqBCnrObject& record) {
        switch (id) {
            case zelqId::kDisplayOnlySelected:
                return !container_->isRowSelected(row);
            case zelqId::kDisplayOnlyNonSelected:
                return container_->isRowSelected(row);
            case zelqId::kDisplayOnlyExpanded:
                return !record.expanded();
            default:
                return record.expanded();
        }
    };
    showWaitPointer();
    std::vector<zelqBCnrObject*> parked;
    {
        zelqRecordContainer::Update update(*container_);
        update.records().moveIf(hiddenContainer_,
                                [&parked, &parks](std::size_t row, zelqBCnrObject& record) {
                                    const bool parksIt = parks(row, record);
                                    if (parksIt) {
                                        parked.push_back(&record);
                                    }
                                    return parksIt;
                                });
    }
    if (id != zelqId::kDisplayOnlyExpanded) {
        browser_.setExpanded(parked, false);
    }
    showNormalPointer();
    refresh();
}

void zelqBWindow::exit(int /*id*/) {
    close();
}

void zelqBWindow::toggleColumn(int id) {
    const auto column = static_cast<zelqColumn>(id - zelqId::kFirstColumn);
    const bool visible = !container_->isColumnVisible(column);
    container_->setColumnVisible(column, visible);
    menus_.setChecked(id, visible);
}
