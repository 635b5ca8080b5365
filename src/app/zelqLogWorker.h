#pragma once

#include <QFutureWatcher>
#include <QObject>
#include <cstdint>
#include <functional>
#include <memory>
#include <stop_token>
#include <thread>
#include <vector>

#include "log/zelqStatus.h"
#include "session/zelqSession.h"

/// Runs one piece of work at a time on a thread of its own, and frees logs on another one. Used
/// from the GUI thread.
class zelqLogWorker : public QObject {
    Q_OBJECT

public:
    /// What a piece of work is given: when to end early, and whom to tell how much of how much is
    /// done. Both can be used from any thread.
    struct Control {
        std::stop_token stop;
        std::function<void(std::uint64_t done, std::uint64_t total)> progress;
    };
    /// What is left to do on the GUI thread, where it is called after the work's thread has ended.
    using Delivery = std::function<void()>;
    using Work = std::function<Delivery(const Control&)>;
    using Failed = std::function<void(const zelqStatus&)>;

    explicit zelqLogWorker(QObject* parent = nullptr);
    ~zelqLogWorker() override;

    /// Starts the work; the one before must have been delivered. Instead of the delivery `failed`
    /// is called where the work ended with an exception or no thread could be started for it.
    /// Neither is called before start() returns, nor after stop(). Work that works without a thread
    /// is then done by start().
    enum class WithoutThread { Fails, Works };
    void start(Work work, Failed failed, WithoutThread without = WithoutThread::Fails);
    /// Stops the work and waits for its thread. Nothing of it is delivered.
    void stop();

    /// Frees what nothing refers to any more, in the background.
    void free(zelqSession::Remains remains);

signals:
    /// How much of how much is done, some times a second while it is known.
    void progressed(int done, int total);
    /// Data were read that somebody did not wait for. May be emitted on any thread.
    void dataArrived();

private:
    void deliver();

    QFutureWatcher<Delivery> watcher_;
    Failed failed_;
    std::jthread thread_;
    std::jthread freer_;
};
