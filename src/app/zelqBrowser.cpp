#include "app/zelqBrowser.h"

#include <utility>
#include <vector>

#include "session/zelqRecordDisplay.h"

namespace {

using Update = zelqRecordContainer::Update;

}  // namespace

zelqBrowser::zelqBrowser() : mainWindow_(std::make_unique<zelqBWindow>(*this)) {
    QObject::connect(&worker_, &zelqLogWorker::progressed, mainWindow_.get(),
                     [this](quint64 done, quint64 total) {
                         mainWindow_->statusLine().showProgress(done, total);
                     });
}

zelqBrowser::~zelqBrowser() {
    worker_.stop();
}

int zelqBrowser::loadLog() {
    return start({.operation = Operation::Load, .fileName = fileName_});
}

int zelqBrowser::mergeLog() {
    return start({.operation = Operation::Merge, .fileName = fileName_});
}

int zelqBrowser::unloadLog(int slot) {
    return start(
        {.operation = Operation::Unload, .fileName = records_.logName(slot), .slot = slot});
}

void zelqBrowser::writeLog(const std::string& fileName) {
    if (!fileName.empty() && !mainWindow_->container().records().empty()) {
        start({.operation = Operation::Write, .fileName = fileName});
    }
}

void zelqBrowser::mainWindowCloses() {
    waiting_.clear();
    worker_.stop();
    running_ = false;
    collapseAll();
    expansionWindow_.reset();
}

int zelqBrowser::start(Job job) {
    mainWindow_->showWaitPointer();
    waiting_.push_back(std::move(job));
    mainWindow_->showNormalPointer();
    startNext();
    return 1;
}

void zelqBrowser::startNext() {
    if (running_ || waiting_.empty()) {
        return;
    }
    running_ = true;
    const Job job = std::move(waiting_.front());
    waiting_.pop_front();
    pointerWaits_ = job.operation != Operation::Load;  // which is told by its progress alone
    if (pointerWaits_) {
        mainWindow_->showWaitPointer();
    }
    switch (job.operation) {
        case Operation::Load:
            startLoad(job);
            break;
        case Operation::Merge:
            startMerge(job);
            break;
        case Operation::Unload:
            unload(job);
            break;
        case Operation::Write:
            startWrite(job);
            break;
    }
}

void zelqBrowser::finish() {
    running_ = false;
    if (std::exchange(pointerWaits_, false)) {
        mainWindow_->showNormalPointer();
    }
    mainWindow_->statusLine().hideProgress();
    mainWindow_->refresh();
    startNext();
}

void zelqBrowser::startLoad(const Job& job) {
    // All logs will have gone by then, so the new one takes the first slot and number.
    worker_.read(job.fileName, 0, firstNumber(0),
                 [this, name = job.fileName](zelqPreparedLog prepared) {
                     finishLoad(name, std::move(prepared));
                 });
}

/// The number with which the worker is to begin when it puts a log in order; none if filters will
/// decide what is shown, and in which order.
std::optional<std::int32_t> zelqBrowser::firstNumber(std::size_t number) const {
    return activeFilters_.empty() ? std::optional(static_cast<std::int32_t>(number)) : std::nullopt;
}

/// Adds a log that was read, and shows of it what the filters let through. `slot`: whose records
/// are shown if there is no filter.
void zelqBrowser::showNewLog(Update& container, zelqPreparedLog prepared, int slot) {
    records_.append(std::move(prepared.log), currentLog_);
    if (activeFilters_.empty()) {
        container.records().merge(std::move(prepared.shown));
        showRecords(container.records(), records_, slot);
        return;
    }
    prepared.shown.removeAll();  // a filter was installed while the log was read
    activeFilters_.run(records_);
    showFilteredRecords(container.records(), records_, activeFilters_.result(), currentLog_);
}

void zelqBrowser::finishLoad(const std::string& name, zelqPreparedLog prepared) {
    currentLog_ = zelqLogCollection::kAllLogs;
    {
        Update container(mainWindow_->container());
        removeRecords(container);
        currentLog_ = records_.assignLogSlot(name);
        if (currentLog_ != zelqLogCollection::kNoSlot) {  // it is for an empty name
            showNewLog(container, std::move(prepared), currentLog_);
        }
    }
    finish();
}

void zelqBrowser::startMerge(const Job& job) {
    currentLog_ = records_.slotFor(job.fileName);
    if (currentLog_ == zelqLogCollection::kNoSlot) {
        finish();  // all slots are taken, or a request before this one has brought the log
        return;
    }
    worker_.read(job.fileName, currentLog_, firstNumber(records_.size()),
                 [this, name = job.fileName](zelqPreparedLog prepared) {
                     finishMerge(name, std::move(prepared));
                 });
}

void zelqBrowser::finishMerge(const std::string& name, zelqPreparedLog prepared) {
    {
        Update container(mainWindow_->container());
        currentLog_ = records_.assignLogSlot(name);
        showNewLog(container, std::move(prepared), zelqLogCollection::kAllLogs);
        if (expansionWindow_ != nullptr) {
            expansionWindow_->lines().refreshKeys();
        }
    }
    finish();
}

void zelqBrowser::unload(const Job& job) {
    // While the request waited, its slot may have gone to another log.
    if (records_.logName(job.slot) == job.fileName) {
        Update container(mainWindow_->container());
        currentLog_ = job.slot;
        removeRecords(container);
    }
    finish();
}

/// Takes the records of the current log, or of all logs, out of every place that knows them, then
/// has them freed. What stays is collapsed, whatever its log.
void zelqBrowser::removeRecords(Update& container) {
    collapseAll();
    if (currentLog_ == zelqLogCollection::kAllLogs) {
        container.dropAll();
        mainWindow_->hiddenContainer().dropAll();
    } else {
        container.dropLog(currentLog_);
        mainWindow_->hiddenContainer().dropLog(currentLog_);
    }
    activeFilters_.dropLog(currentLog_);
    worker_.free(records_.remove(currentLog_));
}

void zelqBrowser::startWrite(const Job& job) {
    if (mainWindow_->container().records().empty()) {  // as what came before may have left it
        finish();
        return;
    }
    worker_.write(job.fileName, records_, mainWindow_->locale(), [this] { finish(); });
}

zelqBExpansionWindow& zelqBrowser::expansionWindow() {
    if (expansionWindow_ == nullptr) {
        expansionWindow_ = std::make_unique<zelqBExpansionWindow>(mainWindow_->locale());
        QObject::connect(expansionWindow_.get(), &zelqBExpansionWindow::closedByUser,
                         mainWindow_.get(), [this] {
                             collapseAll();
                             mainWindow_->container().refreshMarks();
                         });
        QObject::connect(expansionWindow_.get(), &zelqBExpansionWindow::recordsDropped,
                         mainWindow_.get(), [this] { expandDropped(); });
    }
    expansionWindow_->present();
    return *expansionWindow_;
}

void zelqBrowser::setExpanded(std::span<zelqBCnrObject* const> records, bool expand) {
    std::vector<zelqBCnrObject*> changed;
    changed.reserve(records.size());
    for (zelqBCnrObject* record : records) {
        if (!record->hasExpansion()) {
            record->setExpandMark(zelqExpandMark::Blank);
        } else if (record->expanded() != expand) {
            changed.push_back(record);
            record->setExpandMark(expand ? zelqExpandMark::Expanded : zelqExpandMark::Collapsed);
        }
    }
    if (expand && !changed.empty()) {
        expansionWindow().lines().insertAll(std::move(changed));
    } else if (!changed.empty()) {
        collapse(changed);
    }
    mainWindow_->container().refreshMarks();
    if (expansionWindow_ != nullptr) {
        expansionWindow_->refresh();
    }
}

void zelqBrowser::applyFilter(std::unique_ptr<zelqFilterStage> filter) {
    Update container(mainWindow_->container());
    activeFilters_.apply(std::move(filter), records_);
    container.records().assign(activeFilters_.result());
}

void zelqBrowser::removeFilter(zelqFilterKind kind) {
    const std::unique_ptr<zelqFilterStage> removed = activeFilters_.remove(kind);
    if (removed != nullptr) {
        Update container(mainWindow_->container());
        container.records().addAll(removed->rejected());
    }
}

void zelqBrowser::removeAllFilters() {
    const zelqFilterChain::Filters removed = activeFilters_.removeAll();
    if (!removed.empty()) {
        Update container(mainWindow_->container());
        for (const auto& filter : removed) {
            container.records().addAll(filter->rejected());
        }
    }
    setExpanded(mainWindow_->container().recordsWhere(true), false);
    // The container's order shows all records once more, whether or not it had them already.
    Update container(mainWindow_->container());
    showRecords(container.records(), records_, zelqLogCollection::kAllLogs);
    if (expansionWindow_ != nullptr) {
        expansionWindow_->lines().refreshKeys();
    }
}

/// Takes the text of records out of the expanded-data window; they are marked as collapsed already.
void zelqBrowser::collapse(std::span<zelqBCnrObject* const> records) {
    zelqLineModel& lines = expansionWindow_->lines();
    if (records.size() == 1) {
        lines.remove(*records.front());
    } else {
        lines.removeCollapsed();
    }
}

/// Expands the dragged records that are collapsed, as opening their rows does.
void zelqBrowser::expandDropped() {
    std::vector<zelqBCnrObject*> expandable;
    for (zelqBCnrObject* record : mainWindow_->container().draggedRecords()) {
        if (record->hasExpansion()) {
            expandable.push_back(record);
        }
    }
    setExpanded(expandable, true);
}

void zelqBrowser::collapseAll() {
    if (expansionWindow_ != nullptr) {
        zelqLineModel& lines = expansionWindow_->lines();
        lines.records().forEach(
            [](zelqBCnrObject& record) { record.setExpandMark(zelqExpandMark::Collapsed); });
        lines.clear();
    }
    collapseUnexpandable(records_);
}
