#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <thread>
#include <vector>

#include "log/zelqStatus.h"

/// Looks at records one after another, on a thread of its own, and notes in a bit for each of them
/// whether it matches. Records are known by their place in a list, from 0 on.
///
/// All operations are for the thread that owns the object. What the search looks at must stay as
/// it is until stop() has returned or the search has ended.
class zelqRecordSearch {
public:
    /// Whether the record at a place matches.
    using Matcher = std::function<bool(std::size_t place)>;

    struct Task {
        std::size_t count;  ///< of the records
        std::size_t from;  ///< the place to begin at, below `count`; the end is followed by place 0
        std::function<Matcher()> makeMatcher;  ///< called once, on the search's thread
        /// Called on the search's thread: at the first match, some times a second, and at the end.
        std::function<void()> progressed;
    };

    zelqRecordSearch() = default;
    ~zelqRecordSearch() { stop(); }
    zelqRecordSearch(const zelqRecordSearch&) = delete;
    zelqRecordSearch& operator=(const zelqRecordSearch&) = delete;

    /// Begins anew. What was found before is forgotten. Without memory it throws std::bad_alloc.
    void start(Task task);
    /// Ends the search and waits for its thread, for no longer than one record takes. What it has
    /// found stays.
    void stop() noexcept;
    /// Stops, and forgets what was found.
    void clear() noexcept {
        stop();
        count_ = 0;
        matches_ = 0;
        searched_ = 0;
    }

    /// How a search ended that could not go on.
    [[nodiscard]] zelqStatus status() const;
    [[nodiscard]] std::size_t count() const noexcept { return count_; }
    /// The number of records looked at so far.
    [[nodiscard]] std::size_t searched() const noexcept {
        return searched_.load(std::memory_order_acquire);
    }
    /// True when all records were looked at.
    [[nodiscard]] bool isComplete() const noexcept { return searched() == count_; }
    /// True until the search has ended, in whatever way.
    [[nodiscard]] bool isRunning() const noexcept {
        return thread_.joinable() && !ended_.load(std::memory_order_acquire);
    }

    // Of the records looked at so far:

    /// The number of matches.
    [[nodiscard]] std::size_t matches() const noexcept {
        return matches_.load(std::memory_order_relaxed);
    }
    [[nodiscard]] bool isMatch(std::size_t place) const noexcept;
    /// The number of matches before a place of the list.
    [[nodiscard]] std::size_t matchesBefore(std::size_t place) const noexcept;

    /// A match, or none yet as long as the search goes on and could still find a nearer one.
    struct Step {
        std::optional<std::size_t> place{};
        bool wrapped = false;  ///< past the end of the list, or its start
        bool undecided = false;
    };
    /// The nearest match after a place, or at it with `orAtIt`; behind the last one comes the
    /// first.
    [[nodiscard]] Step next(std::size_t place, bool orAtIt = false) const noexcept;
    /// The nearest match before a place; before the first one comes the last.
    [[nodiscard]] Step previous(std::size_t place) const noexcept;

    /// The bits of the matches, the first record's being the lowest of the first word.
    [[nodiscard]] std::vector<std::uint64_t> bits() const;

private:
    using Word = std::uint64_t;
    static constexpr std::size_t kWordBits = 64;

    void run(const Task& task, const std::stop_token& stop);
    [[nodiscard]] Word word(std::size_t index) const noexcept {
        return words_[index].load(std::memory_order_relaxed);
    }
    [[nodiscard]] std::optional<std::size_t> firstIn(std::size_t first,
                                                     std::size_t end) const noexcept;
    [[nodiscard]] std::optional<std::size_t> lastIn(std::size_t first,
                                                    std::size_t end) const noexcept;
    /// How many records the search looks at before the one at a place.
    [[nodiscard]] std::size_t turnOf(std::size_t place) const noexcept {
        return place >= from_ ? place - from_ : place + count_ - from_;
    }

    std::size_t count_ = 0;
    std::size_t from_ = 0;
    /// Written by the search's thread alone, before it counts the records in `searched_`.
    std::unique_ptr<std::atomic<Word>[]> words_;  // NOLINT(modernize-avoid-c-arrays)
    std::atomic<std::size_t> searched_ = 0;
    std::atomic<std::size_t> matches_ = 0;
    std::atomic<bool> ended_ = true;
    zelqStatus status_;  ///< valid once `ended_` is set
    std::jthread thread_;
};
