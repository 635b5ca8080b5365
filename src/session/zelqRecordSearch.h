#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <vector>

#include "log/zelqStatus.h"

/// Looks at records one after another, on threads of its own, and notes in a bit for each of them
/// whether it matches. Records are known by their place in a list, from 0 on.
///
/// All operations are for the thread that owns the object, which looks now and then how far the
/// search is. What the search looks at must stay as
/// it is until stop() has returned or the search has ended.
class zelqRecordSearch {
public:
    /// Whether the record at a place matches.
    using Matcher = std::function<bool(std::size_t place)>;

    struct Task {
        std::size_t count;  ///< of the records
        std::size_t from;  ///< the place to begin at, below `count`; the end is followed by place 0
        std::function<Matcher()> makeMatcher;  ///< called once on each thread of the search
    };

    zelqRecordSearch() = default;
    ~zelqRecordSearch() { stop(); }
    zelqRecordSearch(const zelqRecordSearch&) = delete;
    zelqRecordSearch& operator=(const zelqRecordSearch&) = delete;

    /// Begins anew. What was found before is forgotten. Without memory it throws std::bad_alloc.
    void start(Task task);
    /// Ends the search and waits for its threads, for no longer than one record takes. What it has
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
        return running_.load(std::memory_order_acquire) != 0;
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
    /// A thread takes this number of records at a time. A record takes about 100 ns.
    static constexpr std::size_t kChunk = 256;

    void run(const Task& task, const std::stop_token& stop);
    void lookAt(std::size_t chunk, const Matcher& matches, const std::stop_token& stop);
    void noteDone(std::size_t chunk);
    void giveUp();
    [[nodiscard]] std::size_t chunks() const noexcept { return (count_ + kChunk - 1) / kChunk; }
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
    [[nodiscard]] std::size_t placeOf(std::size_t turn) const noexcept {
        return turn < count_ - from_ ? from_ + turn : turn - (count_ - from_);
    }

    std::size_t count_ = 0;
    std::size_t from_ = 0;
    /// Written by the search's threads before they count the records in `searched_`.
    std::unique_ptr<std::atomic<Word>[]> words_;  // NOLINT(modernize-avoid-c-arrays)
    std::atomic<std::size_t> searched_ = 0;
    std::atomic<std::size_t> matches_ = 0;
    std::atomic<std::size_t> nextChunk_ = 0;  ///< that no thread has taken
    std::atomic<std::size_t> running_ = 0;    ///< threads
    std::mutex mutex_;                        ///< of the next three, while threads run
    std::vector<bool> done_;                  ///< chunks
    std::size_t firstOpen_ = 0;               ///< chunk that is not done
    zelqStatus status_;
    std::vector<std::jthread> threads_;
};
