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

#include "output/zelqLocaleText.h"

#include "session/zelqLogCollection.h"
#include "session/zelqPreparedLog.h"

/// Runs the reading, writing and freeing of logs on threads of its own; one log is read or one
/// listing written at a time. Used from the GUI thread, on which results arrive too.
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
    /// Writes the listing of all records; `done` as with read(). The records must stay meanwhile.
    void write(const std::string& fileName, const zelqLogCollection& records,
               const zelqLocaleText& locale, std::function<void()> done);
    /// Frees logs that nothing refers to any more, in the background.
    void free(std::vector<std::unique_ptr<zelqLog>> logs);
    /// Stops the reading or writing and waits for its thread. Its result is dropped.
    void stop();

signals:
    /// While a log is read or a listing written, some ten times a second; bytes or records.
    void progressed(quint64 done, quint64 total);

private:
    void begin(std::function<void(const std::stop_token&)> work);
    void finish(unsigned job, const std::function<void()>& deliver);

    std::atomic<std::uint64_t> amountDone_ = 0;
    std::atomic<std::uint64_t> amountTotal_ = 0;
    QTimer progressTimer_;
    unsigned job_ = 0;
    std::jthread thread_;
    std::jthread freer_;
};
