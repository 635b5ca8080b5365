#include "app/zelqLogWorker.h"

#include <QLoggingCategory>
#include <chrono>
#include <utility>

#include <malloc.h>

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

    void finish(const std::string& problem) const {
        if (count_ > kMostFindings) {
            qCWarning(lcLog, "%s: %llu more findings", fileName_.c_str(),
                      static_cast<unsigned long long>(count_ - kMostFindings));
        }
        if (!problem.empty()) {
            qCWarning(lcLog, "%s: %s", fileName_.c_str(), problem.c_str());
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
            [this] { emit progressed(bytesDone_, bytesTotal_); });
}

zelqLogWorker::~zelqLogWorker() {
    stop();
}

void zelqLogWorker::read(const std::string& fileName, int logSlot,
                         std::optional<std::int32_t> firstNumber, Done done) {
    bytesDone_ = 0;
    bytesTotal_ = 0;
    done_ = std::move(done);
    progressTimer_.start();
    const unsigned job = ++job_;
    reader_ = std::jthread([this, fileName, logSlot, firstNumber, job](std::stop_token stopToken) {
        FindingReport report(fileName);
        const zelqReadRequest request{
            .fileName = fileName,
            .logSlot = static_cast<std::uint16_t>(logSlot),
            .findings = [&report](const zelqFinding& finding) { report.add(finding); },
            .progress =
                [this](std::uint64_t bytes, std::uint64_t total) {
                    bytesDone_ = bytes;
                    bytesTotal_ = total;
                },
            .stop = std::move(stopToken)};
        const auto prepared = std::make_shared<zelqPreparedLog>(prepareLog(request, firstNumber));
        report.finish(prepared->problem);
        QMetaObject::invokeMethod(
            this, [this, prepared, job] { finish(prepared, job); }, Qt::QueuedConnection);
    });
}

void zelqLogWorker::finish(const std::shared_ptr<zelqPreparedLog>& prepared, unsigned job) {
    if (job != job_ || !done_) {
        return;  // stopped meanwhile
    }
    progressTimer_.stop();
    std::exchange(done_, {})(std::move(*prepared));
}

void zelqLogWorker::free(std::vector<std::unique_ptr<zelqLog>> logs) {
    if (logs.empty()) {
        return;
    }
    freer_ = std::jthread([unused = std::move(logs)]() mutable {
        unused.clear();
        ::malloc_trim(0);  // what the log held goes back to the system, not only to the heap
    });
}

void zelqLogWorker::stop() {
    done_ = {};
    progressTimer_.stop();
    reader_ = {};
}
