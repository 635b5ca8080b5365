#include "app/zelqLogWorker.h"

#include <QPromise>
#include <exception>
#include <utility>

#include <malloc.h>

namespace {

/// Progress is counted in these steps.
constexpr int kProgressSteps = 1000;

}  // namespace

zelqLogWorker::zelqLogWorker(QObject* parent) : QObject(parent) {
    connect(&watcher_, &QFutureWatcherBase::progressValueChanged, this,
            [this](int value) { emit progressed(value, kProgressSteps); });
    connect(&watcher_, &QFutureWatcherBase::finished, this, &zelqLogWorker::deliver);
}

zelqLogWorker::~zelqLogWorker() {
    stop();
}

void zelqLogWorker::start(Work work, Failed failed, WithoutThread without) {
    failed_ = std::move(failed);
    const auto promise = std::make_shared<QPromise<Delivery>>();
    watcher_.setFuture(promise->future());
    promise->start();
    promise->setProgressRange(0, kProgressSteps);
    const auto run = [promise, work = std::move(work)](const std::stop_token& stopToken) {
        const auto progress = [&promise](std::uint64_t done, std::uint64_t total) {
            if (total != 0) {
                promise->setProgressValue(static_cast<int>(
                    static_cast<double>(done) / static_cast<double>(total) * kProgressSteps));
            }
        };
        try {
            promise->addResult(work({.stop = stopToken, .progress = progress}));
        } catch (...) {
            promise->setException(std::current_exception());
        }
        promise->finish();
    };
    try {
        thread_ = std::jthread(run);
    } catch (...) {  // no thread, or no memory for what it runs
        if (without == WithoutThread::Works) {
            run(std::stop_token());
            return;
        }
        promise->setException(std::current_exception());
        promise->finish();
    }
}

/// The thread is joined first: what it leaves behind is then this thread's alone.
void zelqLogWorker::deliver() {
    const Failed failed = std::exchange(failed_, {});
    if (!failed) {
        return;  // the work was stopped meanwhile
    }
    if (thread_.joinable()) {
        thread_.join();
    }
    Delivery delivery;
    try {
        delivery = watcher_.future().takeResult();
    } catch (...) {
        failed(zelqStatus::of(std::current_exception()));
        return;
    }
    delivery();
}

void zelqLogWorker::stop() {
    thread_ = {};
    failed_ = {};
}

void zelqLogWorker::free(zelqSession::Remains remains) {
    if (remains == nullptr) {
        return;
    }
    try {
        // One at a time, but the caller does not wait for the one before.
        freer_ = std::jthread([unused = std::move(remains), before = std::move(freer_)]() mutable {
            before = {};
            unused.reset();
            ::malloc_trim(0);  // what a log held goes back to the system, not only to the heap
        });
    } catch (const std::exception&) {  // without a thread it was freed here
        freer_ = {};
    }
}
