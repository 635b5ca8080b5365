#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "log/zelqEntry.h"

/// Shows on a terminal how far the reading of logs is, from a second on. Shows nothing if standard
/// error is no terminal, or if standard output is one, too: what is written there would be mixed
/// with it.
class zelqProgress {
public:
    /// `twice`: the logs are read a second time.
    explicit zelqProgress(const std::vector<std::string>& logs, bool twice = false);
    /// Wipes out what is shown.
    ~zelqProgress();
    zelqProgress(const zelqProgress&) = delete;
    zelqProgress& operator=(const zelqProgress&) = delete;

    /// The first reading is at this offset of a log.
    void at(std::size_t log, std::uint64_t offset) {
        if (isOn_) {
            show(starts_[log] + offset);
        }
    }
    /// The second reading, or the only one, is done with an entry. In the second one, entries can
    /// come from all logs in turn.
    void passed(const zelqEntry& entry) {
        if (isOn_ && ++entries_ % kStep == 0) {
            show(twice_ ? total_ + passed_ : starts_[entry.input] + entry.place.offset);
        }
        passed_ += entry.place.length;
    }

private:
    static constexpr std::uint64_t kStep = 1024;

    void show(std::uint64_t done);

    bool isOn_;
    bool twice_;
    bool isShown_ = false;
    std::uint64_t total_ = 0;  ///< bytes of one reading, as far as it is known beforehand
    bool isTotalKnown_ = true;
    std::vector<std::uint64_t> starts_;  ///< bytes before each log
    std::uint64_t entries_ = 0;
    std::uint64_t passed_ = 0;
    std::chrono::steady_clock::time_point next_;
};
