#pragma once

#include <QObject>
#include <QTimer>
#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "log/zelqPreparedLog.h"

/// Runs the reading and the freeing of logs on threads of its own, one of each at a time. Used from
/// the GUI thread, on which results arrive too.
class zelqLogWorker : public QObject {
    Q_OBJECT

public:
    using Done = std::function<void(zelqPreparedLog)>;

    explicit zelqLogWorker(QObject* parent = nullptr);
    ~zelqLogWorker() override;

    /// Reads a log for a slot; `done` is called with it, later and on the GUI thread, unless stop()
    /// came first. `firstNumber` as prepareLog() takes it. One log at a time.
    void read(const std::string& fileName, int logSlot, std::optional<std::int32_t> firstNumber,
              Done done);
    /// Frees logs that nothing refers to any more, in the background.
    void free(std::vector<std::unique_ptr<zelqLog>> logs);
    /// Stops the reading and waits for its thread. Its result is dropped.
    void stop();

signals:
    /// While a log is read, some ten times a second; bytes.
    void progressed(quint64 done, quint64 total);

private:
    void finish(const std::shared_ptr<zelqPreparedLog>& prepared, unsigned job);

    std::atomic<std::uint64_t> bytesDone_ = 0;
    std::atomic<std::uint64_t> bytesTotal_ = 0;
    QTimer progressTimer_;
    Done done_;
    unsigned job_ = 0;
    std::jthread reader_;
    std::jthread freer_;
};
