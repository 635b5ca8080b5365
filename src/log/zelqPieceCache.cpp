#include "log/zelqPieceCache.h"

#include <algorithm>
#include <new>
#include <system_error>
#include <utility>

namespace {

/// Of those who scroll through a log only the last places matter.
constexpr std::size_t kMostWanted = 16;

}  // namespace

zelqPieceCache::Piece zelqPieceCache::find(const zelqLogPieces& log, std::uint64_t number) {
    const std::lock_guard lock(mutex_);
    const auto found = std::ranges::find_if(entries_, [&](const Entry& entry) {
        return entry.number == number && entry.log == log.id();
    });
    if (found == entries_.end()) {
        return nullptr;
    }
    found->used = ++clock_;
    return found->piece;
}

zelqPieceCache::Piece zelqPieceCache::get(const Log& log, std::uint64_t number, bool waits) {
    Piece piece = find(*log, number);
    if (piece == nullptr) {
        piece = read(log, number, waits);
    }
    if (piece == nullptr) {
        want(log, number);
    }
    return piece;
}

/// A piece that is not what it was is kept like any other: each of its thousands of records would
/// have it read again.
zelqPieceCache::Piece zelqPieceCache::read(const Log& log, std::uint64_t number, bool waits) {
    const bool wasChanged = log->change().has_value();
    Piece piece = log->read(number, waits);
    if (piece == nullptr) {
        return piece;
    }
    {
        const std::lock_guard lock(mutex_);
        Entry entry{.log = log->id(), .number = number, .used = ++clock_, .piece = piece};
        if (entries_.size() < kMostPieces) {
            entries_.push_back(std::move(entry));
        } else {
            *std::ranges::min_element(entries_, {}, &Entry::used) = std::move(entry);
        }
    }
    if (!wasChanged && log->change().has_value()) {
        tell();
    }
    return piece;
}

void zelqPieceCache::forget(const zelqLogPieces& log) noexcept {
    const std::lock_guard lock(mutex_);
    std::erase_if(entries_, [&log](const Entry& entry) { return entry.log == log.id(); });
    std::erase_if(wanted_, [&log](const Wanted& wanted) { return wanted.log.get() == &log; });
}

void zelqPieceCache::want(const Log& log, std::uint64_t number) {
    {
        const std::lock_guard lock(mutex_);
        std::erase_if(wanted_, [&](const Wanted& wanted) {
            return wanted.log == log && wanted.number == number;
        });
        wanted_.push_front({log, number});
        if (wanted_.size() > kMostWanted) {
            wanted_.pop_back();
        }
        if (!reader_.joinable()) {
            try {
                reader_ = std::jthread([this](const std::stop_token& stop) { work(stop); });
            } catch (const std::system_error&) {
                // The system has none to give; the next one who asks tries again.
            }
        }
    }
    isWanted_.notify_one();
}

void zelqPieceCache::work(const std::stop_token& stop) {
    for (;;) {
        Wanted wanted;
        {
            std::unique_lock lock(mutex_);
            if (!isWanted_.wait(lock, stop, [this] { return !wanted_.empty(); })) {
                return;
            }
            wanted = wanted_.front();
        }
        try {
            if (find(*wanted.log, wanted.number) == nullptr) {
                read(wanted.log, wanted.number, true);
            }
        } catch (const std::bad_alloc&) {
            // Whoever still needs it asks again.
        }
        {
            const std::lock_guard lock(mutex_);
            std::erase_if(wanted_, [&wanted](const Wanted& other) {
                return other.log == wanted.log && other.number == wanted.number;
            });
        }
        tell();
    }
}

void zelqPieceCache::tell() {
    const std::lock_guard lock(newsMutex_);
    if (news_) {
        news_();
    }
}

void zelqPieceCache::setNews(std::function<void()> news) {
    const std::lock_guard lock(newsMutex_);
    news_ = std::move(news);
}
