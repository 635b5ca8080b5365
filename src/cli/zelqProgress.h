#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "log/zelqEntry.h"

/// Shows how far the reading of logs is, from a second on, if standard error is a terminal.
/// Messages that are written there meanwhile take its place.
class zelqProgress {
public:
    /// `output`: what is written meanwhile, "-" for standard output and empty for nothing. Nothing
    /// is shown if that is a terminal: both would be mixed. `twice`: the logs are read again.
    zelqProgress(const std::vector<std::string>& logs, const std::string& output,
                 bool twice = false);
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
