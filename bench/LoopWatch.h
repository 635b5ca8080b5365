#pragma once

#include <QTimer>
#include <algorithm>
#include <chrono>

/// Watches the event loop by a timer that is due every millisecond; more often, it would take the
/// processor from the threads that read.
class LoopWatch : public QTimer {
public:
    using Clock = std::chrono::steady_clock;

    [[nodiscard]] static double milliseconds(Clock::duration duration) {
        return std::chrono::duration<double, std::milli>(duration).count();
    }

    LoopWatch() {
        callOnTimeout([this] {
            const Clock::time_point now = Clock::now();
            longest_ = std::max(longest_, now - last_);
            last_ = now;
        });
        start(1);
    }
    [[nodiscard]] Clock::duration longest() const { return longest_; }

private:
    Clock::time_point last_ = Clock::now();
    Clock::duration longest_{};
};
