// What the main window says in its status line, and the list of findings.

#include <new>

#include "resources/zelqIds.h"
#include "resources/zelqResourceLibrary.h"
#include "ui/zelqBWindow.h"
#include "ui/zelqFindingsWindow.h"
#include "ui/zelqPlaceText.h"

namespace {

/// A menu item's text without what belongs to the menu.
QString plainItemText(int id) {
    QString text = zelqResourceLibrary::text(id).remove(u'&');
    if (text.endsWith(QStringLiteral("..."))) {
        text.chop(3);
    }
    return text;
}

}  // namespace

void zelqBWindow::setUpStatusLine() {
    setStatusBar(statusLine_);
    connect(statusLine_, &zelqStatusLine::findingsWanted, this,
            [this] { attempt([this] { showFindings(); }); });
    connect(container_->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &zelqBWindow::refreshPlace);
    connect(container_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &zelqBWindow::refreshPlace);
    connect(container_, &zelqRecordContainer::rowsGivenUp, this, &zelqBWindow::lackMemory);
}

void zelqBWindow::refresh() {
    const zelqLogCollection& logs = session_.logs();
    statusLine_->showCounts(session_.shown().size(), container_->rowLimit(), logs.size(),
                            logs.logCount());
    QStringList filters;
    for (const auto& filter : session_.filters().filters()) {
        filters += plainItemText(zelqId::kEntryTypeFilter + static_cast<int>(filter->kind()) - 1);
    }
    statusLine_->showNarrowing(filters, session_.parked().size());
    std::uint64_t findings = 0;
    for (const auto& [slot, log] : logs.logs()) {
        findings += log->findings()->total();
    }
    statusLine_->showFindings(findings);
    if (findings_ != nullptr) {
        findings_->refresh(logs);
    }
    refreshPlace();
}

/// Called for each step of the cursor and each change of the selection, also while the rows change,
/// which cannot fail.
void zelqBWindow::refreshPlace() noexcept {
    try {
        const zelqPlaceText text = zelqPlaceText::of(session_, *container_, locale_);
        statusLine_->showPlace(text.shown, text.whole);
    } catch (const std::bad_alloc&) {
        // The line says so at the next step.
    }
}

void zelqBWindow::showFindings() {
    if (findings_ == nullptr) {
        findings_ = new zelqFindingsWindow(this);
        connect(findings_, &zelqFindingsWindow::opened, this,
                [this](const zelqFindingsModel::Place& place) {
                    browser_.whenSettled([this, place] { goToEntry(place.slot, place.entry); });
                });
    }
    findings_->refresh(session_.logs());
    findings_->show();
    findings_->raise();
    findings_->activateWindow();
}

/// Makes the row of a record the current one, or says why it has none.
void zelqBWindow::goToEntry(int slot, std::uint64_t entry) {
    for (const auto& [logSlot, log] : session_.logs().logs()) {
        if (logSlot == slot && entry < log->size()) {
            goTo((*log)[entry]);
        }
    }
}

void zelqBWindow::goTo(zelqBCnrObject& record) {
    int reason = 0;
    if (session_.shown().contains(record)) {
        reason = container_->goTo(record) ? 0 : zelqId::kRecordPastRows;
    } else {
        reason =
            session_.parked().contains(record) ? zelqId::kRecordParked : zelqId::kRecordFilteredOut;
    }
    if (reason != 0) {
        statusLine_->showOutcome(zelqResourceLibrary::text(reason));
    }
}
