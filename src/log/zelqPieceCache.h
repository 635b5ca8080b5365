#pragma once

#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "log/zelqLogPieces.h"

/// The pieces of logs that were read last, for all who read data on demand; and a thread that reads
/// for those who must not wait. Any thread.
class zelqPieceCache {
public:
    using Log = std::shared_ptr<const zelqLogPieces>;
    using Piece = std::shared_ptr<const zelqLogPieces::Piece>;

    /// 32 MiB. Of 100 logs that are shown in the order of time each has a piece here.
    static constexpr std::size_t kMostPieces = 128;

    zelqPieceCache() = default;
    zelqPieceCache(const zelqPieceCache&) = delete;
    zelqPieceCache& operator=(const zelqPieceCache&) = delete;

    /// A piece. Without `waits` null if it is not at hand; it is then read in the background.
    /// Throws std::bad_alloc.
    [[nodiscard]] Piece get(const Log& log, std::uint64_t number, bool waits);
    /// Drops the pieces of a log.
    void forget(const zelqLogPieces& log) noexcept;

    /// Called on any thread when a piece was read in the background, and when a log is found to
    /// have changed. When this function returns, the one before is not called any more.
    void setNews(std::function<void()> news);

private:
    struct Entry {
        std::uint64_t log;  ///< its id
        std::uint64_t number;
        std::uint64_t used;  ///< by which the one is known that was not used for longest
        Piece piece;
    };
    struct Wanted {
        Log log;
        std::uint64_t number;
    };

    [[nodiscard]] Piece find(const zelqLogPieces& log, std::uint64_t number);
    Piece read(const Log& log, std::uint64_t number, bool waits);
    void want(const Log& log, std::uint64_t number);
    void work(const std::stop_token& stop);
    void tell();

    std::mutex mutex_;  ///< for what follows
    std::vector<Entry> entries_;
    std::uint64_t clock_ = 0;
    std::deque<Wanted> wanted_;  ///< the last one first
    std::condition_variable_any isWanted_;

    std::mutex newsMutex_;
    std::function<void()> news_;
    std::jthread reader_;  // last: it uses the rest
};
