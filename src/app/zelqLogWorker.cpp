#include "app/zelqLogWorker.h"

#include <QLoggingCategory>
#include <chrono>
#include <exception>
#include <utility>

#include <malloc.h>

#include "output/zelqListing.h"

namespace {

using namespace std::chrono_literals;

Q_LOGGING_CATEGORY(lcLog, "zelq.log")

constexpr auto kProgressInterval = 100ms;

/// A log of random bytes has millions of findings; after so many they are only counted.
constexpr std::uint64_t kMostFindings = 100;

/// Writes what the reader met in one log to the logging category.
class FindingReport {
public:
    explicit FindingReport(const std::string& fileName) : fileName_(fileName) {}

    void add(const zelqFinding& finding) {
        if (++count_ <= kMostFindings) {
            qCWarning(lcLog, "%s: %s", fileName_.c_str(), finding.text().c_str());
        }
    }

    void finish(const zelqStatus& status) const {
        if (count_ > kMostFindings) {
            qCWarning(lcLog, "%s: %llu more findings", fileName_.c_str(),
                      static_cast<unsigned long long>(count_ - kMostFindings));
        }
        if (!status.ok()) {
            qCWarning(lcLog, "%s: %s", fileName_.c_str(), status.text.c_str());
        }
    }

private:
    std::string fileName_;
    std::uint64_t count_ = 0;
};

}  // namespace

zelqLogWorker::zelqLogWorker(QObject* parent) : QObject(parent) {
    progressTimer_.setInterval(kProgressInterval);
    connect(&progressTimer_, &QTimer::timeout, this,
            [this] { emit progressed(amountDone_, amountTotal_); });
}

zelqLogWorker::~zelqLogWorker() {
    stop();
}

void zelqLogWorker::read(const std::string& fileName, int logSlot,
                         std::optional<std::int32_t> firstNumber, Done done) {
    begin([this, fileName, logSlot, firstNumber, done = std::move(done),
           job = job_ + 1](const std::stop_token& stopToken) {
        FindingReport report(fileName);
        const zelqReadRequest request{
            .fileName = fileName,
            .logSlot = static_cast<std::uint16_t>(logSlot),
            .findings = [&report](const zelqFinding& finding) { report.add(finding); },
            .progress =
                [this](std::uint64_t bytes, std::uint64_t total) {
                    amountDone_ = bytes;
                    amountTotal_ = total;
                },
            .stop = stopToken};
        const auto prepared = std::make_shared<zelqPreparedLog>(prepareLog(request, firstNumber));
        report.finish(prepared->status);
        finish(job, [done, prepared] { done(std::move(*prepared)); });
    });
}

void zelqLogWorker::write(const std::string& fileName, const zelqLogCollection& records,
                          const zelqLocaleText& locale, std::function<void()> done) {
    begin([this, fileName, &records, &locale, done = std::move(done),
           job = job_ + 1](const std::stop_token& stopToken) {
        try {
            zelqListingFile output(fileName, stopToken);
            const auto progress = [this, &stopToken](std::uint64_t some, std::uint64_t total) {
                amountDone_ = some;
                amountTotal_ = total;
                return !stopToken.stop_requested();
            };
            if (writeListing(records, locale, output, progress)) {
                output.complete();
            }
            if (!output.problem().empty()) {
                qCWarning(lcLog, "%s: %s", fileName.c_str(), output.problem().c_str());
            }
        } catch (const std::exception& error) {  // no memory, or no thread to be had
            qCWarning(lcLog, "%s: cannot be written: %s", fileName.c_str(), error.what());
        }
        finish(job, done);
    });
}

void zelqLogWorker::begin(std::function<void(const std::stop_token&)> work) {
    amountDone_ = 0;
    amountTotal_ = 0;
    ++job_;
    progressTimer_.start();
    thread_ = std::jthread(std::move(work));
}

/// Called on the worker's thread; delivers on the GUI thread unless the job was stopped meanwhile.
void zelqLogWorker::finish(unsigned job, const std::function<void()>& deliver) {
    QMetaObject::invokeMethod(
        this,
        [this, job, deliver] {
            if (job == job_) {
                progressTimer_.stop();
                deliver();
            }
        },
        Qt::QueuedConnection);
}

void zelqLogWorker::free(std::vector<std::unique_ptr<zelqLog>> logs) {
    if (logs.empty()) {
        return;
    }
    // One at a time, but the caller does not wait for the one before.
    freer_ = std::jthread([unused = std::move(logs), before = std::move(freer_)]() mutable {
        before = {};
        unused.clear();
        ::malloc_trim(0);  // what the log held goes back to the system, not only to the heap
    });
}

void zelqLogWorker::stop() {
    ++job_;
    progressTimer_.stop();
    thread_ = {};
}
