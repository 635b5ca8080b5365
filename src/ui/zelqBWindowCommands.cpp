// The main window's commands: the table of them, and what each does.

#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <algorithm>
#include <array>
#include <new>

#include <pwd.h>

#include "dialogs/zelqBUnloadDlg.h"
#include "dialogs/zelqBWriteLog.h"
#include "filters/zelqFilters.h"
#include "output/zelqRecordFormatter.h"
#include "resources/zelqIds.h"
#include "resources/zelqResourceLibrary.h"
#include "ui/zelqBWindow.h"

namespace {

/// The name with "~" or "~user" at its start replaced by the home folder, as a shell does it. It
/// stays as it is where there is no such user.
std::string expandTilde(const std::string& name) {
    if (!name.starts_with('~')) {
        return name;
    }
    const std::size_t end = std::min(name.find('/'), name.size());
    std::string home;
    if (end == 1) {
        home = QFile::encodeName(QDir::homePath()).toStdString();
        // NOLINTNEXTLINE(concurrency-mt-unsafe): no other thread asks for users
    } else if (const passwd* const user = ::getpwnam(name.substr(1, end - 1).c_str())) {
        home = user->pw_dir;
    } else {
        return name;
    }
    return home + name.substr(end);
}

}  // namespace

/// One row of the command table.
struct zelqBWindow::Command {
    int id;
    void (*run)(zelqBWindow& window);
};

const zelqBWindow::Command* zelqBWindow::findCommand(int id) noexcept {
    using W = zelqBWindow;
    using C = zelqRecordContainer;
    using Kind = zelqFilterKind;
    using Rows = zelqSessionDraft::Rows;
    using Shown = zelqDisplayed;
    static constexpr std::array kCommands{
        Command{zelqId::kLoad, run<&W::load>},
        Command{zelqId::kMerge, run<&W::merge>},
        Command{zelqId::kUnload, run<&W::unload>},
        Command{zelqId::kWriteLog, run<&W::writeLog>},
        Command{zelqId::kSelectAll, run<&W::select, &C::selectAllRecords>},
        Command{zelqId::kDeselectAll, run<&W::select, &C::deselectAllRecords>},
        Command{zelqId::kReverseSelections, run<&W::select, &C::reverseSelection>},
        Command{zelqId::kCopy, run<&W::copy>},
        Command{zelqId::kEntryTypeFilter, run<&W::filter, Kind::EntryType>},
        Command{zelqId::kTimeFilter, run<&W::filter, Kind::Time>},
        Command{zelqId::kDateFilter, run<&W::filter, Kind::Date>},
        Command{zelqId::kPidFilter, run<&W::filter, Kind::Pid>},
        Command{zelqId::kTidFilter, run<&W::filter, Kind::Tid>},
        Command{zelqId::kMajorErrorFilter, run<&W::filter, Kind::MajorError>},
        Command{zelqId::kMinorErrorFilter, run<&W::filter, Kind::MinorError>},
        Command{zelqId::kDetectPointFilter, run<&W::filter, Kind::DetectPoint>},
        Command{zelqId::kFunctionFilter, run<&W::filter, Kind::Function>},
        Command{zelqId::kRemoveAllFilters, run<&W::removeAllFilters>},
        Command{zelqId::kFirstColumn, run<&W::toggleColumn, zelqColumn::EntryType>},
        Command{zelqId::kFirstColumn + 1, run<&W::toggleColumn, zelqColumn::ExpandMark>},
        Command{zelqId::kFirstColumn + 2, run<&W::toggleColumn, zelqColumn::Time>},
        Command{zelqId::kFirstColumn + 3, run<&W::toggleColumn, zelqColumn::Date>},
        Command{zelqId::kFirstColumn + 4, run<&W::toggleColumn, zelqColumn::Pid>},
        Command{zelqId::kFirstColumn + 5, run<&W::toggleColumn, zelqColumn::Tid>},
        Command{zelqId::kFirstColumn + 6, run<&W::toggleColumn, zelqColumn::MajorError>},
        Command{zelqId::kFirstColumn + 7, run<&W::toggleColumn, zelqColumn::MinorError>},
        Command{zelqId::kFirstColumn + 8, run<&W::toggleColumn, zelqColumn::DetectPoint>},
        Command{zelqId::kFirstColumn + 9, run<&W::toggleColumn, zelqColumn::DetectPointType>},
        Command{zelqId::kFirstColumn + 10, run<&W::toggleColumn, zelqColumn::Function>},
        Command{zelqId::kExpand, run<&W::expandCursored, true>},
        Command{zelqId::kUnexpand, run<&W::expandCursored, false>},
        Command{zelqId::kExpandAll, run<&W::expandRows, Rows::All, true>},
        Command{zelqId::kUnexpandAll, run<&W::expandRows, Rows::All, false>},
        Command{zelqId::kExpandSelected, run<&W::expandRows, Rows::Selected, true>},
        Command{zelqId::kUnexpandSelected, run<&W::expandRows, Rows::Selected, false>},
        Command{zelqId::kExpandNonSelected, run<&W::expandRows, Rows::NonSelected, true>},
        Command{zelqId::kUnexpandNonSelected, run<&W::expandRows, Rows::NonSelected, false>},
        Command{zelqId::kDisplayAll, run<&W::displayAll>},
        Command{zelqId::kDisplayOnlySelected, run<&W::displayOnly, Shown::Selected>},
        Command{zelqId::kDisplayOnlyNonSelected, run<&W::displayOnly, Shown::NonSelected>},
        Command{zelqId::kDisplayOnlyExpanded, run<&W::displayOnly, Shown::Expanded>},
        Command{zelqId::kDisplayOnlyNonExpanded, run<&W::displayOnly, Shown::NonExpanded>},
        Command{zelqId::kExit, run<&W::exit>},
    };
    const auto* const found = std::ranges::find(kCommands, id, &Command::id);
    return found != kCommands.end() ? found : nullptr;
}

bool zelqBWindow::command(int id) {
    const Command* const found = findCommand(id & 0xFFFF);
    if (found == nullptr) {
        return false;
    }
    attempt([this, found] {
        const bool looksAtRow = found->id == zelqId::kCopy || found->id == zelqId::kExpand ||
                                found->id == zelqId::kUnexpand;
        if (looksAtRow) {
            browser_.whenSettled([this, found] { found->run(*this); });
        } else {
            found->run(*this);
        }
    });
    return true;
}

void zelqBWindow::attempt(const std::function<void()>& work) {
    if (lackedMemory_) {
        lackedMemory_ = false;
        statusLine_->showOutcome({});
    }
    try {
        work();
    } catch (const std::bad_alloc&) {
        lackMemory();
    }
}

void zelqBWindow::lackMemory() {
    lackedMemory_ = true;
    statusLine_->showOutcome(zelqResourceLibrary::text(zelqId::kNotEnoughMemory));
}

void zelqBWindow::load() {
    for (const std::string& name :
         askForLogs(Logs::One, zelqId::kLoadDialogTitle, zelqId::kLoadDialogAccept)) {
        browser_.load(name);
    }
}

void zelqBWindow::merge() {
    for (const std::string& name :
         askForLogs(Logs::Several, zelqId::kMergeDialogTitle, zelqId::kMergeDialogAccept)) {
        browser_.merge(name);
    }
}

/// Asks for log files, beginning in the folder of the log that was read last. Returns them in the
/// order of their names; none if the user cancelled.
std::vector<std::string> zelqBWindow::askForLogs(Logs logs, int titleId, int acceptId) {
    if (!session_.logs().logs().empty()) {
        const std::string& last = session_.logs().logName(session_.logs().logs().back().slot);
        folder_ = QFileInfo(QFile::decodeName(QByteArray::fromStdString(last))).absolutePath();
    }
    QFileDialog dialog(this, zelqResourceLibrary::text(titleId), folder_);
    dialog.setOption(QFileDialog::DontUseNativeDialog);  // a native one has its own button texts
    dialog.setFileMode(logs == Logs::One ? QFileDialog::ExistingFile : QFileDialog::ExistingFiles);
    dialog.setNameFilters({zelqResourceLibrary::text(zelqId::kLogFiles),
                           zelqResourceLibrary::text(zelqId::kAllFiles)});
    dialog.setLabelText(QFileDialog::Accept, zelqResourceLibrary::text(acceptId));
    browser_.setFileName({});
    if (dialog.exec() != QDialog::Accepted) {
        return {};
    }
    std::vector<std::string> names;
    for (const QString& name : dialog.selectedFiles()) {
        names.push_back(QFile::encodeName(name).toStdString());
    }
    std::ranges::sort(names);
    return names;
}

void zelqBWindow::unload() {
    zelqBUnloadDlg dialog(session_.logs(), this);
    if (dialog.showModally() != zelqId::kAccepted) {
        return;
    }
    const int slot = dialog.selectedLog();
    if (slot != zelqLogCollection::kNoSlot) {
        browser_.unloadLog(slot);
    }
}

void zelqBWindow::writeLog() {
    zelqBWriteLog dialog(this);
    if (dialog.showModally() == zelqId::kAccepted) {
        browser_.writeLog(expandTilde(QFile::encodeName(dialog.fileName()).toStdString()));
    }
}

void zelqBWindow::exit() {
    close();
}

void zelqBWindow::select(void (zelqRecordContainer::*change)()) {
    const zelqWaitPointer pointer(*this);
    browser_.whenSettled([this, change] { (container_->*change)(); });
}

/// Composes the text of the selected records, or of the one with the cursor if that is not
/// selected, and drops it: nothing reaches the clipboard. Each is dropped before the next one, for
/// all of them together may not fit into the memory.
void zelqBWindow::copy() {
    zelqBCnrObject* cursored = container_->cursoredRecord();
    if (cursored == nullptr) {
        return;
    }
    zelqRowSelection::Rows rows = container_->rowsSelected();
    const auto current = static_cast<std::size_t>(container_->currentIndex().row());
    const bool isSelected = current < rows.size() && rows.test(current);
    const auto compose = [this, rows = isSelected ? std::move(rows) : zelqRowSelection::Rows(),
                          cursored](const std::stop_token& stop) {
        zelqRecordFormatter formatter(locale_);
        zelqTextBuffer text;
        const auto append = [&formatter, &text](const zelqBCnrObject& record) {
            text.clear();
            formatter.appendSummary(record, text);
        };
        // An operation before this one may have changed the rows.
        if (rows.empty() && session_.logs().has(*cursored)) {
            append(*cursored);
        }
        const auto records = session_.shown().records();
        for (auto row = rows.find_first(); row < records.size() && !stop.stop_requested();
             row = rows.find_next(row)) {
            append(*records[row]);
        }
    };
    browser_.lookUp(compose, [] {});
}

void zelqBWindow::filter(zelqFilterKind kind) {
    const auto offer = std::make_shared<std::shared_ptr<zelqFilterOffer>>();
    const auto collect = [this, kind, offer](const std::stop_token&) {
        *offer = std::make_shared<zelqFilterOffer>(kind, session_.logs(), session_.filters());
    };
    struct State {
        bool isLater = false;
        bool isDone = false;
    };
    const auto state = std::make_shared<State>();
    {
        const zelqWaitPointer pointer(*this);  // there may be millions of values to collect
        const auto note = [this, kind, offer, state] {
            state->isDone = true;
            if (!state->isLater) {
                return;
            }
            // After the operation, of which the dialog is no part.
            QMetaObject::invokeMethod(
                this, [this, kind, offer] { attempt([&] { showFilter(kind, *offer); }); },
                Qt::QueuedConnection);
        };
        browser_.lookUp(collect, note);
        state->isLater = true;
    }
    if (state->isDone) {
        showFilter(kind, *offer);
    }
}

void zelqBWindow::showFilter(zelqFilterKind kind, const std::shared_ptr<zelqFilterOffer>& offer) {
    std::unique_ptr<zelqFilter> dialog =
        zelqFilters::makeDialog(kind, {.offer = offer, .locale = locale_, .mainWindow = this});
    dialog->showModally();
    std::unique_ptr<zelqFilterStage> stage = dialog->takeStage();
    const bool removes = dialog->removeRequested();
    dialog.reset();
    const zelqWaitPointer pointer(*this);
    applyChoice(kind, std::move(stage), removes);
}

void zelqBWindow::applyChoice(zelqFilterKind kind, std::unique_ptr<zelqFilterStage> stage,
                              bool removes) {
    const bool installs = stage != nullptr;
    // Rows that a filter by entry type or function has hidden come back at the end and stay there.
    const bool sorts = kind != zelqFilterKind::EntryType && kind != zelqFilterKind::Function;
    const auto steps = [kind, filter = std::shared_ptr(std::move(stage)), removes,
                        sorts](zelqSessionDraft& draft) {
        if (filter != nullptr) {
            draft.applyFilter(*filter);
        } else if (removes) {
            draft.removeFilter(kind);
        }
        if (sorts) {
            draft.sortShown();
        }
    };
    browser_.change(steps, [this, kind, installs](const zelqSessionDraft&) {
        // Cancel clears the mark too, though the filter stays installed.
        menus_.setChecked(zelqId::kEntryTypeFilter + static_cast<int>(kind) - 1, installs);
        refresh();
    });
}

void zelqBWindow::removeAllFilters() {
    const zelqWaitPointer pointer(*this);
    browser_.change([](zelqSessionDraft& draft) { draft.removeAllFilters(); },
                    [this](const zelqSessionDraft&) {
                        for (int id = zelqId::kEntryTypeFilter; id <= zelqId::kFunctionFilter;
                             ++id) {
                            menus_.setChecked(id, false);
                        }
                        refresh();
                    });
}

/// A row that the user opens is expanded, or collapsed if it is expanded.
void zelqBWindow::open(zelqBCnrObject* record) {
    if (record->hasExpansion()) {
        attempt([this, record] { browser_.setExpanded({&record, 1}, !record->expanded()); });
    }
}

void zelqBWindow::expandCursored(bool expand) {
    zelqBCnrObject* record = container_->cursoredRecord();
    if (record != nullptr) {
        browser_.setExpanded({&record, 1}, expand);
    }
}

void zelqBWindow::expandRows(zelqSessionDraft::Rows rows, bool expand) {
    const zelqWaitPointer pointer(*this);
    browser_.setRowsExpanded(rows, expand);
}

void zelqBWindow::toggleColumn(zelqColumn column) {
    const bool visible = !container_->isColumnVisible(column);
    container_->setColumnVisible(column, visible);
    menus_.setChecked(zelqId::kFirstColumn + static_cast<int>(column), visible);
}

void zelqBWindow::displayAll() {
    const zelqWaitPointer pointer(*this);
    browser_.change([](zelqSessionDraft& draft) { draft.displayAll(); },
                    [this](const zelqSessionDraft&) { refresh(); });
}

void zelqBWindow::displayOnly(zelqDisplayed displayed) {
    const zelqWaitPointer pointer(*this);
    browser_.change([displayed](zelqSessionDraft& draft) { draft.displayOnly(displayed); },
                    [this](const zelqSessionDraft&) { refresh(); });
}
