// Changes of what is shown: at once, or in the queue of operations and prepared in a thread.

#include <algorithm>
#include <new>
#include <utility>

#include "app/zelqBrowser.h"
#include "dialogs/zelqExpansionFinder.h"
#include "resources/zelqIds.h"
#include "resources/zelqResourceLibrary.h"
#include "ui/zelqRecordFinder.h"

/// True while a change runs or waits that what is asked for now has to wait for.
bool zelqBrowser::isChanging() const noexcept {
    return acting_ < 0 && (changing_ || std::ranges::any_of(waiting_, &Job::changes));
}

void zelqBrowser::change(Steps steps, Done done) {
    if (!isChanging() && session_.logs().size() <= mostAtOnce_) {
        zelqSessionDraft draft(session_);
        draft.prepare(steps);
        session_.commit(draft);
        if (done) {
            done(draft);
        }
        return;
    }
    start({.start =
               [this, steps = std::move(steps), done = std::move(done)] {
                   const auto outcome = [this] { return mainWindow_->statusLine().outcome(); };
                   startChange(steps, done, outcome, nullptr);
               },
           .changes = true});
}

/// Prepares a change in a thread, puts it in place and finishes the operation. `done` may be null,
/// and `failed`, which finishes the operation where there was no memory.
void zelqBrowser::startChange(const Steps& steps, const Done& done, const Outcome& outcome,
                              const Failed& failed) {
    draft_ = std::make_shared<zelqSessionDraft>(session_);
    changing_ = true;
    hold(true);
    const auto work = [this, draft = draft_, steps, done,
                       outcome](const zelqLogWorker::Control& control) -> zelqLogWorker::Delivery {
        draft->prepare(steps, control.stop);
        return [this, done, outcome] {
            auto ready = std::exchange(draft_, nullptr);
            hold(false);
            session_.commit(*ready);
            if (done) {
                mainWindow_->attempt([&] { done(*ready); });
            }
            worker_.free(std::move(ready));  // the last to know it, or it would be freed here
            finish(outcome);
        };
    };
    const auto givenUp = [this, failed](const zelqStatus& status) {
        draft_.reset();
        hold(false);
        if (failed) {
            failed(status);
        } else {
            finish([] { return zelqResourceLibrary::text(zelqId::kNotEnoughMemory); });
        }
    };
    try {
        worker_.start(work, givenUp, zelqLogWorker::WithoutThread::Works);
    } catch (const std::bad_alloc&) {
        draft_.reset();
        hold(false);
        throw;
    }
}

/// While a change is prepared the selection stays as it is, and searches go nowhere.
void zelqBrowser::hold(bool holds) {
    mainWindow_->container().holdSelection(holds);
    mainWindow_->finder().hold(holds);
    if (expansionWindow_ != nullptr) {
        expansionWindow_->finder().hold(holds);
    }
}

void zelqBrowser::whenSettled(std::function<void()> work) {
    if (!isChanging()) {
        mainWindow_->attempt(work);
        return;
    }
    start({.start = [this, work = std::move(work)] { act(work); }, .changes = true});
}

/// Does the GUI thread's part of an operation, and finishes it. What this asks for comes next.
void zelqBrowser::act(const std::function<void()>& work) {
    acting_ = 0;
    mainWindow_->attempt(work);
    acting_ = -1;
    finish([this] { return mainWindow_->statusLine().outcome(); });
}

void zelqBrowser::lookUp(Look look, std::function<void()> done) {
    if (!isChanging() && session_.logs().size() <= mostAtOnce_) {
        look({});
        done();
        return;
    }
    const auto work = [this, look = std::move(look), done = std::move(done)](
                          const zelqLogWorker::Control& control) -> zelqLogWorker::Delivery {
        look(control.stop);
        return [this, done] { act(done); };
    };
    const auto failed = [this](const zelqStatus&) {
        finish([] { return zelqResourceLibrary::text(zelqId::kNotEnoughMemory); });
    };
    start({.start = [this, work,
                     failed] { worker_.start(work, failed, zelqLogWorker::WithoutThread::Works); },
           .changes = true});
}

void zelqBrowser::applyFilter(std::unique_ptr<zelqFilterStage> filter) {
    change([filter = std::shared_ptr(std::move(filter))](
               zelqSessionDraft& draft) { draft.applyFilter(*filter); },
           nullptr);
}

void zelqBrowser::setRowsExpanded(zelqSessionDraft::Rows rows, bool expand) {
    using Rows = zelqSessionDraft::Rows;
    if (!isChanging() && session_.logs().size() <= mostAtOnce_) {
        const zelqRecordContainer& table = mainWindow_->container();
        const auto shown = session_.shown().records();
        setExpanded(rows == Rows::Selected ? table.selectedRecords()
                    : rows == Rows::NonSelected
                        ? table.nonSelectedRecords()
                        : zelqSessionDraft::Records(shown.begin(), shown.end()),
                    expand);
        return;
    }
    if (expand && expansionWindow_ == nullptr) {
        setUpExpansionWindow();  // which knows how long lines are
    }
    change([rows, expand](zelqSessionDraft& draft) { draft.setExpanded(rows, expand); },
           [this](const zelqSessionDraft& draft) { showExpanded(draft.expands()); });
}

void zelqBrowser::setExpanded(std::span<zelqBCnrObject* const> records, bool expand) {
    if (isChanging()) {
        const zelqSessionDraft::Records all(records.begin(), records.end());
        whenSettled([this, all, expand] {
            if (std::ranges::all_of(
                    all, [this](const auto* one) { return session_.logs().has(*one); })) {
                setExpanded(all, expand);
            }
        });
        return;
    }
    const bool addsLines =
        expand && std::any_of(records.begin(), records.end(),
                              [](const zelqBCnrObject* record) { return record->opensToExpand(); });
    if (addsLines && expansionWindow_ == nullptr) {
        setUpExpansionWindow();
    }
    session_.setExpanded(records, expand);
    const bool showsOne = expand && records.size() == 1 && records.front()->expanded();
    showExpanded(addsLines || showsOne);
    if (showsOne && expansionWindow_ != nullptr) {
        expansionWindow_->scrollTo(*records.front());
    }
}

void zelqBrowser::showExpanded(bool addsLines) {
    if (expansionWindow_ != nullptr) {
        expansionWindow_->refresh();
        if (addsLines) {
            expansionWindow_->present();
        }
    }
}

/// Expands the dragged records that are collapsed, as opening their rows does.
void zelqBrowser::expandDropped() {
    const zelqRecordContainer& table = mainWindow_->container();
    if (!table.isDragging()) {
        return;  // what another process has dragged
    }
    if (table.selectionSummary().count > mostAtOnce_) {
        setRowsExpanded(zelqSessionDraft::Rows::SelectedToOpen, true);
        return;
    }
    std::vector<zelqBCnrObject*> records = table.selectedRecords();
    std::erase_if(records, [](const auto* record) { return !record->opensToExpand(); });
    setExpanded(records, true);
}
