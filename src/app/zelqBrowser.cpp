#include "app/zelqBrowser.h"

#include <utility>

#include "log/zelqRecordDisplay.h"

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
    return start({.operation = Operation::Unload, .fileName = {}, .slot = slot});
}

void zelqBrowser::mainWindowCloses() {
    waiting_.clear();
    worker_.stop();
    running_ = false;
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
    switch (job.operation) {
        case Operation::Load:
            startLoad(job);
            break;
        case Operation::Merge:
            startMerge(job);
            break;
        case Operation::Unload:
            unload(job.slot);
            break;
    }
}

void zelqBrowser::finish() {
    running_ = false;
    mainWindow_->statusLine().hideProgress();
    mainWindow_->refresh();
    startNext();
}

void zelqBrowser::startLoad(const Job& job) {
    // All logs will have gone by then, so the new one takes the first slot and number.
    worker_.read(job.fileName, 0, 0, [this, name = job.fileName](zelqPreparedLog prepared) {
        finishLoad(name, std::move(prepared));
    });
}

void zelqBrowser::finishLoad(const std::string& name, zelqPreparedLog prepared) {
    currentLog_ = zelqLogCollection::kAllLogs;
    {
        Update container(mainWindow_->container());
        removeRecords(container);
        currentLog_ = records_.assignLogSlot(name);
        if (currentLog_ != zelqLogCollection::kNoSlot) {  // it is for an empty name
            records_.append(std::move(prepared.log), currentLog_);
            container.records().merge(std::move(prepared.shown));
            showRecords(container.records(), records_, currentLog_);
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
    mainWindow_->showWaitPointer();
    worker_.read(job.fileName, currentLog_, static_cast<std::int32_t>(records_.size()),
                 [this, name = job.fileName](zelqPreparedLog prepared) {
                     finishMerge(name, std::move(prepared));
                 });
}

void zelqBrowser::finishMerge(const std::string& name, zelqPreparedLog prepared) {
    {
        Update container(mainWindow_->container());
        currentLog_ = records_.assignLogSlot(name);
        records_.append(std::move(prepared.log), currentLog_);
        container.records().merge(std::move(prepared.shown));
        showRecords(container.records(), records_, zelqLogCollection::kAllLogs);
    }
    mainWindow_->showNormalPointer();
    finish();
}

void zelqBrowser::unload(int slot) {
    mainWindow_->showWaitPointer();
    currentLog_ = slot;
    {
        Update container(mainWindow_->container());
        removeRecords(container);
    }
    mainWindow_->showNormalPointer();
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
    worker_.free(records_.remove(currentLog_));
}

void zelqBrowser::collapseAll() {
    collapseUnexpandable(records_);
}
